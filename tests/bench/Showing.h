#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

namespace krx::bench {

// How long one dialog took, in milliseconds from its call on.
struct Showing {
  double Painted = 0;   // it was there with all its rows; 0 when that was never seen
  double Returned = 0;  // closed as soon as it was painted, its call had returned
  int Choices = 0;      // that its boxes to choose from had when it was painted
};

// What a dialog is like, from having looked at it once. Its windows are counted as they are met.
struct Acquaintance {
  struct List {
    std::size_t Window;
    int Rows;
  };
  std::vector<List> Lists;            // that it fills
  std::optional<std::size_t> Cancel;  // the button that gives it up, else Esc does

  int MostRows() const;
};

using Call = std::function<void()>;

// Opens a dialog, leaves it time to come to rest, and lets `look` look at it before it is closed.
Acquaintance GetToKnow(const Call& call, const std::function<void(HWND dialog)>& look);

// Opens the dialog, and closes it as soon as it is painted.
Showing Measure(const Call& call, const Acquaintance& known);

}  // namespace krx::bench
