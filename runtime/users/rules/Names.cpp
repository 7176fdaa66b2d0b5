#include "runtime/users/rules/Names.h"

#include <algorithm>

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

char16_t Folded(char16_t unit) {
  for (const CaseRange& range : kCaseRanges) {
    if (unit < range.First || unit > range.Last) continue;
    if ((unit - range.First) % range.Step != 0) return unit;
    return static_cast<char16_t>(unit + range.Distance);
  }
  return unit;
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
  if (name.empty() || CountCodePoints(name) > kLongestName || !IsWellFormed(name)) return false;
  if (IsBlank(name.front()) || IsBlank(name.back())) return false;
  return std::none_of(name.begin(), name.end(), IsControl);
}

bool IsValidDescription(StringView text) {
  return CountCodePoints(text) <= kLongestDescription && IsWellFormed(text);
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
