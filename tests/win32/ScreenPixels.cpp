#include "ScreenPixels.h"

#include <algorithm>

namespace krx::test {

ui::Palette ColorsOf(Theme theme) {
  return ui::PaletteOf(
      theme, [](std::uint32_t index) -> ui::Color { return GetSysColor(static_cast<int>(index)); });
}

std::vector<COLORREF> ScreenPixels(const RECT& place) {
  const int width = place.right - place.left;
  const int height = place.bottom - place.top;
  const HDC screen = GetDC(nullptr);
  const HDC copy = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
  const HGDIOBJ before = SelectObject(copy, bitmap);
  BitBlt(copy, 0, 0, width, height, screen, place.left, place.top, SRCCOPY);
  SelectObject(copy, before);
  BITMAPINFO format{};
  format.bmiHeader = {sizeof format.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  std::vector<COLORREF> pixels(static_cast<std::size_t>(width * height));
  GetDIBits(screen, bitmap, 0, static_cast<UINT>(height), pixels.data(), &format, DIB_RGB_COLORS);
  DeleteObject(bitmap);
  DeleteDC(copy);
  ReleaseDC(nullptr, screen);
  for (COLORREF& pixel : pixels)  // the bitmap has them in the opposite order
    pixel = RGB((pixel >> 16) & 0xFF, (pixel >> 8) & 0xFF, pixel & 0xFF);
  return pixels;
}

COLORREF GroundOf(std::vector<COLORREF> pixels) {
  std::sort(pixels.begin(), pixels.end());
  COLORREF most = CLR_INVALID;
  std::ptrdiff_t count = 0;
  for (auto from = pixels.begin(); from != pixels.end();) {
    const auto to = std::upper_bound(from, pixels.end(), *from);
    if (to - from > count) {
      count = to - from;
      most = *from;
    }
    from = to;
  }
  return most;
}

}  // namespace krx::test
