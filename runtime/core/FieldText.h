#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/String.h"

namespace krx::runtime {

// UTF-8 of a field in a line of tab-separated fields: backslash, control characters and Unicode's
// line separators become escapes, so a field never ends its line or its neighbour.
std::string EscapedField(StringView text);

// The text of an escaped field; nothing when it is no escaped text.
std::optional<String> UnescapedField(std::string_view field);

// Lower-case hexadecimal notation.
std::string ToHex(std::span<const std::uint8_t> bytes);
std::optional<std::vector<std::uint8_t>> FromHex(std::string_view digits);

// The number in decimal notation that the whole text is; nothing when it is none.
template <class Number>
std::optional<Number> WholeNumber(std::string_view text) {
  Number number{};
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (failure != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

// The parts of a text between separators; one more than there are separators.
std::vector<std::string_view> Split(std::string_view text, char separator);

}  // namespace krx::runtime
