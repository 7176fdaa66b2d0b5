#include "soak/Forms.h"

namespace krx::soak {

namespace {

constexpr const wchar_t* kNameProperty = L"KRXName";

struct Search {
  ATOM Name;
  HWND Found;
};

BOOL CALLBACK TakeForm(HWND window, LPARAM found) {
  if (!IsWindowVisible(window) || !GetPropW(window, kNameProperty)) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

BOOL CALLBACK TakeControl(HWND window, LPARAM data) {
  auto& search = *reinterpret_cast<Search*>(data);
  const auto name = reinterpret_cast<ULONG_PTR>(GetPropW(window, kNameProperty));
  if (!name || name != search.Name) return TRUE;
  search.Found = window;
  return FALSE;
}

}  // namespace

HWND FormOnShow() {
  HWND form = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), TakeForm, reinterpret_cast<LPARAM>(&form));
  return form;
}

HWND ControlOnShow(const wchar_t* name) {
  Search search{GlobalFindAtomW(name), nullptr};
  if (const HWND form = FormOnShow())
    EnumChildWindows(form, TakeControl, reinterpret_cast<LPARAM>(&search));
  return search.Found;
}

void Click(HWND control) {
  PostMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
  PostMessageW(control, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
}

void PressEscape(HWND form) {
  const HWND focus = GetFocus() ? GetFocus() : form;
  PostMessageW(focus, WM_KEYDOWN, VK_ESCAPE, 0x00010001);
  PostMessageW(focus, WM_KEYUP, VK_ESCAPE, static_cast<LPARAM>(0xC0010001));
}

void HandlePending() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
    DispatchMessageW(&message);
}

}  // namespace krx::soak
