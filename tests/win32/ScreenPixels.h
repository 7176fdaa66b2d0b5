#pragma once

#include <windows.h>

#include <vector>

#include "ui/Palette.h"

namespace krx::test {

// The colours of a theme, as a form shows them that asks for it.
ui::Palette ColorsOf(Theme theme);
inline const ui::Palette kLight = ColorsOf(Theme::Light);

// The pixels of a part of the screen, line by line, as the operator sees them.
std::vector<COLORREF> ScreenPixels(const RECT& place);
// The colour that most of them have; CLR_INVALID for none.
COLORREF GroundOf(std::vector<COLORREF> pixels);

}  // namespace krx::test
