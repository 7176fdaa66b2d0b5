#include "ui/Direction.h"

#include <algorithm>

namespace krx::ui {

namespace {

// Hebrew, Arabic and their neighbours, and the shapes that older texts use for them.
bool IsRightToLeft(char16_t unit) {
  return (unit >= 0x0590 && unit <= 0x08FF) || (unit >= 0xFB1D && unit <= 0xFDFF) ||
         (unit >= 0xFE70 && unit <= 0xFEFC);
}

bool IsLeftToRight(char16_t unit) {
  const bool latin = (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z');
  constexpr char16_t kLetters = 0x00C0;  // signs and digits in other places take no side
  const bool sign = unit >= 0x2000 && unit <= 0x2BFF;
  return latin || (unit >= kLetters && !sign && !IsRightToLeft(unit));
}

}  // namespace

String InsideRightToLeft(StringView text) {
  const auto first = std::find_if(text.begin(), text.end(), [](char16_t unit) {
    return IsRightToLeft(unit) || IsLeftToRight(unit);
  });
  String shown(text);
  const bool number = text.find_first_of(u"0123456789") != StringView::npos;
  if (first == text.end() ? !number : IsRightToLeft(*first)) return shown;
  return kLeftToRightMark + shown + kLeftToRightMark;
}

}  // namespace krx::ui
