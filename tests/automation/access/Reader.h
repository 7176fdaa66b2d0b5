#pragma once

#include <windows.h>

#include <oleacc.h>  // builds on the one above

#include <optional>
#include <string>
#include <vector>

#include "com/ComPtr.h"
#include "driver/Window.h"

namespace krx::drive {

// What an assistive program is told of one window, or of one part of it without a window, a row or
// a label, by the interface that every Windows has.
class Element {
 public:
  // The window's own object; throws when there is none.
  explicit Element(const Window& window);
  Element(com::ComPtr<IAccessible> object, long part) : object_(std::move(object)), part_(part) {}

  // Texts are empty where the status says that there is none; other failures are thrown.
  std::wstring Name() const;
  std::wstring Value() const;
  std::wstring Description() const;
  std::wstring Shortcut() const;
  std::wstring Action() const;
  long Role() const;
  long State() const;
  bool Has(long state) const { return (State() & state) != 0; }
  RECT Place() const;
  bool IsPart() const { return part_ != CHILDID_SELF; }
  // The window that it is or is part of.
  Window TheWindow() const;

  long Count() const;
  // By number from 1: the object of a window inside, or a part.
  Element Inside(long number) const;
  Element Parent() const;
  // Number of the selected row; 0 without one.
  long Selected() const;

  void Press() const;
  // The same where the program may be gone before it has answered; whether it acted shows
  // otherwise.
  void PressToEnd() const;
  void Select(long flags) const;
  void SetValue(const std::wstring& text) const;

  IAccessible& Object() const { return *object_; }
  VARIANT Part() const;

 private:
  com::ComPtr<IAccessible> object_;
  long part_ = CHILDID_SELF;
};

// What stands before a control of a form, as a reader finds it: a label has no window.
struct Heading {
  std::wstring Text;
  std::wstring Key;  // such as "Alt+N"; empty without one
  POINT Centre{};    // in pixels of the screen
};
// Throws when the control is missing or what stands before it is no label.
Heading HeadingOf(const Window& form, const std::wstring& control);

// The newer interface, which only some systems have; what it tells of single windows.
class Automation {
 public:
  Automation();
  ~Automation();
  Automation(const Automation&) = delete;
  Automation& operator=(const Automation&) = delete;

  explicit operator bool() const;

  struct Facts {
    std::wstring Name;
    long Type = 0;
    bool IsPassword = false;
    bool IsDialog = false;
  };
  Facts Of(const Window& window) const;

 private:
  struct Client;
  com::ComPtr<IUnknown> client_;
};

// The English words for a role, a control type, and those states that do not depend on the moment.
std::string RoleWord(long role);
std::string TypeWord(long type);
std::string StateWords(long state);

}  // namespace krx::drive
