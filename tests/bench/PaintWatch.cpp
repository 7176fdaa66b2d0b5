#include "PaintWatch.h"

#include <unordered_map>

namespace krx::bench {

namespace {

PaintWatch* watch = nullptr;
// The windows' own procedures. A property of each window would cost a call of the system with every
// message.
std::unordered_map<HWND, WNDPROC> own_procedures;

}  // namespace

bool AnyPaintPending() {
  return (HIWORD(GetQueueStatus(QS_PAINT)) & QS_PAINT) != 0;
}

PaintWatch::PaintWatch(Handled handled)
    : handled_(std::move(handled)),
      hook_(SetWindowsHookExW(WH_CBT, OnWindowEvent, nullptr, GetCurrentThreadId())) {
  watch = this;
}

PaintWatch::~PaintWatch() {
  UnhookWindowsHookEx(hook_);
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
    DispatchMessageW(&message);
  watch = nullptr;
}

// Every window of the dialog gets this procedure in front of its own.
LRESULT CALLBACK PaintWatch::OnMessage(HWND window, UINT message, WPARAM w, LPARAM l) {
  const WNDPROC own = own_procedures[window];
  if (message == WM_NCDESTROY) {
    own_procedures.erase(window);
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(own));
  }
  const LRESULT result = CallWindowProcW(own, window, message, w, l);
  if (watch && message != WM_NCDESTROY) watch->handled_(watch->dialog_, window, message);
  return result;
}

BOOL CALLBACK PaintWatch::Follow(HWND window, LPARAM) {
  const LONG_PTR own = GetWindowLongPtrW(window, GWLP_WNDPROC);
  own_procedures[window] = reinterpret_cast<WNDPROC>(own);
  watch->windows_.push_back(window);
  SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(OnMessage));
  return TRUE;
}

LRESULT CALLBACK PaintWatch::OnWindowEvent(int code, WPARAM w, LPARAM l) {
  const auto window = reinterpret_cast<HWND>(w);
  const bool top_level = code >= 0 && !(GetWindowLongW(window, GWL_STYLE) & WS_CHILD);
  if (code == HCBT_CREATEWND && top_level && watch->Created == Time())
    watch->Created = Clock::now();
  if (code == HCBT_CREATEWND && watch->dialog_) Follow(window, 0);
  if (code == HCBT_ACTIVATE && !watch->dialog_) {
    watch->Activated = Clock::now();
    watch->dialog_ = window;
    Follow(window, 0);
    EnumChildWindows(window, Follow, 0);
  }
  return CallNextHookEx(watch->hook_, code, w, l);
}

}  // namespace krx::bench
