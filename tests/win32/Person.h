#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "base/String.h"
#include "ui/Form.h"

namespace krx::test {

// Waits until the condition holds; false when it does not within some minutes.
bool Within(const std::function<bool()>& condition);

// A person at the screen: runs in a thread of its own while a form is shown modally, finds windows
// by the names that they carry and works with real mouse and key events. Whatever cannot be done
// within the time limit is a complaint (std::runtime_error).
class Person {
 public:
  // Lets go of every key, so a failure does not spoil what follows.
  ~Person();
  // The visible top-level window that carries this name, once it has the focus.
  HWND AwaitForm(StringView name);
  HWND Control(HWND form, StringView name);
  HWND FindControl(HWND form, StringView name);  // null when there is none

  void Press(WORD key, WORD held = 0);
  // Keys at one stroke: a list takes letters for one beginning only while they come quickly.
  void Type(const std::vector<WORD>& keys);
  void Down(WORD key);
  void Up(WORD key);
  // Key-down messages of a key that has been held down for some time.
  void Repeat(HWND form, WORD key, int times);
  void Click(HWND window);
  void Touch(HWND window);  // with a finger
  void ClickAt(POINT at);   // in pixels of the screen
  void PointAway();         // to a corner of the screen, off every window
  void Turn(int notches);   // the mouse wheel, up when positive
  void RightClickAt(POINT at);
  void MoveTo(POINT at);
  // Takes a form by this control exactly so far, until it stays there.
  void Drag(HWND handle, int dx, int dy);
  // Presses at one point of the screen, moves in steps and releases at the other; with a rest the
  // pointer stands still for that long before it releases.
  void DragTo(POINT from, POINT to, std::chrono::milliseconds rest = {});
  // Presses at one point and lets go at the other while still in motion.
  void Push(POINT from, POINT to);
  // Until the window stays at a place: a window manager may still answer a move that is long over
  // and set it back by that. `meanwhile` is done where it is not there.
  void AwaitAtRest(
      HWND window, POINT at, const std::function<void()>& meanwhile = [] {});
  void AwaitFocus(HWND window);
  // Until a clicked button has done its work: a key pressed while it sends keys itself would come
  // between them, with the Shift that one of them holds.
  void AwaitRelease(HWND button);
  void Await(const std::function<bool()>& condition, const std::string& what);
  // Where the keyboard is and what covers the form in use, for complaints.
  static std::string WhatIsThere();

 private:
  void TakeAlong(POINT from, POINT to);

  std::set<WORD> down_;
};

// Name that a window carries; empty without one.
String NameOf(HWND window);
POINT CornerOf(HWND window);  // upper left, in pixels of the screen
String TextOf(HWND window);
HWND FocusOf(HWND form);

// Shows the form while the person acts. When the person is stuck, every form is closed and the
// complaint fails the test.
void ShowWith(ui::Form& form, const std::function<void(Person&)>& person);
// The same around any call that opens a form.
void RunWith(const std::function<void()>& call, const std::function<void(Person&)>& person);

}  // namespace krx::test
