#include "runtime/core/FontClasses.h"

#include <algorithm>

namespace krx::runtime {
namespace {

constexpr std::int16_t kNormal = 400;
constexpr std::int16_t kBold = 700;

constexpr FontClass kClasses[] = {
    {u"KRDialogsText", 9, kNormal},  // first: the class of unknown names
    {u"KRDialogsCaption", 9, kBold}, {u"KRDialogsButton", 9, kNormal},
    {u"KRDialogsInput", 9, kNormal}, {u"KRPanelText", 14, kNormal},
    {u"KRPanelCaption", 14, kBold},  {u"KRPanelButton", 16, kNormal},
    {u"KRPanelInput", 16, kNormal},
};

}  // namespace

std::span<const FontClass> FontClasses() {
  return kClasses;
}

const FontClass& FontClassOf(StringView name) {
  const auto found = std::ranges::find(kClasses, name, &FontClass::Name);
  return found == std::end(kClasses) ? kClasses[0] : *found;
}

Font FontOf(const FontClass& font_class, StringView face) {
  Font font;
  font.Name = face;
  font.Size = font_class.Size;
  font.Weight = font_class.Weight;
  return font;
}

}  // namespace krx::runtime
