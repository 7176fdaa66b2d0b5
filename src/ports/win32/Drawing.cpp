#include "ports/win32/Drawing.h"

#include <algorithm>

namespace krx::win32 {

namespace {

constexpr int kUsualSize = 64;  // pixels, in both directions

// The bitmap has blue where a colour has red.
std::uint32_t InBitmap(ui::Color color) {
  return (color & 0xFFu) << 16 | (color & 0xFF00u) | (color >> 16 & 0xFFu);
}

// The straight parts of a box, between its corners.
void DrawSides(HDC dc, const RECT& place, const BoxLook& look, int radius) {
  const auto [left, top, right, bottom] = place;
  const int line = look.Thickness;
  const int inner = std::max(radius, line);
  Flood(dc, {left + line, top + inner, right - line, bottom - inner}, look.Fill);
  if (inner > line) {
    Flood(dc, {left + inner, top + line, right - inner, top + inner}, look.Fill);
    Flood(dc, {left + inner, bottom - inner, right - inner, bottom - line}, look.Fill);
  }
  if (line == 0) return;
  Flood(dc, {left + radius, top, right - radius, top + line}, look.Border);
  Flood(dc, {left + radius, bottom - line, right - radius, bottom}, look.Border);
  Flood(dc, {left, top + radius, left + line, bottom - radius}, look.Border);
  Flood(dc, {right - line, top + radius, right, bottom - radius}, look.Border);
}

}  // namespace

Drawing::~Drawing() {
  if (bitmap_) {
    SelectObject(dc_, before_);
    DeleteObject(bitmap_);
  }
  if (dc_) DeleteDC(dc_);
}

bool Drawing::Load(const std::vector<ui::Color>& pixels, int size) {
  if (!dc_) dc_ = CreateCompatibleDC(nullptr);
  if (!dc_) return false;
  if (size > size_) {
    const int wanted = std::max(size, kUsualSize);
    BITMAPINFO format{};
    format.bmiHeader = {sizeof format.bmiHeader, wanted, -wanted, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HBITMAP larger = CreateDIBSection(dc_, &format, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (!larger) return false;
    const HGDIOBJ former = SelectObject(dc_, larger);
    if (bitmap_) {
      DeleteObject(bitmap_);
    } else {
      before_ = former;
    }
    bitmap_ = larger;
    pixels_ = static_cast<std::uint32_t*>(bits);
    size_ = wanted;
  }
  GdiFlush();  // what is still to be drawn of the pixels before
  for (std::ptrdiff_t y = 0; y < size; ++y) {
    std::transform(pixels.begin() + y * size, pixels.begin() + (y + 1) * size, pixels_ + y * size_,
                   &InBitmap);
  }
  return true;
}

void Drawing::Box(HDC dc, const RECT& place, const BoxLook& look) {
  const auto least = static_cast<int>(std::min(place.right - place.left, place.bottom - place.top));
  const int radius = std::clamp(look.Radius, 0, std::max(least / 2, 0));
  DrawSides(dc, place, look, radius);
  const ui::Corner corner{radius, look.Thickness, look.Ground, look.Border, look.Fill};
  if (radius == 0 || !Load(ui::Draw(corner), 2 * radius)) return;
  for (const int x : {0, 1}) {
    for (const int y : {0, 1}) {
      BitBlt(dc, x == 0 ? place.left : place.right - radius,
             y == 0 ? place.top : place.bottom - radius, radius, radius, dc_, x * radius,
             y * radius, SRCCOPY);
    }
  }
}

void Drawing::Picture(HDC dc, const RECT& place, ui::Picture picture, int size,
                      const ui::Inks& inks, COLORREF ground) {
  if (size <= 0 || !Load(ui::Draw(picture, size, inks, ground), size)) return;
  BitBlt(dc, (place.left + place.right - size) / 2, (place.top + place.bottom - size) / 2, size,
         size, dc_, 0, 0, SRCCOPY);
}

}  // namespace krx::win32
