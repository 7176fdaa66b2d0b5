#include "platform/Platform.h"

#include <cstdlib>

namespace krx::test {

namespace {

int MajorVersionOfWine() {
  using GetVersion = const char*();
  const HMODULE system = GetModuleHandleW(L"ntdll.dll");
  const auto version = reinterpret_cast<GetVersion*>(
      reinterpret_cast<void*>(GetProcAddress(system, "wine_get_version")));
  return version ? std::atoi(version()) : 0;
}

}  // namespace

std::string Platform::Name() const {
  const std::string system = Wine ? "wine" + std::to_string(Wine) : "windows";
  return system + (Bits == 64 ? "-x64" : "-x86");
}

const Platform& ThisPlatform() {
  static const Platform platform{MajorVersionOfWine(), static_cast<int>(sizeof(void*)) * 8};
  return platform;
}

bool MayAskForLine(HWND edit) {
  DWORD process = 0;
  GetWindowThreadProcessId(edit, &process);
  return process == GetCurrentProcessId() || ThisPlatform().Wine == 0;
}

}  // namespace krx::test
