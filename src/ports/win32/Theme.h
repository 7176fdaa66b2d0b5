#pragma once

#include "ports/win32/System.h"
#include "ui/Palette.h"

namespace krx::win32 {

// The colours in which a form and its controls are drawn, whatever the host has switched on.
class Theme {
 public:
  // The one that is asked for; high contrast where the system asks for that.
  explicit Theme(krx::Theme wanted);

  const ui::Palette* operator->() const { return &palette_; }
  const ui::Palette& Colors() const { return palette_; }
  // Red-green-blue value of a colour of the model.
  COLORREF operator()(ui::Color color) const;

 private:
  ui::Palette palette_;
};

// Red-green-blue value of a colour without any theme; system colours are looked up now.
COLORREF PlainColor(ui::Color color);
// A brush of a red-green-blue value, ready for use on `dc`; it belongs to the system.
HBRUSH BrushFor(HDC dc, COLORREF color);
void Flood(HDC dc, const RECT& area, COLORREF color);

}  // namespace krx::win32
