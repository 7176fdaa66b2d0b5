#pragma once

#include <utility>

#include "ports/win32/ControlPeer.h"
#include "ports/win32/Hovering.h"
#include "ui/EditBoxes.h"

namespace krx::win32 {

// An input box is the system's one-line edit control, so that input methods, clipboard and touch
// keyboard work as everywhere.
class EditBoxPeer : public ControlPeer {
 protected:
  EditBoxPeer(Toolkit& toolkit, FormPeer& form, ui::EditBox& box);

  void CreateEdit(DWORD style, const String& text);
  LRESULT Handle(UINT message, WPARAM w, LPARAM l) override;
  void Update(ui::Aspect aspect) override;
  void UpdateContent(ui::Aspect aspect) override;
  void FocusChanged(bool) override { PaintBorder(); }
  void GiveFont() const override;
  void Notified(WORD code) override;
  DWORD MirrorStyle() const override;

  // Brings the model's text into the window, and the operator's edit into the model.
  virtual void ShowText() = 0;
  virtual void AdoptText() = 0;
  void AdoptSelection();

 private:
  void UpdateSelection() const;
  // Beginning and end of what is selected, as the window has it.
  std::pair<DWORD, DWORD> Selected() const;
  void LeaveRoomForText(RECT& area) const;
  void PaintBorder() const;
  void PaintDisabled() const;
  void PaintSelection() const;

  ui::EditBox& box_;
  Hovering hovering_;
};

class TextBoxPeer final : public EditBoxPeer {
 public:
  TextBoxPeer(Toolkit& toolkit, FormPeer& form, ui::TextBox& box);

 protected:
  void ShowText() override { SetText(box_.Text()); }
  void AdoptText() override;

 private:
  ui::TextBox& box_;
};

}  // namespace krx::win32
