#include "runtime/users/directory/Escaping.h"

namespace krx::runtime {
namespace {

constexpr StringView kEscapeDigits = u"0123456789abcdef";
constexpr StringView kUserMark = u"{user}";
constexpr StringView kDnMark = u"{dn}";

void AppendHex(String& text, char16_t unit) {
  text += u'\\';
  text += kEscapeDigits[(unit >> 4) & 0xF];
  text += kEscapeDigits[unit & 0xF];
}

String Filled(StringView text, const String& user, const String& dn) {
  String filled;
  for (std::size_t i = 0; i < text.size();) {
    const StringView rest = text.substr(i);
    if (rest.starts_with(kUserMark)) {
      filled += user;
      i += kUserMark.size();
    } else if (rest.starts_with(kDnMark)) {
      filled += dn;
      i += kDnMark.size();
    } else {
      filled += text[i++];
    }
  }
  return filled;
}

bool IsHexDigit(char16_t unit) {
  return kEscapeDigits.find(AsciiLower(unit)) != StringView::npos;
}

bool IsSeparator(char16_t unit) {
  return unit == u',' || unit == u'=' || unit == u'+';
}

}  // namespace

String EscapedForFilter(StringView text) {
  String escaped;
  for (const char16_t unit : text) {
    if (unit < 0x20 || StringView(u"*()\\").find(unit) != StringView::npos)
      AppendHex(escaped, unit);
    else
      escaped += unit;
  }
  return escaped;
}

String EscapedForDn(StringView text) {
  String escaped;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    const bool at_end = i == 0 || i + 1 == text.size();
    if (unit < 0x20) {
      AppendHex(escaped, unit);
      continue;
    }
    if (StringView(u"\"+,;<=>\\").find(unit) != StringView::npos || (unit == u'#' && i == 0) ||
        (unit == u' ' && at_end))
      escaped += u'\\';
    escaped += unit;
  }
  return escaped;
}

String FilledFilter(StringView filter, StringView user, StringView dn) {
  return Filled(filter, EscapedForFilter(user), EscapedForFilter(dn));
}

String FilledBindName(StringView name, StringView user, StringView dn) {
  const bool is_dn = name.find(u'=') != name.npos;
  return Filled(name, is_dn ? EscapedForDn(user) : String(user), String(dn));
}

String ComparableDn(StringView dn) {
  String comparable;
  std::size_t solid = 0;  // without blanks that end a value
  bool escaped = false;
  bool after_separator = true;
  for (const char16_t unit : dn) {
    if (unit == u' ' && after_separator && !escaped) continue;
    after_separator = IsSeparator(unit) && !escaped;
    if (after_separator) comparable.resize(solid);
    comparable += AsciiLower(unit);
    if (unit != u' ' || escaped) solid = comparable.size();
    escaped = unit == u'\\' && !escaped;
  }
  return comparable;
}

String FirstValueOf(StringView dn, std::string_view attribute) {
  const std::size_t equals = dn.find(u'=');
  if (equals == dn.npos) return {};
  const String wanted = AsciiLower(String(attribute.begin(), attribute.end()));
  if (ComparableDn(dn.substr(0, equals)) != wanted) return {};
  String value;
  for (std::size_t i = equals + 1; i < dn.size() && dn[i] != u','; ++i) {
    // Names with other escapes than of one sign are read with their entries.
    const bool escapes = dn[i] == u'\\';
    if (dn[i] == u'+' || (escapes && (i + 1 == dn.size() || IsHexDigit(dn[i + 1])))) return {};
    value += dn[escapes ? ++i : i];
  }
  return value;
}

}  // namespace krx::runtime
