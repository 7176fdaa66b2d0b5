#pragma once

#include "ports/win32/DrawnPeer.h"
#include "ui/StandardControls.h"

namespace krx::win32 {

// A line or block of text.
class LabelPeer final : public DrawnPeer {
 public:
  LabelPeer(Toolkit& toolkit, FormPeer& form, ui::Label& label);

 protected:
  void Paint(HDC dc, const RECT& area) const override;

 private:
  const ui::Label& label_;
};

// A frame looks like the system's group box; other than that, its upper edge is no lower where
// there is no caption.
class FramePeer final : public DrawnPeer {
 public:
  FramePeer(Toolkit& toolkit, FormPeer& form, ui::Frame& frame);

 protected:
  void Paint(HDC dc, const RECT& area) const override;

 private:
  const ui::Frame& frame_;
};

}  // namespace krx::win32
