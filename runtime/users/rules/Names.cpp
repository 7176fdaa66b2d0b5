#include "runtime/users/rules/Names.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace krx::runtime {
namespace {

bool IsHigh(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLow(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

bool IsPairAt(StringView text, std::size_t at) {
  return IsHigh(text[at]) && at + 1 < text.size() && IsLow(text[at + 1]);
}

bool IsControl(char16_t unit) {
  return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F) || unit == 0x2028 || unit == 0x2029;
}

bool IsBlank(char16_t unit) {
  return unit == u' ' || unit == 0xA0 || unit == 0x3000 || (unit >= 0x2000 && unit <= 0x200B);
}

// Letters from `First` to `Last` that have their small letter `Distance` further on. With `Step` 2
// capital and small letters alternate.
struct CaseRange {
  char16_t First;
  char16_t Last;
  int Step;
  int Distance;
};

constexpr CaseRange kCaseRanges[] = {
    {u'A', u'Z', 1, 32},     {0x00C0, 0x00D6, 1, 32},   {0x00D8, 0x00DE, 1, 32},
    {0x0100, 0x012E, 2, 1},  {0x0132, 0x0136, 2, 1},    {0x0139, 0x0147, 2, 1},
    {0x014A, 0x0176, 2, 1},  {0x0178, 0x0178, 1, -121}, {0x0179, 0x017D, 2, 1},
    {0x0386, 0x0386, 1, 38}, {0x0388, 0x038A, 1, 37},   {0x038C, 0x038C, 1, 64},
    {0x038E, 0x038F, 1, 63}, {0x0391, 0x03AB, 1, 32},   {0x03C2, 0x03C2, 1, 1},
    {0x0400, 0x040F, 1, 80}, {0x0410, 0x042F, 1, 32},   {0x0460, 0x0480, 2, 1},
    {0x048A, 0x04BE, 2, 1},  {0x04C1, 0x04CD, 2, 1},    {0x04D0, 0x052E, 2, 1},
    {0x1E00, 0x1E94, 2, 1},  {0x1EA0, 0x1EFE, 2, 1},
};

// Sorting ten thousand names folds millions of letters, most of them of ASCII.
char16_t Folded(char16_t unit) {
  if (unit < 0x80) return AsciiLower(unit);
  for (const CaseRange& range : kCaseRanges) {
    if (unit < range.First) break;
    if (unit > range.Last) continue;
    if ((unit - range.First) % range.Step != 0) return unit;
    return static_cast<char16_t>(unit + range.Distance);
  }
  return unit;
}

struct CodeRange {
  char32_t First;
  char32_t Last;
};

// What has no look of its own: format characters, joiners, fillers, variation selectors, tags and
// code points that are no characters; and white space that could pass as a blank.
constexpr CodeRange kUnseen[] = {
    {0x00A0, 0x00A0},   {0x00AD, 0x00AD},   {0x034F, 0x034F},   {0x061C, 0x061C},
    {0x115F, 0x1160},   {0x1680, 0x1680},   {0x17B4, 0x17B5},   {0x180B, 0x180F},
    {0x2000, 0x200F},   {0x2028, 0x202F},   {0x205F, 0x206F},   {0x2800, 0x2800},
    {0x3000, 0x3000},   {0x3164, 0x3164},   {0xFDD0, 0xFDEF},   {0xFE00, 0xFE0F},
    {0xFEFF, 0xFEFF},   {0xFFA0, 0xFFA0},   {0xFFF0, 0xFFFC},   {0x110BD, 0x110BD},
    {0x13430, 0x1343F}, {0x1BCA0, 0x1BCA3}, {0x1D173, 0x1D17A}, {0xE0000, 0xE0FFF},
};

bool IsUnseen(char32_t code) {
  const bool is_no_character = (code & 0xFFFE) == 0xFFFE;
  return is_no_character ||
         std::any_of(std::begin(kUnseen), std::end(kUnseen), [code](const CodeRange& range) {
           return code >= range.First && code <= range.Last;
         });
}

// The first one of a well-formed text.
std::optional<char32_t> FindUnseen(StringView text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t code = text[i];
    if (IsPairAt(text, i)) {
      code = 0x10000 + ((code - 0xD800) << 10) + (text[i + 1] - char32_t{0xDC00});
      ++i;
    }
    if (IsUnseen(code)) return code;
  }
  return std::nullopt;
}

String CodePointName(char32_t code) {
  constexpr StringView kDigits = u"0123456789ABCDEF";
  String name = u"U+";
  for (int shift = code > 0xFFFF ? 20 : 12; shift >= 0; shift -= 4) {
    const char32_t digit = (code >> shift) & 0xF;
    if (shift < 20 || digit > 0) name += kDigits[digit];
  }
  return name;
}

// What turns the order of the text around it; marks of a direction only hold their own place.
bool IsTurning(char16_t unit) {
  return (unit >= 0x202A && unit <= 0x202E) || (unit >= 0x2066 && unit <= 0x2069);
}

}  // namespace

std::size_t CountCodePoints(StringView text) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < text.size(); ++i, ++count) {
    if (IsPairAt(text, i)) ++i;
  }
  return count;
}

bool IsWellFormed(StringView text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (IsPairAt(text, i)) {
      ++i;
    } else if (IsHigh(text[i]) || IsLow(text[i])) {
      return false;
    }
  }
  return true;
}

bool IsValidUserName(StringView name) {
  return IsValidClassName(name) && !FindUnseen(name);
}

String ReasonAgainstUserName(StringView name) {
  if (IsValidUserName(name)) return {};
  String reason = u"this is no user name";
  const auto unseen = IsWellFormed(name) ? FindUnseen(name) : std::nullopt;
  if (unseen) reason += u": it has a character that is not seen, " + CodePointName(*unseen);
  return reason;
}

bool IsValidClassName(StringView name) {
  if (name.empty() || CountCodePoints(name) > kLongestName || !IsWellFormed(name)) return false;
  if (IsBlank(name.front()) || IsBlank(name.back())) return false;
  return std::none_of(name.begin(), name.end(), IsControl);
}

bool IsValidDescription(StringView text) {
  return CountCodePoints(text) <= kLongestDescription && IsWellFormed(text);
}

bool IsValidFullName(StringView text) {
  return IsValidDescription(text) && std::none_of(text.begin(), text.end(), IsTurning);
}

bool EqualIgnoringCase(StringView left, StringView right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char16_t a, char16_t b) { return Folded(a) == Folded(b); });
}

String FoldedName(StringView name) {
  String folded(name);
  std::transform(folded.begin(), folded.end(), folded.begin(), Folded);
  return folded;
}

bool PrecedesInList(StringView left, StringView right) {
  return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                      [](char16_t a, char16_t b) { return Folded(a) < Folded(b); });
}

}  // namespace krx::runtime
