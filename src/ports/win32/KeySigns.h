#pragma once

#include <windows.h>

#include "ui/BoardKey.h"

namespace krx::win32 {

// Draws the sign of a key in the middle of an area, as large as the area has room for it, in lines
// and polygons, so that it is sharp at every resolution.
void DrawKeySign(HDC dc, const RECT& area, ui::KeySign sign, COLORREF color);

}  // namespace krx::win32
