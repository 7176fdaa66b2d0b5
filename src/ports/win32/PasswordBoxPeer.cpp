#include "ports/win32/PasswordBoxPeer.h"

#include <commctrl.h>

#include <string>
#include <utility>

namespace krx::win32 {

namespace {

// What the Control key makes of letters.
constexpr WPARAM kControlC = 0x03;
constexpr WPARAM kControlV = 0x16;
constexpr WPARAM kControlX = 0x18;
constexpr WPARAM kControlZ = 0x1A;
constexpr WPARAM kControlBack = 0x7F;

StringView OneLine(const wchar_t* text) {
  const StringView all =
      text ? Narrow(text, std::char_traits<wchar_t>::length(text)) : StringView();
  return all.substr(0, all.find_first_of(u"\r\n"));
}

Password ClipboardText(HWND window) {
  if (!OpenClipboard(window)) return {};
  Password text;
  if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
    text = Password(OneLine(static_cast<const wchar_t*>(GlobalLock(data))));
    GlobalUnlock(data);
  }
  CloseClipboard();
  return text;
}

// A part of a text. A character beyond the first plane is two units, which go together.
struct Span {
  std::size_t Start;
  std::size_t Length;
};

bool InsideCharacter(StringView text, std::size_t at) {
  return at > 0 && at < text.size() && (text[at - 1] & 0xFC00) == 0xD800 &&
         (text[at] & 0xFC00) == 0xDC00;
}

Span WholeCharacters(StringView text, Span span) {
  if (span.Length == 0) return span;
  if (InsideCharacter(text, span.Start + span.Length)) ++span.Length;
  if (InsideCharacter(text, span.Start)) return {span.Start - 1, span.Length + 1};
  return span;
}

}  // namespace

PasswordBoxPeer::PasswordBoxPeer(Toolkit& toolkit, FormPeer& form, ui::PasswordBox& box)
    : EditBoxPeer(toolkit, form, box), box_(box) {
  CreateEdit(ES_PASSWORD, box.DisplayedText());
  SendMessageW(Window(), EM_SETPASSWORDCHAR, box.PasswordChar, 0);
}

void PasswordBoxPeer::ShowText() {
  Default(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Wide(box_.DisplayedText())));
}

void PasswordBoxPeer::Mask(std::size_t length, std::size_t caret) {
  {
    const Following following(*this);
    const String mask(length, box_.PasswordChar);
    Default(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Wide(mask)));
  }
  Default(EM_SETSEL, caret, static_cast<LPARAM>(caret));
  AdoptSelection();
}

// The caret stands behind what was inserted; what is missing besides was in the place of it.
void PasswordBoxPeer::AdoptText() {
  const auto length = static_cast<std::size_t>(Default(WM_GETTEXTLENGTH, 0, 0));
  const auto caret =
      static_cast<std::size_t>(box_.SelStart()) + static_cast<std::size_t>(box_.SelLength());
  const Password inserted = std::exchange(typed_, Password());
  const StringView before = box_.Text().View();
  if (inserted.Length() > caret || length > before.size() + inserted.Length())
    return Mask(before.size(), before.size());  // not by anything that we know of
  const std::size_t start = caret - inserted.Length();
  const std::size_t removed = before.size() + inserted.Length() - length;
  const Span span = WholeCharacters(before, {start, removed});
  if (span.Length != removed)
    Mask(before.size() - span.Length + inserted.Length(), span.Start + inserted.Length());
  box_.Edited(span.Start, span.Length, inserted.View());
}

LRESULT PasswordBoxPeer::Handle(UINT message, WPARAM w, LPARAM l) {
  const LRESULT result = HandleSecretly(message, w, l);
  const bool may_tell = message == WM_SETFOCUS || message == WM_KILLFOCUS ||
                        message == WM_KEYDOWN || message == WM_KEYUP || message == WM_ENABLE;
  if (may_tell && Window()) form_.FollowCapsLock();
  return result;
}

LRESULT PasswordBoxPeer::HandleSecretly(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case EM_SHOWBALLOONTIP:
      return FALSE;  // the system's own words for Caps Lock would cover the fields below
    case WM_CHAR:
      return Character(w, l);
    case WM_KEYDOWN:
      if (w == VK_INSERT && GetKeyState(VK_SHIFT) < 0) return Paste();
      if (w == VK_INSERT && GetKeyState(VK_CONTROL) < 0) return 0;
      if (w == VK_DELETE && GetKeyState(VK_SHIFT) < 0) return 0;
      break;
    case WM_PASTE:
      return Paste();
    case EM_REPLACESEL:
      return Insert(Password(OneLine(reinterpret_cast<const wchar_t*>(l))));
    case WM_SETTEXT:
      return Replace(Password(OneLine(reinterpret_cast<const wchar_t*>(l))));
    // Asterisks are of no use to anybody, and undoing would take a copy of what was deleted.
    case WM_COPY:
    case WM_CUT:
    case WM_UNDO:
    case EM_UNDO:
    case EM_CANUNDO:
      return 0;
    default:
      break;
  }
  return EditBoxPeer::Handle(message, w, l);
}

LRESULT PasswordBoxPeer::Character(WPARAM unit, LPARAM l) {
  switch (unit) {
    case kControlV:
      return Paste();
    case kControlC:
    case kControlX:
    case kControlZ:
    case kControlBack:
      return 0;
    default:
      break;
  }
  if (unit < u' ') return EditBoxPeer::Handle(WM_CHAR, unit, l);
  const auto character = static_cast<char16_t>(unit);
  typed_ = Password(StringView(&character, 1));
  const LRESULT result = EditBoxPeer::Handle(WM_CHAR, box_.PasswordChar, l);
  typed_ = Password();  // a locked box took nothing
  return result;
}

LRESULT PasswordBoxPeer::Paste() {
  if (box_.Locked()) return 0;
  Password text = ClipboardText(Window());
  return text.Empty() ? 0 : Insert(std::move(text));
}

LRESULT PasswordBoxPeer::Insert(Password text) {
  const String mask(text.Length(), box_.PasswordChar);
  typed_ = std::move(text);
  const LRESULT result =
      EditBoxPeer::Handle(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(Wide(mask)));
  typed_ = Password();
  return result;
}

LRESULT PasswordBoxPeer::Replace(Password text) {
  Mask(text.Length(), 0);
  box_.Edited(std::move(text));
  return TRUE;
}

}  // namespace krx::win32
