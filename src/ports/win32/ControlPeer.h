#pragma once

#include <optional>
#include <utility>

#include "ports/win32/FormPeer.h"
#include "ports/win32/PointerInput.h"
#include "ui/Control.h"

namespace krx::win32 {

// The window of a control: follows placement, visibility, font and colours, reports focus and
// mouse.
class ControlPeer : public WindowPeer {
 public:
  ~ControlPeer() override;

  void Update(ui::Aspect aspect) override;
  void SetFocus() override;

  ui::Control& TheControl() const { return control_; }
  const RECT& Place() const { return place_; }

  // The form is about to be shown: what the system would put off until then is done unseen.
  virtual void Settle() {}
  // The form moved to a monitor of another resolution.
  void Rescale();
  // A message that the system sends to the form on behalf of this window.
  virtual LRESULT FromParent(UINT message, WPARAM w, LPARAM l);
  // How high the parts of a window are that is being created.
  virtual void Measure(MEASUREITEMSTRUCT&) const {}

 protected:
  ControlPeer(Toolkit& toolkit, FormPeer& form, ui::Control& control);

  // Creates the window inside the form, shown as soon as the form is.
  void CreateChild(const wchar_t* window_class, DWORD style, DWORD ex_style, const String& text);

  LRESULT Handle(UINT message, WPARAM w, LPARAM l) override;
  void Fail(std::exception_ptr error) noexcept override { form_.Fail(std::move(error)); }
  std::unique_ptr<Spoken> Speak() override { return win32::Speak(Window(), control_); }

  // The window's styles on a mirrored form; as a rule it is mirrored, too.
  virtual DWORD MirrorStyle() const { return WS_EX_LAYOUTRTL; }
  // Text or picture changed.
  virtual void UpdateContent(ui::Aspect aspect) = 0;
  virtual void FocusChanged(bool /*focused*/) {}
  // Whether assistive programs hear nothing of changes.
  virtual bool Silent() const { return false; }
  // What the system's control tells, and asks to be drawn.
  virtual void Notified(WORD /*code*/) {}
  virtual void Draw(const DRAWITEMSTRUCT&) {}
  // The window is there and will get its font.
  virtual void Created() {}
  // The window gets the font in which it is to write.
  virtual void GiveFont() const;

  // While it lives, the window only follows the model: what it reports is no news.
  class Following {
   public:
    explicit Following(ControlPeer& peer)
        : peer_(peer), before_(std::exchange(peer.following_, true)) {}
    ~Following() { peer_.following_ = before_; }
    Following(const Following&) = delete;
    Following& operator=(const Following&) = delete;

   private:
    ControlPeer& peer_;
    const bool before_;
  };
  bool IsFollowing() const { return following_; }

  void Invalidate() const;
  // The box of a field, of whatever kind.
  struct FieldState {
    bool Enabled;
    bool Focused;
    bool Hot;
  };
  COLORREF FieldGround(bool enabled) const;
  void PaintField(HDC dc, const RECT& place, const FieldState& state) const;
  void SetText(const String& text) const;
  // Answers WM_GETTEXT with a text that is not the window's own.
  static LRESULT AnswerText(StringView text, WPARAM capacity, LPARAM buffer);
  // Handles a touch of a window whose mouse is ours as that of the mouse; none for other messages.
  std::optional<LRESULT> HandleTouch(UINT message, WPARAM w, LPARAM l);
  // Whether a finger or a pen is behind the message that is being handled.
  bool ByFinger() const { return touching_ || FromFinger(); }
  // Raises the control's mouse event that belongs to a message.
  void HandleMouse(UINT message, WPARAM w, LPARAM l);

  Toolkit& toolkit_;
  FormPeer& form_;
  SharedFont font_;

 private:
  void Adapt(ui::Aspect aspect);
  void TellChange(ui::Aspect aspect) const;
  void TellPress() const;
  void StandInOrder() const;
  void UpdateBounds();
  void UpdateFont();
  void MouseEvent(const ui::Event<int, int, Twips, Twips>& event, int button, WPARAM w, LPARAM l);

  ui::Control& control_;
  RECT place_{};  // pixels of the form's client area
  bool following_ = false;
  bool touching_ = false;  // what is handled as the mouse's is a finger's
};

}  // namespace krx::win32
