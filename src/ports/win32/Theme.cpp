#include "ports/win32/Theme.h"

namespace krx::win32 {

namespace {

constexpr ui::Color kSystemColorFlag = 0x80000000u;

bool SystemWantsContrast() {
  HIGHCONTRASTW state{};
  state.cbSize = sizeof state;
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof state, &state, 0) &&
         (state.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

ui::Color OfTheSystem(std::uint32_t index) {
  return GetSysColor(static_cast<int>(index));
}

}  // namespace

Theme::Theme(krx::Theme wanted)
    : palette_(
          ui::PaletteOf(SystemWantsContrast() ? krx::Theme::HighContrast : wanted, &OfTheSystem)) {}

COLORREF Theme::operator()(ui::Color color) const {
  return PlainColor(ui::Themed(palette_, color));
}

COLORREF PlainColor(ui::Color color) {
  return (color & kSystemColorFlag) == 0 ? color : OfTheSystem(color & ~kSystemColorFlag);
}

HBRUSH BrushFor(HDC dc, COLORREF color) {
  SetDCBrushColor(dc, color);
  return static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
}

void Flood(HDC dc, const RECT& area, COLORREF color) {
  FillRect(dc, &area, BrushFor(dc, color));
}

}  // namespace krx::win32
