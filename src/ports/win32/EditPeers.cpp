#include "ports/win32/EditPeers.h"

#include <algorithm>
#include <string>
#include <utility>

namespace krx::win32 {

namespace {

constexpr char16_t kFirstComplex = 0x0300;  // marks that join letters, and the scripts behind them
constexpr WPARAM kControlA = 0x01;          // what the Control key makes of the letter

}  // namespace

EditBoxPeer::EditBoxPeer(Toolkit& toolkit, FormPeer& form, ui::EditBox& box)
    : ControlPeer(toolkit, form, box), box_(box) {}

void EditBoxPeer::CreateEdit(DWORD style, const String& text) {
  const bool mirrored = form_.Mirrored() && !box_.LeftToRight;
  style |= (mirrored ? ES_RIGHT : ES_LEFT) | ES_AUTOHSCROLL | (box_.Locked() ? ES_READONLY : 0);
  CreateChild(L"EDIT", style, 0, text);
  SendMessageW(Window(), EM_SETLIMITTEXT, 0, 0);  // as much as the system allows
  UpdateSelection();
}

void EditBoxPeer::Update(ui::Aspect aspect) {
  ControlPeer::Update(aspect);
  if (Window() && (aspect == ui::Aspect::Enabled || aspect == ui::Aspect::Colors))
    RedrawWindow(Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME);
}

// The room that the text gets depends on the font; the rest is border.
void EditBoxPeer::GiveFont() const {
  ControlPeer::GiveFont();
  SendMessageW(Window(), EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
  SetWindowPos(Window(), nullptr, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

DWORD EditBoxPeer::MirrorStyle() const {
  return box_.LeftToRight ? 0u : WS_EX_RTLREADING | WS_EX_RIGHT | WS_EX_LEFTSCROLLBAR;
}

void EditBoxPeer::UpdateContent(ui::Aspect aspect) {
  switch (aspect) {
    case ui::Aspect::Text: {
      const Following following(*this);
      ShowText();
    }
      return AdoptSelection();
    case ui::Aspect::Locked:
      SendMessageW(Window(), EM_SETREADONLY, box_.Locked(), 0);
      return;
    case ui::Aspect::Selection:
      return UpdateSelection();
    default:
      return;
  }
}

void EditBoxPeer::UpdateSelection() const {
  SendMessageW(Window(), EM_SETSEL, static_cast<WPARAM>(box_.SelStart()),
               box_.SelStart() + box_.SelLength());
}

std::pair<DWORD, DWORD> EditBoxPeer::Selected() const {
  DWORD start = 0;
  DWORD end = 0;
  SendMessageW(Window(), EM_GETSEL, reinterpret_cast<WPARAM>(&start),
               reinterpret_cast<LPARAM>(&end));
  return {start, end};
}

void EditBoxPeer::AdoptSelection() {
  const auto [start, end] = Selected();
  box_.SelStart.Adopt(static_cast<int>(start));
  box_.SelLength.Adopt(static_cast<int>(end - start));
}

void EditBoxPeer::Notified(WORD code) {
  if (code != EN_CHANGE) return;
  Tell(EVENT_OBJECT_VALUECHANGE, Window());
  if (IsFollowing()) return;
  AdoptSelection();
  AdoptText();
}

// One line in the middle of the field, however high that is.
void EditBoxPeer::LeaveRoomForText(RECT& area) const {
  const int line = toolkit_.Texts.Measure(font_, StringView()).cy;
  const int border = form_.Scale().Thickness(1);
  const int spare = std::max<int>(area.bottom - area.top - line, 2 * border);
  area.top += spare / 2;
  area.bottom -= spare - spare / 2;
  InflateRect(&area, -form_.Scale().Thickness(kFieldPadding), 0);
}

void EditBoxPeer::PaintBorder() const {
  const HDC dc = GetWindowDC(Window());
  if (!dc) return;
  RECT whole{};
  RECT text{};
  GetWindowRect(Window(), &whole);
  GetClientRect(Window(), &text);
  MapWindowPoints(Window(), nullptr, reinterpret_cast<POINT*>(&text), 2);
  OffsetRect(&text, -whole.left, -whole.top);
  OffsetRect(&whole, -whole.left, -whole.top);
  ExcludeClipRect(dc, text.left, text.top, text.right, text.bottom);
  const FieldState state{box_.Enabled(), GetFocus() == Window(), hovering_.Inside()};
  PaintField(dc, whole, state);
  ReleaseDC(Window(), dc);
}

// The system would take a colour of its own, which may hardly be seen in the theme.
void EditBoxPeer::PaintDisabled() const {
  const PaintScope paint(Window());
  const HDC dc = paint.Dc();
  RECT area;
  GetClientRect(Window(), &area);
  Flood(dc, area, form_.Theme()->Face);
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, form_.Theme()->DisabledText);
  const HGDIOBJ before = SelectObject(dc, font_->Get());
  DrawTextW(dc, Wide(box_.DisplayedText()), -1, &area, DT_SINGLELINE | DT_NOPREFIX);
  SelectObject(dc, before);
}

// Over the system's, whose colours may hardly be told apart. A text of a script that is read from
// the right or joins its letters is left to the system, which knows where its parts are.
void EditBoxPeer::PaintSelection() const {
  const auto [start, end] = Selected();
  if (start >= end || GetFocus() != Window()) return;
  const String text = box_.DisplayedText();
  const auto complex = [](char16_t unit) { return unit >= kFirstComplex; };
  if (end > text.size() || std::any_of(text.begin(), text.end(), complex)) return;
  const StringView part = StringView(text).substr(start, end - start);
  const auto at = static_cast<DWORD>(SendMessageW(Window(), EM_POSFROMCHAR, start, 0));
  HideCaret(Window());
  const HDC dc = GetDC(Window());
  const HGDIOBJ before = SelectObject(dc, font_->Get());
  SetBkColor(dc, form_.Theme()->Selection);
  SetTextColor(dc, form_.Theme()->SelectionText);
  TextOutW(dc, static_cast<short>(LOWORD(at)), static_cast<short>(HIWORD(at)), WideData(part),
           static_cast<int>(part.size()));
  SelectObject(dc, before);
  ReleaseDC(Window(), dc);
  ShowCaret(Window());
}

LRESULT EditBoxPeer::Handle(UINT message, WPARAM w, LPARAM l) {
  if (hovering_.Changes(Window(), message)) PaintBorder();
  switch (message) {
    case WM_NCCALCSIZE:
      // Both forms of the message start with the window's rectangle.
      LeaveRoomForText(*reinterpret_cast<RECT*>(l));
      return 0;
    case WM_NCHITTEST:
      return HTCLIENT;  // a press beside the text is meant for it
    case WM_NCPAINT:
      PaintBorder();
      return 0;
    case WM_PAINT:
      if (box_.Enabled()) {
        const LRESULT painted = ControlPeer::Handle(message, w, l);
        PaintSelection();
        return painted;
      }
      PaintDisabled();
      return 0;
    default:
      break;
  }
  // One line of input has no use for these; the system's edit control would beep.
  if (message == WM_CHAR && (w == VK_RETURN || w == VK_ESCAPE || w == VK_TAB)) return 0;
  // Not every version of it knows this key.
  if (message == WM_CHAR && w == kControlA) {
    Default(EM_SETSEL, 0, -1);
    AdoptSelection();
    return 0;
  }
  const LRESULT result = ControlPeer::Handle(message, w, l);
  switch (message) {
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_CHAR:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_LBUTTONDBLCLK:
    case WM_MOUSEMOVE:
    case WM_PASTE:
    case WM_CUT:
    case WM_CLEAR:
    case WM_UNDO:
    case EM_SETSEL:
    case EM_REPLACESEL:
      if (Window()) AdoptSelection();
      break;
    default:
      break;
  }
  return result;
}

TextBoxPeer::TextBoxPeer(Toolkit& toolkit, FormPeer& form, ui::TextBox& box)
    : EditBoxPeer(toolkit, form, box), box_(box) {
  CreateEdit(0, box.Text());
}

void TextBoxPeer::AdoptText() {
  const int length = GetWindowTextLengthW(Window());
  String text(static_cast<std::size_t>(length) + 1, u'\0');
  const int copied = GetWindowTextW(Window(), reinterpret_cast<wchar_t*>(text.data()), length + 1);
  text.resize(static_cast<std::size_t>(copied));
  box_.Edited(std::move(text));
}

}  // namespace krx::win32
