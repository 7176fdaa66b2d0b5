#include "ports/win32/ModalLoop.h"

#include <algorithm>
#include <utility>

namespace krx::win32 {

namespace {

struct Search {
  HWND Own;
  std::vector<HWND>& Found;
};

BOOL CALLBACK FindUsable(HWND window, LPARAM data) {
  const bool takes_no_activation = (GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_NOACTIVATE) != 0;
  auto& search = *reinterpret_cast<Search*>(data);
  if (window == search.Own || !IsWindowVisible(window) || !IsWindowEnabled(window) ||
      takes_no_activation)
    return TRUE;
  search.Found.push_back(window);
  return FALSE;
}

BOOL CALLBACK CollectOther(HWND window, LPARAM data) {
  const auto& search = *reinterpret_cast<const Search*>(data);
  if (window != search.Own && IsWindowVisible(window) && IsWindowEnabled(window))
    search.Found.push_back(window);
  return TRUE;
}

}  // namespace

ModalLoop::ModalLoop(Toolkit& toolkit, FormPeer& peer)
    : toolkit_(toolkit),
      peer_(peer),
      active_before_(GetActiveWindow()),
      focus_before_(active_before_ ? GetFocus() : nullptr) {
  toolkit_.Loops.push_back(this);
  toolkit_.ForgetScreen();
  DisableOthers();
  // A button that is held would be let go, and so pressed, behind the form.
  if (GetCapture()) ReleaseCapture();
}

ModalLoop::~ModalLoop() {
  Close();
  std::erase(toolkit_.Loops, this);
  toolkit_.ForgetScreen();
  peer_.Remove();
  // The quit message was meant for the thread's own loop; until it is posted again, the windows
  // above must be gone, because a message loop in their closing would take it.
  if (quit_) PostQuitMessage(*quit_);
}

bool ModalLoop::Goes() const {
  return peer_.Form().Visible() && peer_.Window() && !peer_.Failed() && !quit_;
}

void ModalLoop::Run() {
  {
    const DpiScope scope;
    peer_.Show();
  }
  if (!disabled_.empty() && !closed_) stacking_.emplace();
  while (Goes()) {
    MSG message;
    waiting_ = true;
    const BOOL got = GetMessageW(&message, nullptr, 0, 0);
    waiting_ = false;
    if (got < 0) throw SystemError(u"Waiting for the operator failed");
    if (got == 0) {
      quit_ = static_cast<int>(message.wParam);
    } else {
      Dispatch(toolkit_, message);
    }
  }
}

void ModalLoop::Dispatch(Toolkit& toolkit, MSG& message) {
  if (!toolkit.Loops.empty() && toolkit.Keys.Uses(toolkit.Loops.back()->peer_, message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

void ModalLoop::Hidden(Toolkit& toolkit, FormPeer& peer) {
  const bool innermost = !toolkit.Loops.empty() && &toolkit.Loops.back()->peer_ == &peer;
  if (innermost) {
    toolkit.Loops.back()->Close();
  }
  // A scroll bar that is held would keep the thread in a loop of its own.
  const HWND held = GetCapture();
  if (held && (held == peer.Window() || IsChild(peer.Window(), held))) ReleaseCapture();
  // The windows that an outer form disabled stay so while an inner one is up.
  ShowWindow(peer.Window(), SW_HIDE);
  Wake(toolkit, peer);
}

void ModalLoop::Wake(Toolkit& toolkit, const FormPeer& peer) {
  const auto loop = std::find_if(toolkit.Loops.begin(), toolkit.Loops.end(),
                                 [&](const ModalLoop* l) { return &l->peer_ == &peer; });
  // A message sent by another thread is handled inside the wait, which would simply go on.
  if (loop != toolkit.Loops.end() && (*loop)->waiting_) PostMessageW(peer.Window(), WM_NULL, 0, 0);
}

void ModalLoop::DisableOthers() {
  Search search{peer_.Window(), disabled_};
  EnumThreadWindows(GetCurrentThreadId(), CollectOther, reinterpret_cast<LPARAM>(&search));
  for (const HWND window : disabled_)
    EnableWindow(window, FALSE);
}

void ModalLoop::EnableOthers() {
  closed_ = true;
  stacking_.reset();
  for (const HWND window : disabled_) {
    if (IsWindow(window)) EnableWindow(window, TRUE);
  }
}

// The others are enabled before the form goes: the system activates no disabled window, and would
// bring another application to the front instead. An outer form that has gone already left the host
// disabled for this one's sake.
void ModalLoop::Close() {
  if (closed_) return;
  bool active = peer_.Window() && GetActiveWindow() == peer_.Window();
  const auto self = std::find(toolkit_.Loops.rbegin(), toolkit_.Loops.rend(), this);
  for (auto loop = self; loop != toolkit_.Loops.rend(); ++loop) {
    if (loop != self && (*loop)->peer_.Form().Visible()) break;
    if (!(*loop)->closed_) (*loop)->EnableOthers();
    if (active && (*loop)->RestoreActivation()) active = false;
  }
  if (!active) return;
  std::vector<HWND> found;
  Search search{peer_.Window(), found};
  EnumThreadWindows(GetCurrentThreadId(), FindUsable, reinterpret_cast<LPARAM>(&search));
  if (!found.empty()) SetActiveWindow(found.front());
}

bool ModalLoop::RestoreActivation() const {
  if (!active_before_ || !IsWindowVisible(active_before_) || !IsWindowEnabled(active_before_))
    return false;
  SetActiveWindow(active_before_);
  const bool inside = focus_before_ == active_before_ || IsChild(active_before_, focus_before_);
  if (inside && GetFocus() != focus_before_) ::SetFocus(focus_before_);
  return true;
}

}  // namespace krx::win32
