#pragma once

#include <windows.h>

#include <functional>
#include <vector>

#include "Times.h"

namespace krx::bench {

// Follows the first dialog that this thread opens while the watch lives. Only one lives at a time.
class PaintWatch {
 public:
  // Called after each message that a window of the dialog has handled.
  using Handled = std::function<void(HWND dialog, HWND window, UINT message)>;

  explicit PaintWatch(Handled handled);
  // Handles what the dialog has left in the thread's queue.
  ~PaintWatch();
  PaintWatch(const PaintWatch&) = delete;
  PaintWatch& operator=(const PaintWatch&) = delete;

  Time Created, Activated;  // the first window; the dialog

  // The dialog and its windows in the order in which they were met: the same each time it opens.
  const std::vector<HWND>& Windows() const { return windows_; }

 private:
  static LRESULT CALLBACK OnWindowEvent(int code, WPARAM w, LPARAM l);
  static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM w, LPARAM l);
  static BOOL CALLBACK Follow(HWND window, LPARAM);

  const Handled handled_;
  const HHOOK hook_;
  HWND dialog_ = nullptr;
  std::vector<HWND> windows_;
};

// Whether a window of this thread is still to be painted. One call of the system: asking each
// window would cost as much as painting it.
bool AnyPaintPending();

}  // namespace krx::bench
