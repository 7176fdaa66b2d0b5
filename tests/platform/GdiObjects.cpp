#include "platform/GdiObjects.h"

#include <windows.h>
#include <winternl.h>

#include <cstddef>
#include <cstdint>
#include <stdexcept>

namespace krx::test {

namespace {

constexpr std::size_t kTableInBlock = 0xF8;
constexpr int kEntries = 0x4000;

struct GdiEntry {
  std::uint64_t Object;
  std::uint32_t Owner;
  std::uint16_t Unique;
  std::uint8_t Type;  // 0 in a free entry
  std::uint8_t Stock;
  std::uint64_t UserData;
};
static_assert(sizeof(GdiEntry) == 24);

template <class T>
T At(std::uint64_t address) {
  return *reinterpret_cast<const T*>(static_cast<std::uintptr_t>(address));
}

// The environment block of a 64-bit process, which every process has here.
#ifdef _WIN64
std::uint64_t Block() {
  PROCESS_BASIC_INFORMATION process{};
  NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &process, sizeof process,
                            nullptr);
  return reinterpret_cast<std::uint64_t>(process.PebBaseAddress);
}
#else
struct ThreadInformation {
  NTSTATUS ExitStatus;
  std::uintptr_t Block;
  std::uintptr_t Rest[5];
};

// A 32-bit thread knows its 64-bit side, and that one the block.
std::uint64_t Block() {
  constexpr auto kBasic = static_cast<THREADINFOCLASS>(0);
  constexpr std::size_t kOtherSide = 0xF70;
  constexpr std::size_t kBlockInThread = 0x60;
  ThreadInformation thread{};
  NtQueryInformationThread(GetCurrentThread(), kBasic, &thread, sizeof thread, nullptr);
  const auto other_side = At<std::uint32_t>(thread.Block + kOtherSide);
  if (!other_side) throw std::runtime_error("graphics objects cannot be counted on this system");
  return At<std::uint64_t>(other_side + kBlockInThread);
}
#endif

}  // namespace

int GdiObjects() {
  const auto table = At<std::uint64_t>(Block() + kTableInBlock);
  const auto* entries = reinterpret_cast<const GdiEntry*>(static_cast<std::uintptr_t>(table));
  int used = 0;
  for (int i = 0; i < kEntries; ++i)
    used += entries[i].Type != 0;
  return used;
}

}  // namespace krx::test
