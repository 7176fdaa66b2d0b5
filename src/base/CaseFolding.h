#pragma once

#include <array>
#include <functional>
#include <memory>

#include "base/String.h"

namespace krx {

// Makes letters that differ in case alone the same, by Unicode's simple case folding as a platform
// knows it. Texts keep their length. What was asked once is remembered, for lists have many rows.
class CaseFolding {
 public:
  using Fold = std::function<char32_t(char32_t)>;

  explicit CaseFolding(Fold fold) : fold_(std::move(fold)) {}

  char16_t operator()(char16_t unit) const;
  String operator()(StringView text) const;
  // The same into a text that exists, which saves its memory from being taken again.
  void Into(StringView text, String& folded) const;

 private:
  using Page = std::array<char16_t, 256>;

  const Page& PageOf(char16_t unit) const;

  const Fold fold_;
  mutable std::array<std::unique_ptr<Page>, 256> pages_;
};

}  // namespace krx
