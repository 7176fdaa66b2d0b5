#include "ports/win32/FormPeer.h"

namespace krx::win32 {

namespace {

constexpr UINT kNotYet = 50;  // milliseconds until the form is looked at again

}  // namespace

void FormPeer::Disturbed() const {
  if (form_.Beside && Window()) PostMessageW(Window(), kSettle, 0, 0);
}

// Not under a button that is held: what is pressed must still be there when it is let go.
void FormPeer::SettleBeside() {
  KillTimer(Window(), kSettleTimer);
  if (!form_.Beside || !form_.Visible() || GetActiveWindow() != Window()) return;
  const bool held = GetKeyState(VK_LBUTTON) < 0 || GetKeyState(VK_RBUTTON) < 0;
  if (held || !form_.Beside->Settle()) SetTimer(Window(), kSettleTimer, kNotYet, nullptr);
}

// In front of everything, also of its form, whose window owns this one.
void FormPeer::ShowAttached() {
  if (!form_.Visible()) {
    ShowWindow(Window(), SW_HIDE);
    return;
  }
  SetWindowPos(Window(), HWND_TOPMOST, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
  RedrawWindow(Window(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

}  // namespace krx::win32
