#pragma once

#include <windows.h>

#include <string>

#include "base/String.h"

namespace krx::com {

// The component that this code is linked into: its handle, its file and what keeps it loaded.
HINSTANCE ModuleHandle();
std::wstring ModulePath();
// File name without folder and extension, the source that internal errors name.
String ModuleName();

// Keeps the component loaded as long as it lives: every object, class object and server lock holds
// one. When the last one goes, what the component has cached goes too.
class ModuleLock {
 public:
  ModuleLock() noexcept { Add(); }
  ModuleLock(const ModuleLock&) noexcept { Add(); }
  ~ModuleLock() { Remove(); }
  ModuleLock& operator=(const ModuleLock&) noexcept { return *this; }

  // The bare counting, for IClassFactory::LockServer, which names no owner.
  static void Add() noexcept;
  static void Remove() noexcept;
};

// Whether nothing of the component is in use any more.
bool CanUnload();

}  // namespace krx::com
