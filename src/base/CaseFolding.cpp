#include "base/CaseFolding.h"

namespace krx {

namespace {

bool IsSurrogate(char16_t unit) {
  return (unit & 0xF800) == 0xD800;
}

bool IsPair(StringView text, std::size_t at) {
  return at + 1 < text.size() && (text[at] & 0xFC00) == 0xD800 && (text[at + 1] & 0xFC00) == 0xDC00;
}

}  // namespace

const CaseFolding::Page& CaseFolding::PageOf(char16_t unit) const {
  auto& page = pages_[unit >> 8];
  if (!page) {
    page = std::make_unique<Page>();
    const char32_t first = unit & 0xFF00u;
    for (char32_t i = 0; i < page->size(); ++i)
      (*page)[i] = static_cast<char16_t>(fold_(first + i));
  }
  return *page;
}

char16_t CaseFolding::operator()(char16_t unit) const {
  return IsSurrogate(unit) ? unit : PageOf(unit)[unit & 0xFFu];
}

String CaseFolding::operator()(StringView text) const {
  String folded;
  Into(text, folded);
  return folded;
}

void CaseFolding::Into(StringView text, String& folded) const {
  folded.assign(text);
  for (std::size_t i = 0; i < folded.size(); ++i) {
    if (!IsPair(folded, i)) {
      folded[i] = (*this)(folded[i]);
      continue;
    }
    const char32_t pair = 0x10000u + ((folded[i] & 0x3FFu) << 10) + (folded[i + 1] & 0x3FFu);
    const char32_t letter = fold_(pair) - 0x10000u;
    folded[i] = static_cast<char16_t>(0xD800u + (letter >> 10));
    folded[++i] = static_cast<char16_t>(0xDC00u + (letter & 0x3FFu));
  }
}

}  // namespace krx
