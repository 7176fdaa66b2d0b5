// The message box on screens of other resolutions: it grows with them, and no text is cut off.

#include "driver/Resolution.h"
#include "support/DialogTest.h"

namespace krx::drive {
namespace {

SIZE SizeOf(const Window& window) {
  const RECT bounds = window.Bounds();
  return {bounds.right - bounds.left, bounds.bottom - bounds.top};
}

// Width of a text in the 9 point font of the dialogs at a resolution, measured here.
int TextWidth(const std::wstring& text, DWORD dpi) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
  LOGFONTW wanted = metrics.lfMessageFont;
  wanted.lfHeight = -MulDiv(9, static_cast<int>(dpi), 72);
  const HFONT font = CreateFontIndirectW(&wanted);
  const HDC dc = CreateCompatibleDC(nullptr);
  const HGDIOBJ before = SelectObject(dc, font);
  SIZE size{};
  GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
  SelectObject(dc, before);
  DeleteDC(dc);
  DeleteObject(font);
  return static_cast<int>(size.cx);
}

class Resolutions : public DialogTest, public ::testing::WithParamInterface<DWORD> {};

TEST_P(Resolutions, TheBoxGrowsWithTheScreenAndCutsNoTextOff) {
  const DWORD dpi = GetParam();
  const int pixels = static_cast<int>(dpi);
  const Resolution resolution(dpi);
  RunScript(
      "WScript.Echo Dialogs.KRMsgBoxEx(\"Is the text as long as this one still complete?\", 32, "
      "\"Title\", \"\", 0, \"A button with a rather long text\", \"No\")\r\n");
  const Window box = NextBox();

  const std::wstring long_text = L"A button with a rather long text";
  const std::wstring message = L"Is the text as long as this one still complete?";
  EXPECT_GE(SizeOf(box.Child(L"keyButton(0)")).cx, TextWidth(long_text, dpi));
  EXPECT_GE(SizeOf(box.Child(L"idxMessage")).cx, TextWidth(message, dpi));

  // The narrowest button is 1215 twips wide, the icon stands 180 twips from the left.
  EXPECT_NEAR(SizeOf(box.Child(L"keyButton(1)")).cx, MulDiv(1215, pixels, 1440), 1);
  const LONG inner_left = box.Child(L"idxCaption").Bounds().left;
  EXPECT_EQ(box.Child(L"picIcon").Bounds().left - inner_left, MulDiv(180, pixels, 1440));
  EXPECT_GE(SizeOf(box.Child(L"keyClose")).cy, MulDiv(225, pixels, 1440));

  box.Child(L"keyButton(1)").Click();
  EXPECT_EQ(Printed(), Lines{"12"});
}

INSTANTIATE_TEST_SUITE_P(DotsPerInch, Resolutions, ::testing::Values(96, 120, 144, 192),
                         ::testing::PrintToStringParamName());

}  // namespace
}  // namespace krx::drive
