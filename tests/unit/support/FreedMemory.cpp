#include "support/FreedMemory.h"

#include <malloc.h>

#include <cstdlib>
#include <cstring>
#include <new>

namespace {

krx::StringView watched;
std::size_t found = 0;

void* Allocate(std::size_t size) {
  return std::malloc(size == 0 ? 1 : size);
}

void Inspect(void* block) {
  const std::size_t size = malloc_usable_size(block);
  const std::size_t length = watched.size() * sizeof(char16_t);
  if (length == 0 || size < length) return;
  const auto* const bytes = static_cast<const char*>(block);
  for (std::size_t at = 0; at + length <= size; at += sizeof(char16_t)) {
    if (std::memcmp(bytes + at, watched.data(), length) == 0) {
      ++found;
      return;
    }
  }
}

}  // namespace

void* operator new(std::size_t size) {
  if (void* const block = Allocate(size)) return block;
  throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size);
}
void operator delete(void* block) noexcept {
  Inspect(block);
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
  operator delete(block);
}

namespace krx::test {

FreedMemory::FreedMemory(StringView text) {
  watched = text;
  found = 0;
}

FreedMemory::~FreedMemory() {
  watched = {};
}

std::size_t FreedMemory::BlocksWithText() const {
  return found;
}

}  // namespace krx::test
