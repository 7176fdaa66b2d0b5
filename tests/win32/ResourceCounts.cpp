#include "ResourceCounts.h"

#include <windows.h>
#include <winternl.h>

#include <array>
#include <cstddef>
#include <vector>

namespace krx::test {

namespace {

BOOL CALLBACK CountWindow(HWND, LPARAM data) {
  ++*reinterpret_cast<int*>(data);
  return TRUE;
}

struct Handle {
  ULONG Owner;
  BYTE Type;
  BYTE Flags;
  USHORT Value;
  PVOID Object;
  ULONG Access;
};

}  // namespace

int Windows() {
  int count = 0;
  EnumThreadWindows(GetCurrentThreadId(), CountWindow, reinterpret_cast<LPARAM>(&count));
  return count;
}

int KernelHandles() {
  constexpr int kHandleInformation = 16;
  std::vector<std::byte> buffer(1 << 20);
  ULONG length = 0;
  while (NtQuerySystemInformation(static_cast<SYSTEM_INFORMATION_CLASS>(kHandleInformation),
                                  buffer.data(), static_cast<ULONG>(buffer.size()), &length) < 0)
    buffer.resize(buffer.size() * 2);
  const ULONG count = *reinterpret_cast<const ULONG*>(buffer.data());
  const auto* handles = reinterpret_cast<const Handle*>(buffer.data() + sizeof(void*));
  int own = 0;
  for (ULONG i = 0; i < count; ++i)
    own += handles[i].Owner == GetCurrentProcessId();
  return own;
}

int NameAtoms() {
  constexpr int kFirst = 0xC000;
  constexpr int kLast = 0xFFFF;
  std::array<wchar_t, 256> name{};
  int used = 0;
  for (int atom = kFirst; atom <= kLast; ++atom)
    used += GlobalGetAtomNameW(static_cast<ATOM>(atom), name.data(),
                               static_cast<int>(name.size())) != 0;
  return used;
}

int HeapBlocks() {
  PROCESS_HEAP_ENTRY entry{};
  int used = 0;
  const HANDLE heap = GetProcessHeap();
  HeapLock(heap);
  while (HeapWalk(heap, &entry))
    used += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0;
  HeapUnlock(heap);
  return used;
}

}  // namespace krx::test
