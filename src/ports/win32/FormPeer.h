#pragma once

#include <optional>
#include <vector>

#include "ports/win32/CapsLockHint.h"
#include "ports/win32/DialogProvider.h"
#include "ports/win32/Screen.h"
#include "ports/win32/Toolkit.h"
#include "ports/win32/WindowPeer.h"
#include "ui/Form.h"

namespace krx::win32 {

class ControlPeer;
class DrawnPeer;
class TimerPeer;

// Message to a form that its focus has moved or that it is pressed.
inline constexpr UINT kSettle = WM_USER + 2;
inline constexpr UINT kStandWhereAsked = WM_USER + 3;

// The window of a form: borderless, with a thin edge around a client area of exactly the form's
// size. It is created hidden, in its place. It paints the parts that have no windows.
class FormPeer final : public WindowPeer {
 public:
  FormPeer(Toolkit& toolkit, ui::Form& form);

  void Update(ui::Aspect aspect) override;

  ui::Form& Form() const { return form_; }
  win32::Scale Scale() const { return scale_; }
  const win32::Theme& Theme() const { return theme_; }
  // What lies behind a control: the colour of a caption line or a frame that it stands on, or else
  // the form's.
  ui::Color GroundOf(const ui::Control& control) const;
  // The button that Enter presses, in the end: the one with the keyboard, or else the form's own.
  const ui::Control* DefaultKey() const;
  // How access keys are drawn: they are marked once somebody uses the keyboard.
  UINT CaptionFormat() const;
  bool ShowsFocus() const;

  // Shows and paints the form and gives it the focus.
  void Show();
  // Takes the window off the screen; the windows of an unloaded form are destroyed.
  void Remove();

  // Where a control belongs, in pixels of the client area; mirrored where the form is.
  RECT PlaceOf(const ui::Control& control) const;
  bool Mirrored() const { return form_.RightToLeft(); }
  // A place on the other side of the client area.
  RECT Opposite(const RECT& place) const;
  // Tells of Caps Lock, or no more, as the focus and the key are now.
  void FollowCapsLock();

  // The control peers, parts and timers of the form enter and leave themselves.
  void Add(ControlPeer& child) { children_.push_back(&child); }
  void Leave(ControlPeer& child) { std::erase(children_, &child); }
  void Add(DrawnPeer& part) { parts_.push_back(&part); }
  void Leave(DrawnPeer& part) { std::erase(parts_, &part); }
  void Add(TimerPeer& timer) { timers_.push_back(&timer); }
  void Leave(TimerPeer& timer) { std::erase(timers_, &timer); }

  // Focus or shape of the form have changed, so what stands beside it follows as soon as the form
  // is at rest.
  void Disturbed() const;

  // Moves the focus to the control; while another window is active, as soon as this one is again.
  void FocusOn(ControlPeer& child);
  // The focus came to a control; the form's default button looks like it as long as it is.
  void FocusCameTo(ui::Control* control);
  // Leads the focus away from a control that is about to be hidden or disabled.
  void FocusElsewhere();
  // The window of the control before this one in the tab order, among those that lie below none.
  HWND WindowBefore(const ui::Control& control) const;

  // What assistive programs find on the form, windows and parts, in the order in which they read
  // it: the tab order, then what lies below. Numbers count from 1.
  struct Inside {
    HWND Window = nullptr;
    const DrawnPeer* Part = nullptr;  // where there is no window
  };
  std::vector<Inside> Insides() const;
  // Tells those who listen that something has happened to a part.
  void TellOfPart(DWORD event, const DrawnPeer& part) const;
  // Has a place painted anew, where `bare` with what lies under the parts.
  void Invalidate(const RECT& place, bool bare) const;

  // An error of one of the form's handlers; the first one is kept for the form's modal call.
  void Fail(std::exception_ptr error) noexcept override;
  std::exception_ptr TakeError() { return std::exchange(error_, nullptr); }
  bool Failed() const { return error_ != nullptr; }

 protected:
  LRESULT Handle(UINT message, WPARAM w, LPARAM l) override;
  LRESULT GiveObject(WPARAM w, LPARAM l) override;
  std::unique_ptr<Spoken> Speak() override { return win32::Speak(*this); }

 private:
  static constexpr int kEdge = 1;                   // pixels at 96 dpi
  static constexpr UINT_PTR kSettleTimer = 0x4B53;  // no address of a timer's peer

  ControlPeer* Child(HWND window) const;
  ControlPeer* Child(const ui::Control& control) const;
  Inside InsideOf(const ui::Control& control) const;
  HWND FocusWindow() const;
  SIZE WindowSize() const;
  void AdoptPosition(const RECT& window);
  void TellPosition(const RECT& window);
  void FollowWindow();
  void StandWhereAsked();
  void UpdateBounds();
  void PlaceChildrenAnew();
  void ComeToTheFront(bool called);
  bool TurnWheel(int delta);
  void PaintEdge() const;
  void PaintForm();
  void PaintParts(HDC dc) const;
  void Tick(UINT_PTR id);
  void ChangeResolution(int dpi, const RECT& suggested);
  void LayOutAnew();
  RECT FirstPlace() const;
  void SettleBeside();
  void ShowAttached();
  void ChangeLook(UINT message, WPARAM w, LPARAM l);
  LRESULT ToChild(HWND child, UINT message, WPARAM w, LPARAM l);

  Toolkit& toolkit_;
  ui::Form& form_;
  win32::Scale scale_;
  win32::Theme theme_;
  RECT place_{};                // of the window, in pixels of the screen
  std::optional<POINT> asked_;  // where the window is put once more
  bool moved_ = false;          // has left its first place since it is shown
  std::vector<ControlPeer*> children_;
  std::vector<DrawnPeer*> parts_;
  std::vector<TimerPeer*> timers_;
  int wheel_rest_ = 0;  // turns of the wheel that make no whole line yet
  std::exception_ptr error_;
  DialogProvider provider_{form_};
  std::unique_ptr<CapsLockHint> caps_lock_;
};

}  // namespace krx::win32
