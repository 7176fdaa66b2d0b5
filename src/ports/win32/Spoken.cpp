#include "ports/win32/Spoken.h"

#include <oleacc.h>

#include "ports/win32/Screen.h"

namespace krx::win32 {

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

}  // namespace krx::win32
