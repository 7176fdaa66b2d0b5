#pragma once

namespace krx {

// Every length of the dialogs is in twips, 1440 to the inch.
using Twips = float;

struct Size {
  Twips Width = 0;
  Twips Height = 0;
  bool operator==(const Size&) const = default;
};

struct Rect {
  Twips Left = 0;
  Twips Top = 0;
  Twips Width = 0;
  Twips Height = 0;
  bool operator==(const Rect&) const = default;
};

}  // namespace krx
