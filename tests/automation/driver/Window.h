#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "driver/Wait.h"

namespace krx::drive {

// A window of another process, found by the name that it carries for test automation.
class Window {
 public:
  explicit Window(HWND handle) : handle_(handle) {}

  HWND Handle() const { return handle_; }
  // Name of the form or control; empty for a window without one.
  std::wstring Name() const;
  // Shown text, as the window itself tells it.
  std::wstring Text() const;
  // Outer bounds in pixels of the screen.
  RECT Bounds() const;
  POINT Centre() const;
  bool Exists() const { return IsWindow(handle_) != FALSE; }
  bool Visible() const { return IsWindowVisible(handle_) != FALSE; }
  bool Enabled() const { return IsWindowEnabled(handle_) != FALSE; }
  bool Focused() const;

  // All windows inside this one, in the order of their creation on screen.
  std::vector<Window> Descendants() const;
  std::optional<Window> Find(const std::wstring& name) const;
  // The control of this name; throws when it does not come in time.
  Window Child(const std::wstring& name) const;
  // The descendant that has the keyboard; none when another window has it.
  std::optional<Window> FocusedChild() const;

  // Waits; all throw when it does not happen in time.
  void WaitForFocusOn(const std::wstring& name) const;
  void WaitForText(const std::wstring& text) const;
  void WaitUntilActive() const;
  // Until it has kept the focus, on this control if one is named, for some looks: while the window
  // manager still moves the focus to a window that has just appeared, a press may be lost.
  void WaitUntilAtRest(const std::wstring& focus = {}) const;
  void WaitUntilGone() const;

  // A left click in the middle, with the real mouse.
  void Click() const;

  bool operator==(const Window& other) const { return handle_ == other.handle_; }

 private:
  HWND handle_;
};

// Visible top-level windows that carry this name; an empty name stands for any name.
std::vector<Window> Forms(const std::wstring& name);

// Visible top-level windows of a process, the topmost one first: its forms, open lists and boxes.
std::vector<Window> WindowsOf(DWORD process);

// The form of this name that is not `before`; throws when none opens in time.
Window WaitForForm(const std::wstring& name, HWND before = nullptr, Milliseconds limit = kPatience);

// The list that hangs open below a combo box of this form; throws when none opens in time.
Window WaitForList(const Window& form);

// A visible top-level window by its window text (other programs' windows); throws likewise.
Window WaitForTitle(const std::wstring& title, Milliseconds limit = kPatience);

std::string Narrow(const std::wstring& text);
std::wstring Widen(const std::string& text);

}  // namespace krx::drive
