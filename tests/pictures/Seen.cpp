#include "Seen.h"

#include <commctrl.h>  // builds on the one above

#include <array>
#include <cwchar>
#include <functional>
#include <utility>
#include <vector>

#include "soak/Forms.h"

namespace krx::pictures {

namespace {

using Windows = std::vector<HWND>;

BOOL CALLBACK AddVisible(HWND window, LPARAM windows) {
  if (IsWindowVisible(window)) reinterpret_cast<Windows*>(windows)->push_back(window);
  return TRUE;
}

Windows OnForm(HWND form) {
  Windows windows;
  EnumChildWindows(form, AddVisible, reinterpret_cast<LPARAM>(&windows));
  return windows;
}

HWND Named(const Windows& windows, const std::wstring& name) {
  const ATOM atom = GlobalFindAtomW(name.c_str());
  for (const HWND window : windows)
    if (atom && reinterpret_cast<ULONG_PTR>(GetPropW(window, L"KRXName")) == atom) return window;
  return nullptr;
}

bool IsOf(const wchar_t* window_class, HWND window) {
  std::array<wchar_t, 32> name{};
  GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  return _wcsicmp(name.data(), window_class) == 0;
}

}  // namespace

HWND FormNamed(const std::wstring& name) {
  Windows windows;
  EnumThreadWindows(GetCurrentThreadId(), AddVisible, reinterpret_cast<LPARAM>(&windows));
  return Named(windows, name);
}

HWND ControlNamed(HWND form, const std::wstring& name) {
  return Named(OnForm(form), name);
}

int RowsOn(HWND form) {
  int rows = 0;
  for (const HWND window : OnForm(form))
    if (IsOf(WC_LISTVIEWW, window))
      rows += static_cast<int>(SendMessageW(window, LVM_GETITEMCOUNT, 0, 0));
  return rows;
}

HWND OpenList(HWND form) {
  for (const HWND window : OnForm(form)) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    if (!IsOf(WC_COMBOBOXW, window) || !GetComboBoxInfo(window, &info)) continue;
    if (IsWindowVisible(info.hwndList)) return info.hwndList;
  }
  return nullptr;
}

void Leave(HWND form) {
  for (const wchar_t* const name : {L"keyCancel", L"keyClose", L"keyButton(0)"}) {
    const HWND key = ControlNamed(form, name);
    if (!key || !IsWindowEnabled(key)) continue;
    PostMessageW(form, WM_COMMAND, MAKEWPARAM(0, BN_CLICKED), reinterpret_cast<LPARAM>(key));
    return;
  }
  soak::PressEscape(form);
}

}  // namespace krx::pictures
