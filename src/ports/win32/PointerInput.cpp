#include "ports/win32/PointerInput.h"

#include <windowsx.h>

namespace krx::win32 {

namespace {

// How the system marks messages of the mouse that it makes of touches.
constexpr DWORD kTouchMark = 0xFF515700;
constexpr DWORD kTouchMarkMask = 0xFFFFFF00;

struct PointerFunctions {
  decltype(::GetCurrentInputMessageSource)* Source =
      OptionalFunction<decltype(::GetCurrentInputMessageSource)>(L"user32.dll",
                                                                 "GetCurrentInputMessageSource");
  decltype(::IsMouseInPointerEnabled)* WithMouse =
      OptionalFunction<decltype(::IsMouseInPointerEnabled)>(L"user32.dll",
                                                            "IsMouseInPointerEnabled");
  decltype(::GetPointerType)* Type =
      OptionalFunction<decltype(::GetPointerType)>(L"user32.dll", "GetPointerType");
};

const PointerFunctions& PointerSystem() {
  static const PointerFunctions functions;
  return functions;
}

// The mouse is a pointer only where the host has asked for it; and only then the type is asked for,
// which not every system tells truly.
bool IsMouse(UINT32 pointer) {
  const PointerFunctions& system = PointerSystem();
  if (!system.WithMouse || !system.WithMouse() || !system.Type) return false;
  POINTER_INPUT_TYPE type = PT_POINTER;
  return system.Type(pointer, &type) && type != PT_TOUCH && type != PT_PEN;
}

UINT MessageFor(UINT message, WPARAM w) {
  const WORD flags = HIWORD(w);
  if ((flags & POINTER_MESSAGE_FLAG_CANCELED) != 0) return WM_CANCELMODE;
  switch (message) {
    case WM_POINTERDOWN:
      return WM_LBUTTONDOWN;
    case WM_POINTERUP:
      return WM_LBUTTONUP;
    default:  // a pen that is near the screen only moves, too
      return (flags & POINTER_MESSAGE_FLAG_INCONTACT) != 0 ? WM_MOUSEMOVE : 0;
  }
}

}  // namespace

bool FromFinger() {
  if ((static_cast<DWORD>(GetMessageExtraInfo()) & kTouchMarkMask) == kTouchMark) return true;
  INPUT_MESSAGE_SOURCE source{};
  if (!PointerSystem().Source || !PointerSystem().Source(&source)) return false;
  return source.deviceType == IMDT_TOUCH || source.deviceType == IMDT_PEN;
}

std::optional<Touch> TouchOf(HWND window, UINT message, WPARAM w, LPARAM l) {
  const bool known =
      message == WM_POINTERDOWN || message == WM_POINTERUPDATE || message == WM_POINTERUP;
  if (!known || IsMouse(LOWORD(w))) return {};
  const bool first = (HIWORD(w) & POINTER_MESSAGE_FLAG_PRIMARY) != 0;
  const UINT as_mouse = first ? MessageFor(message, w) : 0;
  if (as_mouse == 0) return Touch{};
  POINT point{GET_X_LPARAM(l), GET_Y_LPARAM(l)};
  ScreenToClient(window, &point);
  const WPARAM keys = as_mouse == WM_LBUTTONUP || as_mouse == WM_CANCELMODE ? 0 : MK_LBUTTON;
  const LPARAM at = as_mouse == WM_CANCELMODE ? 0 : MAKELPARAM(point.x, point.y);
  return Touch{as_mouse, keys, at};
}

}  // namespace krx::win32
