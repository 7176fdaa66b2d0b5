#include "ports/win32/Stacking.h"

#include <array>
#include <cwchar>

#include "ports/win32/WindowClasses.h"

namespace krx::win32 {

namespace {

// What lies around a form; the windows of a thread are listed from the front to the back.
struct Pile {
  HWND Form;
  bool Passed = false;   // the form itself
  bool Covered = false;  // by a window that is disabled
  bool Topmost = false;  // such a window is in front of all applications
};

bool IsTopmost(HWND window) {
  return (GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
}

BOOL CALLBACK Look(HWND window, LPARAM data) {
  auto& pile = *reinterpret_cast<Pile*>(data);
  if (window == pile.Form) {
    pile.Passed = true;
  } else if (IsWindowVisible(window) && !IsWindowEnabled(window)) {
    pile.Covered = pile.Covered || !pile.Passed;
    pile.Topmost = pile.Topmost || IsTopmost(window);
  }
  return TRUE;
}

bool IsForm(HWND window) {
  std::array<wchar_t, 16> name{};
  GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  return std::wcscmp(name.data(), kFormClass) == 0;
}

BOOL CALLBACK FindFormInUse(HWND window, LPARAM data) {
  if (!IsWindowVisible(window) || !IsWindowEnabled(window) || !IsForm(window)) return TRUE;
  // A form that stands beside another one is never the one in use.
  if ((GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_NOACTIVATE) != 0) return TRUE;
  *reinterpret_cast<HWND*>(data) = window;
  return FALSE;
}

bool Clicked(const CWPRETSTRUCT& sent) {
  const bool refused = LOWORD(sent.lParam) == static_cast<WORD>(HTERROR);
  return refused &&
         (HIWORD(sent.lParam) == WM_LBUTTONDOWN || HIWORD(sent.lParam) == WM_RBUTTONDOWN);
}

bool Moves(const CWPRETSTRUCT& sent) {
  switch (sent.message) {
    case WM_WINDOWPOSCHANGED:
    case WM_DESTROY:
      return true;
    case WM_ACTIVATE:
      return LOWORD(sent.wParam) != WA_INACTIVE;
    case WM_SETCURSOR:
      return Clicked(sent);
    default:
      return false;
  }
}

// The form hears of it by a posted message: what the window is about to do comes first.
LRESULT CALLBACK Heard(int code, WPARAM w, LPARAM l) noexcept {
  const auto& sent = *reinterpret_cast<const CWPRETSTRUCT*>(l);
  if (code == HC_ACTION && Moves(sent)) {
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(sent.hwnd, GWL_STYLE));
    HWND form = nullptr;
    if ((style & (WS_CHILD | WS_DISABLED)) == WS_DISABLED)
      EnumThreadWindows(GetCurrentThreadId(), FindFormInUse, reinterpret_cast<LPARAM>(&form));
    if (form) PostMessageW(form, kOthersMoved, sent.message == WM_SETCURSOR, 0);
  }
  return CallNextHookEx(nullptr, code, w, l);
}

}  // namespace

void StandInFront(HWND form) {
  Pile pile{form};
  EnumThreadWindows(GetCurrentThreadId(), Look, reinterpret_cast<LPARAM>(&pile));
  const bool topmost = IsTopmost(form);
  if (pile.Covered || pile.Topmost != topmost) {
    const HWND place = pile.Topmost ? HWND_TOPMOST : topmost ? HWND_NOTOPMOST : HWND_TOP;
    SetWindowPos(form, place, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  }
  const HWND active = GetActiveWindow();
  if (active && active != form && !IsWindowEnabled(active)) SetActiveWindow(form);
}

Stacking::Stacking()
    : hook_(SetWindowsHookExW(WH_CALLWNDPROCRET, Heard, nullptr, GetCurrentThreadId())) {}

Stacking::~Stacking() {
  if (hook_) UnhookWindowsHookEx(hook_);
}

}  // namespace krx::win32
