#include "ports/win32/Spoken.h"

#include <oleacc.h>

#include <array>

#include "ports/win32/Screen.h"
#include "ui/Spoken.h"

namespace krx::win32 {

String ShortcutOf(const ui::Control& control) {
  const char16_t key = ui::SpokenKey(control);
  return key != 0 ? u"Alt+" + String(1, key) : String();
}

long Spoken::State(int) const {
  long state = 0;
  if (!IsWindowVisible(Window())) state |= STATE_SYSTEM_INVISIBLE;
  if (!IsWindowEnabled(Window())) return state | STATE_SYSTEM_UNAVAILABLE;
  if (TakesFocus()) state |= STATE_SYSTEM_FOCUSABLE;
  if (HasFocus()) state |= STATE_SYSTEM_FOCUSED;
  return state;
}

RECT Spoken::Place(int) const {
  const DpiScope scope;
  RECT place{};
  GetWindowRect(Window(), &place);
  return place;
}

std::optional<int> Spoken::FocusedPart() const {
  if (!HasFocus()) return {};
  return kSelf;
}

// A thread's focus is nobody's as long as the operator works elsewhere.
bool Spoken::HasFocus() const {
  return GetFocus() == Window() && GetForegroundWindow() == GetAncestor(Window(), GA_ROOT);
}

// A window without words in the model may have some all the same, as a cross tells what it does.
String SpokenControl::Name(int) const {
  String name = ui::SpokenName(control_);
  if (!name.empty() || control_.Kind() != ui::Kind::Key) return name;
  std::array<wchar_t, 64> text{};
  const int length = GetWindowTextW(Window(), text.data(), static_cast<int>(text.size()));
  return String(Narrow(text.data(), static_cast<std::size_t>(length)));
}

String SpokenControl::Shortcut(int) const {
  return ShortcutOf(control_);
}

bool SpokenControl::Focus(int) {
  if (!TakesFocus() || !control_.Visible() || !control_.Enabled()) return false;
  control_.SetFocus();
  return true;
}

}  // namespace krx::win32
