#include "ports/win32/BoardKeyPeer.h"

#include "ports/win32/KeySigns.h"

namespace krx::win32 {

namespace {

constexpr int kCorner = 4;  // pixels at 96 dpi, the radius of a rounded corner

// How a key is filled and written on.
struct Paints {
  COLORREF Face;
  COLORREF Ink;
};

Paints PaintsOf(const ui::BoardKey& key, const Theme& theme, bool pressed) {
  if (pressed || key.Latched()) return {theme->Accent, theme->AccentText};
  if (!key.Types) return {theme->Key, theme->KeyText};
  return {theme->Field, theme->FieldText};
}

}  // namespace

BoardKeyPeer::BoardKeyPeer(Toolkit& toolkit, FormPeer& form, ui::BoardKey& key)
    : PanePeer(toolkit, form, key), key_(key) {
  CreateChild(kPaneClass, 0, 0, key.DisplayedText());
}

void BoardKeyPeer::UpdateContent(ui::Aspect aspect) {
  if (aspect == ui::Aspect::Text) SetText(key_.DisplayedText());
  Invalidate();
}

LRESULT BoardKeyPeer::Handle(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case WM_LBUTTONDOWN:
      ShowPressed(true);
      break;
    case WM_LBUTTONUP:
    case WM_CAPTURECHANGED:
      ShowPressed(false);
      break;
    case WM_POINTERDOWN:
    case WM_POINTERUPDATE:
    case WM_POINTERUP:
      return Touched(message, l);
    default:
      break;
  }
  return PanePeer::Handle(message, w, l);
}

// Fingers are taken as they come: the mouse messages that the system makes of them come late, and
// only from one finger at a time.
LRESULT BoardKeyPeer::Touched(UINT message, LPARAM l) {
  POINT at{static_cast<short>(LOWORD(l)), static_cast<short>(HIWORD(l))};
  ScreenToClient(Window(), &at);
  const LPARAM place = MAKELPARAM(at.x, at.y);
  if (message == WM_POINTERUPDATE) return 0;
  const bool down = message == WM_POINTERDOWN;
  ShowPressed(down);
  HandleMouse(down ? WM_LBUTTONDOWN : WM_LBUTTONUP, down ? MK_LBUTTON : 0, place);
  return 0;
}

void BoardKeyPeer::ShowPressed(bool pressed) {
  if (pressed_ == pressed) return;
  pressed_ = pressed;
  if (!key_.Discreet) Invalidate();
}

void BoardKeyPeer::Paint(HDC dc, const RECT& area) {
  const Theme& theme = form_.Theme();
  const Paints paints = PaintsOf(key_, theme, pressed_ && !key_.Discreet);
  const COLORREF ink = paints.Ink;
  const Scale scale = form_.Scale();
  toolkit_.Drawing.Box(dc, area,
                       {theme(form_.Form().BackColor()), theme->Border, paints.Face,
                        scale.Thickness(1), scale.Thickness(kCorner)});
  if (key_.Sign() != ui::KeySign::None) return DrawKeySign(dc, area, key_.Sign(), ink);
  const HGDIOBJ font = SelectObject(dc, font_->Get());
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, ink);
  RECT text = area;
  const String caption = key_.DisplayedText();
  DrawTextW(dc, Wide(caption), static_cast<int>(caption.size()), &text,
            DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
  SelectObject(dc, font);
}

}  // namespace krx::win32
