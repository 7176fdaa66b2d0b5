#pragma once

#include <optional>
#include <vector>

#include "base/Geometry.h"

namespace krx::panel {

// Lengths on the glass. A key is never lower than 7 mm; where the screen has room it is at least
// 12 mm wide and 9 mm high.
inline constexpr Twips kMillimetre = 1440 / 25.4f;

// Around every form, on both sides together.
inline constexpr Twips kEdges = 30;

// What decides on the place of a keyboard; rectangles in twips of the screen, with the form where
// it is without a keyboard.
struct Situation {
  Rect Area;         // that the keyboard and the form may use
  Twips Pixel = 15;  // everything is placed on whole pixels
  Rect Form;
  std::vector<Rect> Fields;     // that take text
  std::optional<Rect> Buttons;  // around all answer buttons
  float KeysPerRow = 13;
  int Rows = 4;       // that are always there
  int SpareRows = 1;  // that come in addition where there is room
};

// A keyboard: where it stands and how large its keys are.
struct Shape {
  Rect Bounds;
  bool Spare = false;  // with the spare rows
  bool AtTop = false;  // of the screen, above a form that stays where it is
  Twips Gap = 0;       // around each key
  bool operator==(const Shape&) const = default;
};

// The best keyboard for a form. It serves all fields, so it stays as it is while the operator goes
// from one to the next.
Shape ShapeFor(const Situation& situation);

// Where the upper edge of the form belongs while the operator is in this field: in its own place,
// above the keyboard, or, where it is too high for that, with field and buttons in sight. Where
// there is no room for both, the field comes first.
Twips TopFor(const Situation& situation, const Shape& shape, const Rect& field);

// Whether a form with this upper edge is all within the area.
bool Inside(const Situation& situation, Twips top);

}  // namespace krx::panel
