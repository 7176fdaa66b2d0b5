#pragma once

#include <string>

namespace krx::soak {

// What the running process holds of the system's resources. The system's own query functions for
// them count nothing on every platform, so each is counted at its source.
struct Counters {
  long Windows = 0;
  long GdiObjects = 0;
  long KernelHandles = 0;
  long HeapBlocks = 0;
  long Atoms = 0;  // of the whole session; they carry the names of windows

  static Counters Now();
};

long CountWindows();
long CountKernelHandles();
long CountHeapBlocks();

Counters operator+(const Counters& a, const Counters& b);
Counters operator-(const Counters& a, const Counters& b);
std::string ToString(const Counters& counters);

}  // namespace krx::soak
