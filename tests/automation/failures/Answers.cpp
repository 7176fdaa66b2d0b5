#include "failures/Answers.h"

#include <array>
#include <string_view>
#include <utility>

#include "soak/Forms.h"

namespace krx::failures {

namespace {

constexpr int kPatient = 30;      // ticks for which Cancel and Esc are tried
constexpr int kLessPatient = 60;  // and for which the dialog is closed, before all is clicked

bool seen = false;
HWND last = nullptr;
int ticks = 0;

bool IsOf(HWND window, const wchar_t* module) {
  return reinterpret_cast<HMODULE>(GetClassLongPtrW(window, GCLP_HMODULE)) ==
         GetModuleHandleW(module);
}

bool IsSystemBox(HWND window) {
  std::array<wchar_t, 16> kind{};
  GetClassNameW(window, kind.data(), static_cast<int>(kind.size()));
  return std::wstring_view(kind.data()) == L"#32770";
}

BOOL CALLBACK Take(HWND window, LPARAM found) {
  if (!IsWindowVisible(window) || !IsWindowEnabled(window)) return TRUE;
  if (!IsOf(window, L"KRXDialogs.dll") && !IsSystemBox(window)) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

HWND Dialog() {
  HWND found = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), Take, reinterpret_cast<LPARAM>(&found));
  return found;
}

BOOL CALLBACK ClickIt(HWND window, LPARAM) {
  if (IsWindowVisible(window)) soak::Click(window);
  return TRUE;
}

}  // namespace

void CALLBACK GiveUp(HWND, UINT, UINT_PTR, DWORD) {
  const HWND dialog = Dialog();
  ticks = dialog == last ? ticks + 1 : 0;
  last = dialog;
  if (!dialog) return;
  seen = true;
  const HWND key = soak::ControlOnShow(L"keyCancel");
  if (IsSystemBox(dialog) || ticks > kPatient) PostMessageW(dialog, WM_CLOSE, 0, 0);
  if (ticks > kLessPatient) {
    EnumChildWindows(dialog, ClickIt, 0);
  } else if (key) {
    soak::Click(key);
  } else {
    soak::PressEscape(dialog);
  }
}

bool TakeSeen() {
  return std::exchange(seen, false);
}

}  // namespace krx::failures
