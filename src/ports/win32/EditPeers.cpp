#include "ports/win32/EditPeers.h"

#include <string>
#include <utility>

namespace krx::win32 {

namespace {

constexpr WPARAM kControlA = 0x01;  // what the Control key makes of the letter

}  // namespace

EditBoxPeer::EditBoxPeer(Toolkit& toolkit, FormPeer& form, ui::EditBox& box)
    : ControlPeer(toolkit, form, box), box_(box) {}

void EditBoxPeer::CreateEdit(DWORD style, const String& text) {
  style |= ES_LEFT | ES_AUTOHSCROLL | (box_.Locked() ? ES_READONLY : 0);
  CreateChild(L"EDIT", style, WS_EX_CLIENTEDGE, text);
  SendMessageW(Window(), EM_SETLIMITTEXT, 0, 0);  // as much as the system allows
  UpdateSelection();
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

void EditBoxPeer::AdoptSelection() {
  DWORD start = 0;
  DWORD end = 0;
  SendMessageW(Window(), EM_GETSEL, reinterpret_cast<WPARAM>(&start),
               reinterpret_cast<LPARAM>(&end));
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

LRESULT EditBoxPeer::Handle(UINT message, WPARAM w, LPARAM l) {
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
