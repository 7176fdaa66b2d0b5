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

// A frame is the system's group box; the controls on it lie above it. It paints itself: the system
// would leave out its inside, which the form does not paint either, and put the upper edge lower
// even where there is no caption.
class FramePeer final : public ControlPeer {
 public:
  FramePeer(Toolkit& toolkit, FormPeer& form, ui::Frame& frame);

 protected:
  LRESULT Handle(UINT message, WPARAM w, LPARAM l) override;
  void UpdateContent(ui::Aspect aspect) override;

 private:
  void Paint(HDC dc, RECT area) const;

  ui::Frame& frame_;
};

}  // namespace krx::win32
