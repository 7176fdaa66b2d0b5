#include "soak/Counters.h"

#include <windows.h>
#include <winternl.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/GdiObjects.h"

namespace krx::soak {

namespace {

BOOL CALLBACK CountOwn(HWND window, LPARAM total) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process == GetCurrentProcessId()) ++*reinterpret_cast<long*>(total);
  return TRUE;
}

struct HandleEntry {
  ULONG Process;
  BYTE Type;
  BYTE Flags;
  USHORT Handle;
  void* Object;
  ACCESS_MASK Access;
};

struct HandleTable {
  ULONG Count;
  HandleEntry Entries[1];
};

long CountAtoms() {
  constexpr UINT kFirst = 0xC000;
  constexpr UINT kLast = 0xC7FF;  // the system gives the lowest free ones, and each look takes time
  std::array<wchar_t, 256> name{};
  long count = 0;
  for (UINT atom = kFirst; atom <= kLast; ++atom)
    if (GlobalGetAtomNameW(static_cast<ATOM>(atom), name.data(), static_cast<int>(name.size())))
      ++count;
  return count;
}

}  // namespace

long CountWindows() {
  long count = 0;
  EnumWindows(CountOwn, reinterpret_cast<LPARAM>(&count));
  // Message-only windows have a root of their own.
  HWND window = nullptr;
  while ((window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)))
    CountOwn(window, reinterpret_cast<LPARAM>(&count));
  return count;
}

long CountKernelHandles() {
  constexpr auto kHandleInformation = static_cast<SYSTEM_INFORMATION_CLASS>(16);
  std::vector<std::byte> buffer(1 << 20);
  ULONG needed = 0;
  while (NtQuerySystemInformation(kHandleInformation, buffer.data(),
                                  static_cast<ULONG>(buffer.size()), &needed) != 0)
    buffer.resize(buffer.size() * 2);
  const auto* table = reinterpret_cast<const HandleTable*>(buffer.data());
  long count = 0;
  for (ULONG i = 0; i < table->Count; ++i)
    if (table->Entries[i].Process == GetCurrentProcessId()) ++count;
  return count;
}

long CountHeapBlocks() {
  std::array<HANDLE, 64> heaps{};
  const DWORD found = GetProcessHeaps(heaps.size(), heaps.data());
  long count = 0;
  for (DWORD i = 0; i < found && i < heaps.size(); ++i) {
    PROCESS_HEAP_ENTRY entry{};
    HeapLock(heaps[i]);
    while (HeapWalk(heaps[i], &entry))
      if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) ++count;
    HeapUnlock(heaps[i]);
  }
  return count;
}

Counters Counters::Now() {
  return {CountWindows(), test::GdiObjects(), CountKernelHandles(), CountHeapBlocks(),
          CountAtoms()};
}

Counters operator+(const Counters& a, const Counters& b) {
  return {a.Windows + b.Windows, a.GdiObjects + b.GdiObjects, a.KernelHandles + b.KernelHandles,
          a.HeapBlocks + b.HeapBlocks, a.Atoms + b.Atoms};
}

Counters operator-(const Counters& a, const Counters& b) {
  return {a.Windows - b.Windows, a.GdiObjects - b.GdiObjects, a.KernelHandles - b.KernelHandles,
          a.HeapBlocks - b.HeapBlocks, a.Atoms - b.Atoms};
}

std::string ToString(const Counters& counters) {
  return "windows " + std::to_string(counters.Windows) + ", graphics objects " +
         std::to_string(counters.GdiObjects) + ", handles " +
         std::to_string(counters.KernelHandles) + ", heap blocks " +
         std::to_string(counters.HeapBlocks) + ", atoms " + std::to_string(counters.Atoms);
}

}  // namespace krx::soak
