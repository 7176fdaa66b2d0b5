#include "ports/win32/KeyPeer.h"

namespace krx::win32 {

namespace {

constexpr int kTextInset = 4;  // pixels at 96 dpi, from a key's edge

}  // namespace

KeyPeer::KeyPeer(Toolkit& toolkit, FormPeer& form, ui::KRXKey& key)
    : ControlPeer(toolkit, form, key), key_(key) {
  CreateChild(L"BUTTON", BS_OWNERDRAW, 0, key.Caption());
}

void KeyPeer::UpdateContent(ui::Aspect aspect) {
  if (aspect == ui::Aspect::Text) SetText(key_.Caption());
  Invalidate();
}

LRESULT KeyPeer::Handle(UINT message, WPARAM w, LPARAM l) {
  const bool nameless = HasCross() && key_.Caption().empty();
  if (message == WM_GETTEXT && nameless) return AnswerText(toolkit_.CloseWord(), w, l);
  if (message == WM_GETTEXTLENGTH && nameless)
    return static_cast<LRESULT>(toolkit_.CloseWord().size());
  if (message == WM_ERASEBKGND) return 1;
  if (hovering_.Changes(Window(), message)) Invalidate();
  // A drawn button would answer the second press of a quick pair at once, another on its release.
  if (message == WM_LBUTTONDBLCLK) message = WM_LBUTTONDOWN;
  return ControlPeer::Handle(message, w, l);
}

void KeyPeer::Notified(WORD code) {
  if (code == BN_CLICKED && form_.Form().Visible()) key_.Press();
}

// The focused button looks like the one that Enter presses, because it is.
KeyPeer::Look KeyPeer::LookOf(bool pressed, bool disabled, ui::Color ground) const {
  const Theme& theme = form_.Theme();
  const bool hot = hovering_.Inside();
  if (ground == ui::kActiveCaption) {
    const COLORREF fill = pressed ? theme->CaptionPressed
                          : hot   ? theme->CaptionHot
                                  : theme->Caption;
    return {fill, hot || pressed ? theme->CaptionText : theme->CaptionHot, theme->CaptionText,
            theme->CaptionText};
  }
  if (disabled) return {theme->DisabledKey, theme->Line, theme->DisabledText, theme->Focus};
  if (form_.DefaultKey() == &key_ && !HasCross()) {
    const COLORREF fill = pressed ? theme->AccentPressed : hot ? theme->AccentHot : theme->Accent;
    return {fill, fill, theme->AccentText, theme->Focus};
  }
  const COLORREF fill = pressed ? theme->KeyPressed : hot ? theme->KeyHot : theme->Key;
  return {fill, theme->Border, pressed ? theme->PressedText : theme->KeyText, theme->Focus};
}

void KeyPeer::Draw(const DRAWITEMSTRUCT& item) {
  if (item.itemAction == ODA_FOCUS) return Invalidate();  // painted with all else that it changes
  const bool pressed = (item.itemState & ODS_SELECTED) != 0;
  const bool disabled = (item.itemState & ODS_DISABLED) != 0;
  const ui::Color below = form_.GroundOf(key_);
  const COLORREF ground = form_.Theme()(below);
  const Look look = LookOf(pressed, disabled, below);
  const Scale scale = form_.Scale();
  const int line = scale.Thickness(1);
  const int radius = scale.Thickness(kCornerRadius);
  RECT area = item.rcItem;
  if ((item.itemState & ODS_FOCUS) != 0 && form_.ShowsFocus()) {
    const int ring = scale.Thickness(kFocusRing);
    toolkit_.Drawing.Box(item.hDC, area, {ground, look.Ring, ground, ring, radius + line});
    InflateRect(&area, -ring - line, -ring - line);
  }
  toolkit_.Drawing.Box(item.hDC, area, {ground, look.Border, look.Fill, line, radius});
  if (HasCross()) {
    toolkit_.Drawing.Picture(item.hDC, area, ui::Picture::Cross, key_.Picture().Pixels,
                             ui::InksOf(form_.Theme().Colors(), look.Text), look.Fill);
  } else {
    DrawCaption(item.hDC, item.rcItem, look.Text);
  }
}

// All lines of it stand in the middle.
void KeyPeer::DrawCaption(HDC dc, RECT area, COLORREF color) const {
  const bool lines = key_.Caption().find_first_of(u"\r\n") != String::npos;
  const UINT format = DT_CENTER | form_.CaptionFormat();
  const HGDIOBJ before = SelectObject(dc, font_->Get());
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, color);
  InflateRect(&area, -form_.Scale().Thickness(kTextInset), 0);
  if (lines) {
    RECT text = area;
    DrawTextW(dc, Wide(key_.Caption()), -1, &text, format | DT_WORDBREAK | DT_CALCRECT);
    area.top += (area.bottom - area.top - (text.bottom - text.top)) / 2;
  }
  DrawTextW(dc, Wide(key_.Caption()), -1, &area,
            format | (lines ? DT_WORDBREAK : DT_SINGLELINE | DT_VCENTER));
  SelectObject(dc, before);
}

}  // namespace krx::win32
