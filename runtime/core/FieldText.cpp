#include "runtime/core/FieldText.h"

#include <algorithm>

#include "base/Utf8.h"

namespace krx::runtime {
namespace {

constexpr std::string_view kDigits = "0123456789abcdef";

bool NeedsEscape(char16_t unit) {
  return unit < 0x20 || unit == u'\\' || (unit >= 0x7F && unit <= 0x9F) || unit == 0x2028 ||
         unit == 0x2029;
}

std::optional<unsigned> DigitValue(char32_t digit) {
  const std::size_t value = digit < 0x80 ? kDigits.find(static_cast<char>(digit)) : kDigits.npos;
  if (value == kDigits.npos) return std::nullopt;
  return static_cast<unsigned>(value);
}

// The unit that the four digits after "\u" stand for.
std::optional<char16_t> EscapedUnit(StringView digits) {
  if (digits.size() < 4) return std::nullopt;
  unsigned unit = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    const std::optional<unsigned> digit = DigitValue(digits[i]);
    if (!digit) return std::nullopt;
    unit = unit * 16 + *digit;
  }
  return static_cast<char16_t>(unit);
}

}  // namespace

std::string EscapedField(StringView text) {
  String escaped;
  for (const char16_t unit : text) {
    if (!NeedsEscape(unit)) {
      escaped += unit;
      continue;
    }
    escaped += u"\\u";
    for (int shift = 12; shift >= 0; shift -= 4)
      escaped += static_cast<char16_t>(kDigits[(unit >> shift) & 0xF]);
  }
  return ToUtf8(escaped);
}

std::optional<String> UnescapedField(std::string_view field) {
  const std::optional<String> escaped = FromUtf8(field);
  if (!escaped) return std::nullopt;
  String text;
  for (std::size_t i = 0; i < escaped->size(); ++i) {
    if ((*escaped)[i] != u'\\') {
      text += (*escaped)[i];
      continue;
    }
    const StringView rest = StringView(*escaped).substr(i + 1);
    if (rest.empty() || rest.front() != u'u') return std::nullopt;
    const std::optional<char16_t> unit = EscapedUnit(rest.substr(1));
    if (!unit) return std::nullopt;
    text += *unit;
    i += 5;
  }
  return text;
}

std::string ToHex(std::span<const std::uint8_t> bytes) {
  std::string digits;
  for (const std::uint8_t byte : bytes) {
    digits += kDigits[byte >> 4];
    digits += kDigits[byte & 0xF];
  }
  return digits;
}

std::optional<std::vector<std::uint8_t>> FromHex(std::string_view digits) {
  if (digits.size() % 2 != 0) return std::nullopt;
  std::vector<std::uint8_t> bytes;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const auto high = DigitValue(static_cast<unsigned char>(digits[i]));
    const auto low = DigitValue(static_cast<unsigned char>(digits[i + 1]));
    if (!high || !low) return std::nullopt;
    bytes.push_back(static_cast<std::uint8_t>(*high * 16 + *low));
  }
  return bytes;
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (;;) {
    const std::size_t end = std::min(text.find(separator), text.size());
    parts.push_back(text.substr(0, end));
    if (end == text.size()) return parts;
    text.remove_prefix(end + 1);
  }
}

}  // namespace krx::runtime
