#pragma once

#include <functional>
#include <optional>

#include "ports/win32/FormPeer.h"
#include "ui/BarTrack.h"

namespace krx::win32 {

// A scroll bar of a window, in the colours of its form. It lies beside the client area as
// the system's does, a level one below it, whose colours and width nobody can choose, and is worked
// alike: arrows and pages repeat while they are held, the thumb is dragged.
class ScrollBar {
 public:
  // What it scrolls.
  struct Target {
    std::function<ui::BarTrack::Rows()> Rows;
    std::function<void(int top)> ScrollTo;
  };
  enum class Wide { AsUsual, ForFingers };
  enum class Lie { Upright, Level };

  ScrollBar(Toolkit& toolkit, FormPeer& form, Wide wide, Target target, Lie lie = Lie::Upright)
      : toolkit_(toolkit), form_(form), wide_(wide), lie_(lie), target_(std::move(target)) {}

  int Width() const;
  // Hears every message of the window before the window does; none where the message is not the
  // bar's.
  std::optional<LRESULT> Hear(HWND window, UINT message, WPARAM w, LPARAM l);
  // Takes the bar's room, where there is something to scroll, off what is to be the client area.
  void TakeRoom(HWND window, RECT& client);
  // Rows or place have changed.
  void Follow(HWND window);
  void Paint(HWND window) const;

 private:
  using Part = ui::BarTrack::Part;

  bool Level() const { return lie_ == Lie::Level; }
  bool OnTheLeft() const { return form_.Mirrored(); }
  UINT_PTR Timer() const;
  // How far a point is from the bar's beginning.
  int Along(const RECT& place, POINT screen) const;
  // A part of the bar between two distances from its beginning.
  RECT Piece(const RECT& place, int from, int to) const;
  RECT PlaceOnScreen(HWND window) const;
  ui::BarTrack Track(const RECT& place, const ui::BarTrack::Rows& rows) const;
  Part PartAt(HWND window, POINT screen) const;
  bool Press(HWND window, POINT screen);
  void Move(HWND window, POINT screen);
  void Step(HWND window);
  void Repeat(HWND window);
  void LetGo(HWND window);
  void Heat(HWND window, Part part);
  void PaintArrow(HDC dc, const RECT& place, Part part) const;
  void PaintThumb(HDC dc, const RECT& place) const;

  Toolkit& toolkit_;
  FormPeer& form_;
  const Wide wide_;
  const Lie lie_;
  const Target target_;
  bool has_room_ = false;
  ui::BarTrack::Rows shown_;
  Part hot_ = Part::None;
  Part held_ = Part::None;
  POINT pointer_{};  // where it was last while a part is held
  int grip_ = 0;     // from the thumb's beginning to the pointer
  bool captured_ = false;
};

// The system's own bars are not wanted: it shows them by the window's style, anew whenever it is
// told what there is to scroll.
void DropSystemBars(HWND window, LONG_PTR bars);

// How many rows the wheel turns on; `rest` keeps what is less than one.
int RowsTurned(int delta, int page, int& rest);

}  // namespace krx::win32
