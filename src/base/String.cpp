#include "base/String.h"

#include <limits>

#include "base/Error.h"

namespace krx {

String ToString(std::int32_t value) {
  const std::string digits = std::to_string(value);
  return String(digits.begin(), digits.end());
}

std::int32_t ToLong(StringView text) {
  const bool negative = !text.empty() && text.front() == u'-';
  const StringView digits = negative ? text.substr(1) : text;
  if (digits.empty() || digits.size() > 10) throw TypeMismatch();
  std::int64_t value = 0;
  for (const char16_t digit : digits) {
    if (digit < u'0' || digit > u'9') throw TypeMismatch();
    value = value * 10 + (digit - u'0');
  }
  if (negative) value = -value;
  using Limits = std::numeric_limits<std::int32_t>;
  if (value < Limits::min() || value > Limits::max()) throw TypeMismatch();
  return static_cast<std::int32_t>(value);
}

namespace {

bool IsHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLowSurrogate(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

void AppendUtf8(std::string& out, char32_t point) {
  if (point < 0x80) {
    out += static_cast<char>(point);
  } else if (point < 0x800) {
    out += static_cast<char>(0xC0 | (point >> 6));
    out += static_cast<char>(0x80 | (point & 0x3F));
  } else if (point < 0x10000) {
    out += static_cast<char>(0xE0 | (point >> 12));
    out += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (point & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (point >> 18));
    out += static_cast<char>(0x80 | ((point >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (point & 0x3F));
  }
}

}  // namespace

std::string ToUtf8(StringView text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t point = text[i];
    if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      point = 0x10000 + ((point - 0xD800) << 10) + (text[++i] - 0xDC00);
    } else if (IsHighSurrogate(text[i]) || IsLowSurrogate(text[i])) {
      point = 0xFFFD;
    }
    AppendUtf8(out, point);
  }
  return out;
}

char16_t AsciiUpper(char16_t unit) {
  return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}

char16_t AsciiLower(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

namespace {

String Mapped(StringView text, char16_t (*map)(char16_t)) {
  String mapped(text);
  for (char16_t& unit : mapped)
    unit = map(unit);
  return mapped;
}

}  // namespace

String AsciiUpper(StringView text) {
  return Mapped(text, AsciiUpper);
}

String AsciiLower(StringView text) {
  return Mapped(text, AsciiLower);
}

String ReplaceAll(String text, StringView what, StringView by) {
  std::size_t at = text.find(what);
  if (at == String::npos) return text;
  // Put together anew: replacing in place would move the rest of the text each time.
  String out;
  out.reserve(text.size());
  std::size_t from = 0;
  for (; at != String::npos; at = text.find(what, from)) {
    out.append(text, from, at - from).append(by);
    from = at + what.size();
  }
  return out.append(text, from);
}

}  // namespace krx
