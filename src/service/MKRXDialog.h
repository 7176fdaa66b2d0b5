#pragma once

#include <algorithm>
#include <span>

#include "base/Geometry.h"
#include "base/String.h"
#include "ui/Controls.h"

namespace krx::service {

// The text with every line break written as the two characters backslash and "n", as the
// text-index control expects it. CR LF is one break; LF CR are two.
String EncodeLineBreaks(String text);

// The largest of the values; 0 when there is none.
template <class Number>
Number MaxValue(std::span<const Number> values) {
  return values.empty() ? Number(0) : *std::max_element(values.begin(), values.end());
}
template <class Number>
Number MaxValue(std::initializer_list<Number> values) {
  return MaxValue(std::span<const Number>(values.begin(), values.size()));
}

// Height and width in twips of the control's displayed text in its font, measured with the label
// lblSize of its form. Measuring fails as the platform's text measuring does.
Twips MeasureTextHeight(const ui::Control& control);
Twips MeasureTextWidth(const ui::Control& control);

// Selects the whole content, so that typing replaces it.
void SelectAllText(ui::EditBox& box);

}  // namespace krx::service
