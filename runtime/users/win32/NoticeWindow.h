#pragma once

#include <windows.h>

#include <string>

#include "runtime/core/Languages.h"
#include "runtime/users/system/Notice.h"

namespace krx::runtime {

// A small window above all others at the upper edge of the screen that is worked on. It never
// becomes active. Belongs to the thread that makes it, which has to handle its messages; there is
// no window while nothing is shown. Where the system has none to give, nothing is shown.
class NoticeWindow : public Notice {
 public:
  explicit NoticeWindow(Languages& languages) : languages_(languages) {}
  ~NoticeWindow() override;
  NoticeWindow(const NoticeWindow&) = delete;
  NoticeWindow& operator=(const NoticeWindow&) = delete;

  void Show(const String& text) override;
  void Hide() override;
  bool IsTouched() const override { return touched_; }

  HWND Handle() const { return window_; }

 private:
  static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wide, LPARAM extra);
  bool Create();
  void Place();
  void Paint();

  Languages& languages_;
  HWND window_ = nullptr;
  HFONT font_ = nullptr;
  std::wstring text_;
  UINT reading_ = 0;  // how the language is written
  bool touched_ = false;
};

}  // namespace krx::runtime
