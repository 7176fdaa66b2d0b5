#pragma once

#include "ports/win32/PanePeers.h"
#include "ui/StandardControls.h"

namespace krx::win32 {

// A label is drawn by us: some versions of the system's static text keep memory for each one that
// has had a font.
class LabelPeer final : public PaintedPeer {
 public:
  LabelPeer(Toolkit& toolkit, FormPeer& form, ui::Label& label);

 protected:
  void UpdateContent(ui::Aspect aspect) override;
  void Paint(HDC dc, const RECT& area) override;

 private:
  ui::Label& label_;
};

// A frame is the system's group box; the controls on it lie above it. It paints itself: the system
// would leave out its inside, which the form does not paint either, and put the upper edge lower
// even where there is no caption.
class FramePeer final : public PaintedPeer {
 public:
  FramePeer(Toolkit& toolkit, FormPeer& form, ui::Frame& frame);

 protected:
  void UpdateContent(ui::Aspect aspect) override;
  void Paint(HDC dc, const RECT& area) override;

 private:
  ui::Frame& frame_;
};

}  // namespace krx::win32
