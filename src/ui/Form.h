#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/Font.h"
#include "base/Geometry.h"
#include "base/PanelSettings.h"
#include "ui/Color.h"
#include "ui/Companion.h"
#include "ui/Component.h"

namespace krx::ui {

class Control;
class KRXKey;
class Platform;

// A modal, borderless window with its controls. It is loaded once, shown any number of times, and
// unloaded; hiding or unloading it ends the modal call that shows it.
class Form : public PropertyOwner {
 public:
  Form(Platform& platform, String name);
  virtual ~Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  const String& Name() const { return name_; }
  Platform& ThePlatform() const { return platform_; }
  Peer* ThePeer() const { return peer_.get(); }

  // Outer bounds in twips. The port centres the form when it is shown, so Left and Top count from
  // then on.
  Property<Twips> Left{*this, Aspect::Bounds};
  Property<Twips> Top{*this, Aspect::Bounds};
  Property<Twips> Width{*this, Aspect::Bounds};
  Property<Twips> Height{*this, Aspect::Bounds};
  Property<Color> BackColor{*this, Aspect::Colors, kButtonFace};
  Property<String> Caption{*this, Aspect::Caption};
  // What is announced when the form opens, besides its caption; empty where that says all.
  virtual String Announcement() const { return {}; }
  // What Ctrl+C copies where the form as a whole has something to say; empty for nothing.
  virtual String CopiedText() const { return {}; }
  // The plant's choice of look, keyboard on the screen and answers; read by the port when the form
  // is shown.
  PanelSettings Panel;
  // What stands beside the form while it is shown; none: nothing does.
  std::unique_ptr<Companion> Beside;
  // The form beside which this one stands. Such a form is shown by ShowBeside, never has the focus,
  // and no modal form disables it.
  Form* Attached = nullptr;
  // Whether the port keeps the form on the screen when it is moved.
  bool KeptInReach = true;
  // The button that Esc presses; none: Esc does nothing.
  KRXKey* CancelKey = nullptr;
  // The button that Enter leads to in the end; it is marked as long as no other one has the focus.
  KRXKey* DefaultKey = nullptr;

  Event<> LoadStep;
  Event<> UnloadStep;
  // The controls have their windows, and the form is shown next.
  Event<> Appear;
  Event<> Paint;
  // Resolution or work area of the form's screen changed while it is up: it is laid out anew.
  Event<> ScreenChanged;

  void Load();
  // Loads if need be, shows the form and returns when it is hidden or unloaded. An error raised in
  // a handler ends the showing and is thrown here.
  void ShowModal();
  // Shows an attached form where its bounds say, until it is hidden.
  void ShowBeside();
  void Hide();
  void Unload();
  bool Loaded() const { return loaded_; }
  bool Visible() const { return visible_; }

  // The port has put the form on the screen; from here Panel.FirstAnswerDelay counts.
  void CameUp();
  // Whether what the operator presses counts as an answer. What a dialog does by itself is none.
  bool TakesAnswers() const;

  void Move(Twips left, Twips top);

  const std::vector<Component*>& Components() const { return components_; }
  const std::vector<Control*>& TabOrder() const { return tab_order_; }
  Component* Find(StringView name) const;

  // The control that has the focus, or none.
  Control* ActiveControl() const { return active_; }
  // The port reports where the focus went; LostFocus and GotFocus are raised from here only.
  void FocusMovedTo(Control* control);
  // First control of the tab order that can take the focus.
  Control* FirstFocus() const;

  // The font of a font class of the runtime; without a resolver the default font.
  krx::Font FontOfClass(StringView name) const;
  std::function<krx::Font(StringView)> FontClassResolver;

  // Whether the language is written from right to left: then the port mirrors the form as a whole.
  // Positions stay as they are worked out, from the left. It is asked before the form is shown for
  // the first time.
  std::function<bool()> AsksRightToLeft;
  bool RightToLeft() const { return right_to_left_.value_or(false); }
  // The words for Caps Lock, asked for when they are needed; without them nothing is told.
  std::function<String()> CapsLockWords;

  void Changed(Aspect aspect) override;

 private:
  friend class Component;
  friend class Control;

  void Add(Component& component);
  void Remove(Component& component);
  void GivePeer(Component& component);
  void AddToTabOrder(Control& control);
  void MoveInTabOrder(Control& control, int index);
  int PositionInTabOrder(const Control& control) const;
  void GivePeers();
  void DropPeers();
  void EndShowing();
  void UnloadAfterFailure();

  Platform& platform_;
  const String name_;
  std::vector<Component*> components_;
  std::vector<Control*> tab_order_;
  Control* active_ = nullptr;
  std::unique_ptr<Peer> peer_;
  bool loaded_ = false;
  bool visible_ = false;
  bool showing_ = false;  // the modal call is still on the stack
  std::optional<bool> right_to_left_;
  std::optional<double> came_up_;  // in ticks of the platform
};

}  // namespace krx::ui
