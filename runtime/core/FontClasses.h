#pragma once

#include <span>

#include "base/Font.h"
#include "base/String.h"

namespace krx::runtime {

// A font class: what it adds to the face of the operator's system. Size is in points.
struct FontClass {
  StringView Name;
  float Size;
  std::int16_t Weight;
};

// All font classes: KRDialogs... for a desktop with a mouse, KRPanel... for a gloved finger on a
// touch panel.
std::span<const FontClass> FontClasses();

// The class of a name, case-sensitive; KRDialogsText for any other name.
const FontClass& FontClassOf(StringView name);

// The font of a class in a face.
Font FontOf(const FontClass& font_class, StringView face);

}  // namespace krx::runtime
