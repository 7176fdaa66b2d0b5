#include "ports/win32/KeyPeer.h"

#include <algorithm>

namespace krx::win32 {

namespace {

constexpr DWORD kTypeMask = BS_TYPEMASK | BS_MULTILINE;
constexpr int kFocusInset = 3;  // pixels at 96 dpi

}  // namespace

KeyPeer::KeyPeer(Toolkit& toolkit, FormPeer& form, ui::KRXKey& key)
    : ControlPeer(toolkit, form, key), key_(key) {
  CreateChild(L"BUTTON", Style(false), 0, key.Caption());
}

DWORD KeyPeer::Style(bool focused) const {
  if (HasCross()) return BS_OWNERDRAW;
  const bool lines = key_.Caption().find_first_of(u"\r\n") != String::npos;
  // The focused button looks like the one that Enter presses, because it is.
  return (focused ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON) | (lines ? BS_MULTILINE : 0);
}

void KeyPeer::UpdateContent(ui::Aspect aspect) {
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(Window(), GWL_STYLE));
  const DWORD wanted = Style(GetFocus() == Window());
  if ((style & kTypeMask) != wanted)
    SetWindowLongPtrW(Window(), GWL_STYLE, static_cast<LONG_PTR>((style & ~kTypeMask) | wanted));
  if (aspect == ui::Aspect::Text) SetText(key_.Caption());
  Invalidate();
}

void KeyPeer::FocusChanged(bool focused) {
  if (HasCross()) return Invalidate();
  // Without immediate redrawing: a box that opens is painted once.
  SendMessageW(Window(), BM_SETSTYLE, Style(focused), FALSE);
  Invalidate();
}

LRESULT KeyPeer::Handle(UINT message, WPARAM w, LPARAM l) {
  const bool nameless = HasCross() && key_.Caption().empty();
  if (message == WM_GETTEXT && nameless) return AnswerText(toolkit_.CloseWord(), w, l);
  if (message == WM_GETTEXTLENGTH && nameless)
    return static_cast<LRESULT>(toolkit_.CloseWord().size());
  return ControlPeer::Handle(message, w, l);
}

// A drawn button reports the second press of a quick pair as a double click.
void KeyPeer::Notified(WORD code) {
  if ((code == BN_CLICKED || code == BN_DBLCLK) && form_.Form().Visible()) key_.Click();
}

void KeyPeer::Draw(const DRAWITEMSTRUCT& item) {
  RECT area = item.rcItem;
  const bool pressed = (item.itemState & ODS_SELECTED) != 0;
  DrawFrameControl(item.hDC, &area, DFC_BUTTON, DFCS_BUTTONPUSH | (pressed ? DFCS_PUSHED : 0u));
  if (pressed) OffsetRect(&area, form_.Scale().Thickness(1), form_.Scale().Thickness(1));
  const bool disabled = (item.itemState & ODS_DISABLED) != 0;
  DrawCross(item.hDC, area, GetSysColor(disabled ? COLOR_GRAYTEXT : COLOR_BTNTEXT));
  if ((item.itemState & ODS_FOCUS) == 0) return;
  const int inset = form_.Scale().Thickness(kFocusInset);
  area = item.rcItem;
  InflateRect(&area, -inset, -inset);
  DrawFocusRect(item.hDC, &area);
}

// Two diagonals about a fifth of the cross thick, drawn line beside line so that they stay crisp. A
// form that is laid out anew for another resolution chooses the size for that.
void KeyPeer::DrawCross(HDC dc, const RECT& area, COLORREF color) const {
  const int size = key_.Picture().Pixels;
  const int thickness = std::max(2, size * 3 / 16);
  const int length = size - thickness + 1;
  const int left = (area.left + area.right - size) / 2;
  const int top = (area.top + area.bottom - length) / 2;
  const HGDIOBJ before = SelectObject(dc, GetStockObject(DC_PEN));
  SetDCPenColor(dc, color);
  for (int i = 0; i < thickness; ++i) {
    MoveToEx(dc, left + i, top, nullptr);
    LineTo(dc, left + i + length, top + length);
    MoveToEx(dc, left + i + length - 1, top, nullptr);
    LineTo(dc, left + i - 1, top + length);
  }
  SelectObject(dc, before);
}

}  // namespace krx::win32
