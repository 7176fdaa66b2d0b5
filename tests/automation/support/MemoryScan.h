#pragma once

#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

namespace krx::test {

// How often a text stands in the memory of a process.
struct Copies {
  int Text = 0;   // UTF-16
  int Bytes = 0;  // one for each character
};

namespace memory_scan {

template <class Unit, class UnitAt>
int Count(const std::vector<std::uint8_t>& piece, std::size_t size, std::size_t length,
          const UnitAt& unit_at) {
  int found = 0;
  for (std::size_t at = 0; at + length * sizeof(Unit) <= size; ++at) {
    std::size_t i = 0;
    for (; i < length; ++i) {
      Unit unit{};
      std::memcpy(&unit, &piece[at + i * sizeof(Unit)], sizeof(Unit));
      if (unit != static_cast<Unit>(unit_at(i))) break;
    }
    if (i == length) ++found;
  }
  return found;
}

}  // namespace memory_scan

// Looks through the whole committed memory of a process, freed blocks and stacks included. What is
// looked for comes one unit after the other: a program that scans itself must not hold it.
template <class UnitAt>
Copies CopiesIn(HANDLE process, std::size_t length, const UnitAt& unit_at) {
  constexpr std::size_t kPiece = 1 << 16;
  static std::vector<std::uint8_t> piece(kPiece);
  const std::size_t overlap = 2 * length - 1;
  Copies found;
  MEMORY_BASIC_INFORMATION region{};
  for (auto* at = static_cast<std::uint8_t*>(nullptr);
       VirtualQueryEx(process, at, &region, sizeof(region)) == sizeof(region);
       at = static_cast<std::uint8_t*>(region.BaseAddress) + region.RegionSize) {
    const bool is_readable =
        region.State == MEM_COMMIT && (region.Protect & (PAGE_NOACCESS | PAGE_GUARD)) == 0;
    for (std::size_t done = 0; is_readable && done < region.RegionSize; done += kPiece - overlap) {
      SIZE_T read = 0;
      ReadProcessMemory(process, static_cast<std::uint8_t*>(region.BaseAddress) + done,
                        piece.data(), std::min<std::size_t>(kPiece, region.RegionSize - done),
                        &read);
      found.Text += memory_scan::Count<char16_t>(piece, read, length, unit_at);
      found.Bytes += memory_scan::Count<std::uint8_t>(piece, read, length, unit_at);
      SecureZeroMemory(piece.data(), piece.size());
    }
  }
  return found;
}

}  // namespace krx::test
