#pragma once

#include <windows.h>

namespace krx::test {

// A plain window of the host application.
class HostWindow {
 public:
  explicit HostWindow(DWORD style = WS_VISIBLE, DWORD ex_style = 0)
      : window_(CreateWindowExW(ex_style, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | style, 10, 10,
                                200, 100, nullptr, nullptr, nullptr, nullptr)),
        edit_(CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, window_,
                              nullptr, nullptr, nullptr)) {}
  ~HostWindow() { Destroy(); }
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;

  void Destroy() const { DestroyWindow(window_); }
  HWND Get() const { return window_; }
  HWND Edit() const { return edit_; }

 private:
  HWND window_;
  HWND edit_;
};

}  // namespace krx::test
