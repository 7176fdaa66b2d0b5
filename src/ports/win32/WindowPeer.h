#pragma once

#include <exception>

#include "ports/win32/Accessible.h"
#include "ports/win32/CommonControls.h"
#include "ui/Component.h"

namespace krx::win32 {

// A peer that is a window. The window carries the component's name for test tools, and no exception
// leaves its procedure: it is handed to Fail instead.
class WindowPeer : public ui::Peer {
 public:
  ~WindowPeer() override;
  WindowPeer(const WindowPeer&) = delete;
  WindowPeer& operator=(const WindowPeer&) = delete;

  // Null once the window is gone.
  HWND Window() const { return window_; }

  // Procedure of the window classes of this module, and of the system's windows that follow us.
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM w, LPARAM l) noexcept;

 protected:
  struct Creation {
    const wchar_t* Class;
    DWORD Style;
    DWORD ExStyle;
    const wchar_t* Text;
    RECT Place;
    HWND Parent;
  };

  WindowPeer() = default;
  // Creates the window, hidden or shown by its style; raises Error when the system refuses.
  void Create(const CommonControls& controls, const Creation& wanted, const String& name);
  void Destroy();

  virtual LRESULT Handle(UINT message, WPARAM w, LPARAM l) { return Default(message, w, l); }
  // The answer to an assistive program that asks for the window's object; 0: the system's.
  virtual LRESULT GiveObject(WPARAM w, LPARAM l) {
    return accessible_.Answer(w, l, [this] { return Speak(); });
  }
  virtual std::unique_ptr<Spoken> Speak() = 0;
  // What the window would do without us.
  LRESULT Default(UINT message, WPARAM w, LPARAM l);
  // A handler raised an error that must not cross the window procedure.
  virtual void Fail(std::exception_ptr error) noexcept = 0;

 private:
  void Follow(HWND window);
  void SetName(const String& name);
  void DropName();

  HWND window_ = nullptr;
  WNDPROC native_ = nullptr;  // of a window of the system; none for our own classes
  ATOM name_ = 0;
  Accessible accessible_;
  bool detached_ = false;  // the component may be gone; its window only needs the default
};

}  // namespace krx::win32
