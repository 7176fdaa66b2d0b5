#pragma once

#include "ports/win32/ControlPeer.h"
#include "ui/StandardControls.h"

namespace krx::win32 {

// A label is the system's static text.
class LabelPeer final : public ControlPeer {
 public:
  LabelPeer(Toolkit& toolkit, FormPeer& form, ui::Label& label);

 protected:
  void UpdateContent(ui::Aspect aspect) override;

 private:
  ui::Label& label_;
};

// A frame is the system's group box; the controls on it lie above it.
class FramePeer final : public ControlPeer {
 public:
  FramePeer(Toolkit& toolkit, FormPeer& form, ui::Frame& frame);

 protected:
  void UpdateContent(ui::Aspect) override {}
  bool IsBackground() const override { return true; }
};

// An input box is the system's one-line edit control.
class TextBoxPeer final : public ControlPeer {
 public:
  TextBoxPeer(Toolkit& toolkit, FormPeer& form, ui::TextBox& box);

  LRESULT FromParent(UINT message, WPARAM w, LPARAM l) override;

 protected:
  LRESULT Handle(UINT message, WPARAM w, LPARAM l) override;
  void UpdateContent(ui::Aspect aspect) override;

 private:
  String WindowContent() const;
  void UpdateText();
  void UpdateSelection() const;
  void AdoptSelection();

  ui::TextBox& box_;
  bool updating_ = false;  // the change comes from the model
};

}  // namespace krx::win32
