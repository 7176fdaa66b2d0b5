#pragma once

#include "platform/GdiObjects.h"

namespace krx::test {

// What this process holds of the system's objects, for tests that nothing is left behind.
int Windows();        // top-level windows of this thread
int KernelHandles();  // of every kind
int NameAtoms();      // global atoms, which carry the names of windows
int HeapBlocks();     // of the process's heap, in use

}  // namespace krx::test
