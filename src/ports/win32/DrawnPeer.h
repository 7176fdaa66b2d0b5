#pragma once

#include "ports/win32/FormPeer.h"
#include "ui/Control.h"

namespace krx::win32 {

// A control that is only looked at. It has no window, which would cost more than all else about it:
// its form paints it below the windows and speaks for it, and mouse and keyboard pass it by.
class DrawnPeer : public ui::Peer {
 public:
  ~DrawnPeer() override;
  DrawnPeer(const DrawnPeer&) = delete;
  DrawnPeer& operator=(const DrawnPeer&) = delete;

  void Update(ui::Aspect aspect) override;

  const ui::Control& TheControl() const { return control_; }
  const RECT& Place() const { return place_; }

  // The form moved to a monitor of another resolution.
  void Rescale();
  // Paints all of it on its form, and nothing beside it.
  void PaintOn(HDC dc) const;

 protected:
  DrawnPeer(Toolkit& toolkit, FormPeer& form, ui::Control& control);

  // With its font selected and texts transparent; leaves nothing of the area out.
  virtual void Paint(HDC dc, const RECT& area) const = 0;

  FormPeer& form_;
  Toolkit& toolkit_;

 private:
  void Move();
  void TakeFont();
  void Tell(ui::Aspect aspect) const;

  ui::Control& control_;
  SharedFont font_;
  RECT place_;  // pixels of the form's client area
};

}  // namespace krx::win32
