#include "base/Password.h"

#include <algorithm>
#include <utility>

namespace krx {

Password& Password::operator=(Password&& other) noexcept {
  if (this == &other) return *this;
  Wipe();
  units_ = std::exchange(other.units_, {});
  return *this;
}

Password Password::With(std::size_t start, std::size_t length, StringView replacement) const {
  const std::size_t from = std::min(start, units_.size());
  const std::size_t removed = std::min(length, units_.size() - from);
  Password changed;
  changed.units_.reserve(units_.size() - removed + replacement.size());
  const auto at = units_.begin() + static_cast<std::ptrdiff_t>(from);
  changed.units_.insert(changed.units_.end(), units_.begin(), at);
  changed.units_.insert(changed.units_.end(), replacement.begin(), replacement.end());
  changed.units_.insert(changed.units_.end(), at + static_cast<std::ptrdiff_t>(removed),
                        units_.end());
  return changed;
}

void Password::Wipe() noexcept {
  // Volatile, so that the compiler cannot drop writes to memory that is about to be freed.
  volatile char16_t* const memory = units_.data();
  for (std::size_t i = 0; i < units_.size(); ++i)
    memory[i] = 0;
  units_.clear();
}

}  // namespace krx
