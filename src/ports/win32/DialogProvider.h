#pragma once

#include "ports/win32/System.h"
#include "ui/Form.h"

namespace krx::win32 {

class DialogElement;

// Tells programs of the newer accessibility interface that a form is a window and a dialog: without
// the system's title bar it would be taken for a pane. All else they have from the window itself.
class DialogProvider {
 public:
  explicit DialogProvider(ui::Form& form) : form_(form) {}
  ~DialogProvider();
  DialogProvider(const DialogProvider&) = delete;
  DialogProvider& operator=(const DialogProvider&) = delete;

  // Answers WM_GETOBJECT; 0 leaves the answer to others.
  LRESULT Answer(HWND window, WPARAM w, LPARAM l);

 private:
  ui::Form& form_;
  DialogElement* element_ = nullptr;  // made when somebody asks for it first
};

}  // namespace krx::win32
