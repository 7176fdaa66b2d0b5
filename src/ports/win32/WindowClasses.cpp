#include "ports/win32/WindowClasses.h"

#include <mutex>

namespace krx::win32 {

namespace {

std::mutex guard;
int users = 0;  // platforms that live, over all threads; guarded

void RegisterOne(const wchar_t* name, UINT style, WNDPROC procedure) {
  WNDCLASSEXW wanted{};
  wanted.cbSize = sizeof wanted;
  wanted.style = style;
  wanted.lpfnWndProc = procedure;
  wanted.hInstance = ThisModule();
  wanted.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  wanted.lpszClassName = name;
  if (!RegisterClassExW(&wanted) && GetLastError() != ERROR_CLASS_ALREADY_EXISTS)
    throw SystemError(u"A window class cannot be registered");
}

}  // namespace

WindowClasses::WindowClasses(WNDPROC procedure) {
  const std::lock_guard lock(guard);
  if (users == 0) {
    RegisterOne(kFormClass, CS_DROPSHADOW, procedure);
    RegisterOne(kPaneClass, 0, procedure);
  }
  ++users;
}

WindowClasses::~WindowClasses() {
  const std::lock_guard lock(guard);
  if (--users > 0) return;
  UnregisterClassW(kPaneClass, ThisModule());
  UnregisterClassW(kFormClass, ThisModule());
}

}  // namespace krx::win32
