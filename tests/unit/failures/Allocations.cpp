#include "failures/Allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> live{0};
bool counting = false;
bool failed = false;
bool lasting = false;
long made = 0;
long due = 0;

bool Fails() {
  if (!counting) return false;
  ++made;
  if (due == 0 || made < due || (made > due && !lasting)) return false;
  failed = true;
  return true;
}

void* Allocate(std::size_t size) noexcept {
  void* const block = Fails() ? nullptr : std::malloc(size == 0 ? 1 : size);
  if (block) ++live;
  return block;
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
  if (!block) return;
  --live;
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
  operator delete(block);
}

namespace krx::test {

void Allocations::Fail(long n, bool for_good) {
  made = 0;
  due = n;
  lasting = for_good;
  failed = false;
  counting = true;
}

long Allocations::Stop() {
  counting = false;
  return made;
}

bool Allocations::Failed() {
  return failed;
}

long Allocations::Live() {
  return live;
}

}  // namespace krx::test
