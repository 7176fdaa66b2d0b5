#include "ports/win32/StandardPeers.h"

#include <utility>

namespace krx::win32 {

LabelPeer::LabelPeer(Toolkit& toolkit, FormPeer& form, ui::Label& label)
    : ControlPeer(toolkit, form, label), label_(label) {
  const DWORD style = SS_LEFT | (label.UseMnemonic ? 0 : SS_NOPREFIX);
  CreateChild(L"STATIC", style, 0, label.Caption());
}

void LabelPeer::UpdateContent(ui::Aspect aspect) {
  if (aspect == ui::Aspect::Text) SetText(label_.Caption());
}

FramePeer::FramePeer(Toolkit& toolkit, FormPeer& form, ui::Frame& frame)
    : ControlPeer(toolkit, form, frame) {
  CreateChild(L"BUTTON", BS_GROUPBOX, 0, String());
}

TextBoxPeer::TextBoxPeer(Toolkit& toolkit, FormPeer& form, ui::TextBox& box)
    : ControlPeer(toolkit, form, box), box_(box) {
  const DWORD style = ES_LEFT | ES_AUTOHSCROLL | (box.Locked() ? ES_READONLY : 0);
  CreateChild(L"EDIT", style, WS_EX_CLIENTEDGE, box.Text());
  SendMessageW(Window(), EM_SETLIMITTEXT, 0, 0);  // as much as the system allows
  UpdateSelection();
}

void TextBoxPeer::UpdateContent(ui::Aspect aspect) {
  switch (aspect) {
    case ui::Aspect::Text:
      return UpdateText();
    case ui::Aspect::Locked:
      SendMessageW(Window(), EM_SETREADONLY, box_.Locked(), 0);
      return;
    case ui::Aspect::Selection:
      return UpdateSelection();
    default:
      return;
  }
}

void TextBoxPeer::UpdateText() {
  updating_ = true;
  SetText(box_.Text());
  updating_ = false;
  AdoptSelection();
}

void TextBoxPeer::UpdateSelection() const {
  SendMessageW(Window(), EM_SETSEL, static_cast<WPARAM>(box_.SelStart()),
               box_.SelStart() + box_.SelLength());
}

void TextBoxPeer::AdoptSelection() {
  DWORD start = 0;
  DWORD end = 0;
  SendMessageW(Window(), EM_GETSEL, reinterpret_cast<WPARAM>(&start),
               reinterpret_cast<LPARAM>(&end));
  box_.SelStart.Adopt(static_cast<int>(start));
  box_.SelLength.Adopt(static_cast<int>(end - start));
}

String TextBoxPeer::WindowContent() const {
  const int length = GetWindowTextLengthW(Window());
  String text(static_cast<std::size_t>(length) + 1, u'\0');
  const int copied = GetWindowTextW(Window(), reinterpret_cast<wchar_t*>(text.data()), length + 1);
  text.resize(static_cast<std::size_t>(copied));
  return text;
}

LRESULT TextBoxPeer::FromParent(UINT message, WPARAM w, LPARAM l) {
  if (message != WM_COMMAND) return ControlPeer::FromParent(message, w, l);
  if (HIWORD(w) == EN_CHANGE && !updating_) {
    AdoptSelection();
    box_.Edited(0, box_.TextLength(), WindowContent());
  }
  return 0;
}

LRESULT TextBoxPeer::Handle(UINT message, WPARAM w, LPARAM l) {
  // One line of input has no use for these; the system's edit control would beep.
  if (message == WM_CHAR && (w == VK_RETURN || w == VK_ESCAPE || w == VK_TAB)) return 0;
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

}  // namespace krx::win32
