#pragma once

#include <windows.h>

namespace krx::test {

// Puts another address in the place of every import of this name that a loaded module has.
void RedirectImport(HMODULE module, const char* name, void* target);

}  // namespace krx::test
