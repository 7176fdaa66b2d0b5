#pragma once

#include <windows.h>

#include <vector>

namespace krx::test {

// The pixels of a part of the screen, line by line, as the operator sees them.
std::vector<COLORREF> ScreenPixels(const RECT& place);
// The colour that most of them have; CLR_INVALID for none.
COLORREF GroundOf(std::vector<COLORREF> pixels);

}  // namespace krx::test
