#include "panel/Placement.h"

#include <algorithm>
#include <cmath>

namespace krx::panel {

namespace {

constexpr Twips kGap = 0.8f * kMillimetre;      // around each key
constexpr Twips kWidestKey = 16 * kMillimetre;  // a key, lest fingers have to travel
constexpr Twips kLeeway = 1.5f * kMillimetre;   // around what must be seen; the form's edges, too

// Heights of keys from the one that is wished for to the lowest, with the spare rows or without.
struct Choice {
  bool Spare;
  Twips KeyHeight;
};
constexpr Choice kComfortable[] = {
    {true, 10 * kMillimetre}, {true, 9 * kMillimetre}, {false, 9 * kMillimetre}};
// Where not all of the form finds room beside the keyboard, a low one hides least of it.
constexpr Choice kTight[] = {
    {false, 9 * kMillimetre}, {false, 8 * kMillimetre}, {false, 7 * kMillimetre}};

struct Span {
  Twips From;
  Twips To;
  Twips Length() const { return To - From; }
};

Span DownOf(const Rect& rect) {
  return {rect.Top, rect.Top + rect.Height};
}

Twips Up(Twips length, Twips pixel) {
  return std::ceil(length / pixel - 0.001f) * pixel;
}

Twips Down(Twips length, Twips pixel) {
  return std::floor(length / pixel + 0.001f) * pixel;
}

// What must be in sight while the operator is in a field, from top to bottom.
Span Needed(const Situation& situation, const Rect& field) {
  Span needed = DownOf(field);
  if (situation.Buttons) {
    const Span buttons = DownOf(*situation.Buttons);
    needed = {std::min(needed.From, buttons.From), std::max(needed.To, buttons.To)};
  }
  return {needed.From - kLeeway, needed.To + kLeeway};
}

class Chooser {
 public:
  explicit Chooser(const Situation& situation)
      : now_(situation), area_(DownOf(situation.Area)), form_(DownOf(situation.Form)) {}

  Shape Best() const {
    for (const Choice& choice : kComfortable)
      if (form_.Length() <= Room(Make(choice))) return Make(choice);
    for (const Choice& choice : kTight)
      if (const auto shape = WithNeeded(choice)) return *shape;
    return Make(kTight[2]);
  }

 private:
  // What is left of the area's height.
  Twips Room(const Shape& shape) const { return area_.Length() - shape.Bounds.Height; }

  // With room for every field and the buttons; at the top where the form can stay for that.
  std::optional<Shape> WithNeeded(const Choice& choice) const {
    Shape shape = Make(choice);
    for (const Rect& field : now_.Fields)
      if (Needed(now_, field).Length() > Room(shape)) return std::nullopt;
    if (form_.Length() <= Room(shape)) return shape;
    Shape at_top = shape;
    at_top.AtTop = true;
    at_top.Bounds.Top = area_.From;
    const Twips below = area_.From + shape.Bounds.Height;
    const bool all_below =
        std::all_of(now_.Fields.begin(), now_.Fields.end(),
                    [&](const Rect& field) { return Needed(now_, field).From >= below; });
    return all_below && form_.To <= area_.To ? at_top : shape;
  }

  Shape Make(const Choice& choice) const {
    const Twips pixel = now_.Pixel;
    Shape shape;
    shape.Spare = choice.Spare && now_.SpareRows > 0;
    shape.Gap = std::max(Down(kGap, pixel), pixel);
    const int rows = now_.Rows + (shape.Spare ? now_.SpareRows : 0);
    const Twips height = static_cast<Twips>(rows) * (Up(choice.KeyHeight, pixel) + shape.Gap);
    const Twips widest = now_.KeysPerRow * (kWidestKey + shape.Gap);
    shape.Bounds.Height = height + shape.Gap + kEdges;
    shape.Bounds.Width = std::min(Down(widest + shape.Gap + kEdges, pixel), now_.Area.Width);
    shape.Bounds.Left = now_.Area.Left + Down((now_.Area.Width - shape.Bounds.Width) / 2, pixel);
    shape.Bounds.Top = area_.To - shape.Bounds.Height;
    return shape;
  }

  const Situation& now_;
  const Span area_;
  const Span form_;
};

}  // namespace

Shape ShapeFor(const Situation& situation) {
  return Chooser(situation).Best();
}

Twips TopFor(const Situation& situation, const Shape& shape, const Rect& field) {
  const Twips home = situation.Form.Top;
  if (shape.AtTop) return home;
  const Twips top = situation.Area.Top;
  const Twips bottom = shape.Bounds.Top;
  const Twips whole = Down(bottom - situation.Form.Height, situation.Pixel);
  if (whole >= top) return std::min(home, std::max(whole - Down(kLeeway, situation.Pixel), top));
  // How far the form goes up for its needed part to end above the keyboard; not so far that the
  // field goes out of sight.
  const Span needed = Needed(situation, field);
  const Twips up = std::max(needed.To - bottom, 0.0f);
  const Twips most = std::max(field.Top - kLeeway - top, 0.0f);
  const Twips moved = std::min(Up(up, situation.Pixel), Down(most, situation.Pixel));
  return home - moved;
}

bool Inside(const Situation& situation, Twips top) {
  const Span area = DownOf(situation.Area);
  return top >= area.From && top + situation.Form.Height <= area.To;
}

}  // namespace krx::panel
