#include "com/Module.h"

#include <atomic>

#include "com/Text.h"
#include "com/TypeLibrary.h"

// Placed by the linker at the start of the module that this library is linked into.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the linker names it so
extern "C" IMAGE_DOS_HEADER __ImageBase;

#ifdef __GLIBCXX__
// Gives the memory back that the standard library keeps in reserve for exceptions. It is linked
// into the module, so without this every loading of the module would leave 73 KB behind.
namespace __gnu_cxx {
void __freeres();  // NOLINT(bugprone-reserved-identifier): the library names it so
}
#endif

namespace krx::com {

namespace {

constinit std::atomic<long> locks{0};

#ifdef __GLIBCXX__
const struct StandardLibraryReserve {
  ~StandardLibraryReserve() { __gnu_cxx::__freeres(); }
} reserve;
#endif

}  // namespace

HINSTANCE ModuleHandle() {
  return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

std::wstring ModulePath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length =
        GetModuleFileNameW(ModuleHandle(), path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(2 * path.size());
  }
}

String ModuleName() {
  const std::wstring path = ModulePath();
  const auto start = path.find_last_of(L"\\/") + 1;
  return FromWide(path.substr(start, path.rfind(L'.') - start));
}

void ModuleLock::Add() noexcept {
  ++locks;
}

void ModuleLock::Remove() noexcept {
  if (--locks == 0) ForgetTypeDescriptions();
}

bool CanUnload() {
  return locks == 0;
}

}  // namespace krx::com
