#pragma once

#include <atomic>
#include <functional>
#include <memory>

#include "ports/win32/Spoken.h"

namespace krx::win32 {

class AccessibleObject;

// Gives a window's object to the assistive programs that ask for it. A program may keep the object
// longer than the window lives; from then on it answers that there is nothing behind it any more.
class Accessible {
 public:
  Accessible() = default;
  ~Accessible() { WindowGone(); }
  Accessible(const Accessible&) = delete;
  Accessible& operator=(const Accessible&) = delete;

  // Answers WM_GETOBJECT; 0 leaves the answer to the system. The object is made when somebody asks
  // for it first.
  LRESULT Answer(WPARAM w, LPARAM l, const std::function<std::unique_ptr<Spoken>()>& speak);
  void WindowGone();

 private:
  AccessibleObject* object_ = nullptr;
};

// Objects for assistive programs that live, over all threads: each keeps this module loaded.
inline constinit std::atomic<long> accessible_objects = 0;

// Tells those who listen that something has happened to a window or a row in it.
inline void Tell(DWORD event, HWND window, int part = Spoken::kSelf) {
  NotifyWinEvent(event, window, OBJID_CLIENT, part);
}

}  // namespace krx::win32
