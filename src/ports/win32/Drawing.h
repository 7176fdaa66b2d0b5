#pragma once

#include <vector>

#include "ports/win32/Theme.h"
#include "ui/Pictures.h"

namespace krx::win32 {

// A box as fields and keys are: a border with rounded corners on a ground, and what fills it.
struct BoxLook {
  COLORREF Ground;
  COLORREF Border;
  COLORREF Fill;
  int Thickness;  // of the border, in pixels
  int Radius;     // of the corners
};

// Measures of the look in pixels at 96 dpi.
inline constexpr int kCornerRadius = 3;
inline constexpr int kFocusRing = 2;
inline constexpr int kFieldPadding = 6;  // from a field's edge to its text

// Draws what the system cannot draw with smooth edges. Keeps one bitmap for all of it.
class Drawing {
 public:
  Drawing() = default;
  ~Drawing();
  Drawing(const Drawing&) = delete;
  Drawing& operator=(const Drawing&) = delete;

  void Box(HDC dc, const RECT& place, const BoxLook& look);
  // A picture in the middle of a place whose ground has one colour.
  void Picture(HDC dc, const RECT& place, ui::Picture picture, int size, const ui::Inks& inks,
               COLORREF ground);

 private:
  // Brings pixels of a square into the bitmap; false when the system has no room for one.
  bool Load(const std::vector<ui::Color>& pixels, int size);

  HDC dc_ = nullptr;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ before_ = nullptr;
  std::uint32_t* pixels_ = nullptr;
  int size_ = 0;
};

}  // namespace krx::win32
