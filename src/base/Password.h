#pragma once

#include <vector>

#include "base/String.h"

namespace krx {

// A secret text that is wiped from memory when it is replaced, moved from or destroyed.
class Password {
 public:
  Password() = default;
  explicit Password(StringView text) : units_(text.begin(), text.end()) {}
  Password(Password&& other) noexcept : units_(std::move(other.units_)) {}
  Password& operator=(Password&& other) noexcept;
  Password(const Password&) = delete;
  Password& operator=(const Password&) = delete;
  ~Password() { Wipe(); }

  bool Empty() const { return units_.empty(); }
  std::size_t Length() const { return units_.size(); }
  // Valid as long as this password is neither changed nor gone.
  StringView View() const { return {units_.data(), units_.size()}; }
  bool operator==(const Password& other) const = default;

  // This password with a part replaced; the selection of an input box and what is typed over it.
  Password With(std::size_t start, std::size_t length, StringView replacement) const;

 private:
  void Wipe() noexcept;

  std::vector<char16_t> units_;  // never grown in place: a reallocation would leave a copy behind
};

}  // namespace krx
