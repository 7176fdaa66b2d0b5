#pragma once

#include <memory>
#include <optional>

#include "ports/win32/System.h"
#include "ui/Form.h"

namespace krx::win32 {

class FormPeer;

// What assistive programs may ask about a window and the parts in it, rows or what a form paints,
// which count from 1; the window itself is 0. Roles and states are the system's numbers.
class Spoken {
 public:
  static constexpr int kSelf = 0;

  explicit Spoken(HWND window) : window_(window) {}
  virtual ~Spoken() = default;
  Spoken(const Spoken&) = delete;
  Spoken& operator=(const Spoken&) = delete;

  HWND Window() const { return window_; }

  virtual long Role(int part) const = 0;
  virtual long State(int part) const;
  virtual String Name(int part) const = 0;
  virtual String Description(int) const { return {}; }
  virtual String Shortcut(int) const { return {}; }
  virtual std::optional<String> Value(int) const { return {}; }
  virtual bool IsSecret() const { return false; }
  virtual RECT Place(int part) const;  // in pixels of the screen
  virtual int PartAt(POINT) const { return kSelf; }

  // How many parts there are, and the window of one that has its own, which speaks for itself.
  virtual int Count() const { return 0; }
  virtual HWND WindowOf(int) const { return nullptr; }
  // The part that has the keyboard, and the selected row; none where there is none.
  virtual std::optional<int> FocusedPart() const;
  virtual std::optional<int> SelectedPart() const { return {}; }

  // What pressing it does, in a word; empty where it does nothing.
  virtual String Action(int) const { return {}; }
  // These return whether there is such a thing to do.
  virtual bool Act(int) { return false; }
  virtual bool SetValue(const wchar_t*) { return false; }
  virtual bool Focus(int) { return false; }
  virtual bool Select(int) { return false; }

 protected:
  virtual bool TakesFocus() const { return false; }
  bool HasFocus() const;

 private:
  const HWND window_;
};

// What all controls answer alike.
class SpokenControl : public Spoken {
 public:
  SpokenControl(HWND window, ui::Control& control) : Spoken(window), control_(control) {}

  String Name(int part) const override;
  String Shortcut(int part) const override;
  bool Focus(int part) override;

 protected:
  bool TakesFocus() const override { return true; }

 private:
  ui::Control& control_;
};

// What a control is that is only looked at, and the state in which it always is.
long RoleOf(ui::Kind kind);
long StateOf(ui::Kind kind);
// The key that reaches a control, in words; empty without one.
String ShortcutOf(const ui::Control& control);

std::unique_ptr<Spoken> Speak(const FormPeer& form);
std::unique_ptr<Spoken> Speak(HWND window, ui::Control& control);

}  // namespace krx::win32
