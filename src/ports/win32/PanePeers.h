#pragma once

#include "ports/win32/ControlPeer.h"
#include "ports/win32/IndexScroll.h"
#include "ports/win32/ScrollBar.h"
#include "ui/KRXIndex.h"
#include "ui/StandardControls.h"

namespace krx::win32 {

// A window that is drawn by us, in one go and without a separate background. A button held down on
// it keeps the mouse, so a form can be dragged by it.
class PanePeer : public ControlPeer {
 protected:
  using ControlPeer::ControlPeer;
  LRESULT Handle(UINT message, WPARAM w, LPARAM l) override;
  virtual void Paint(HDC dc, const RECT& area) = 0;
};

// Shows the text of a KRXIndex.
class IndexPeer final : public PanePeer {
 public:
  IndexPeer(Toolkit& toolkit, FormPeer& form, ui::KRXIndex& index);

  void Update(ui::Aspect aspect) override;

 protected:
  LRESULT Handle(UINT message, WPARAM w, LPARAM l) override;
  void Paint(HDC dc, const RECT& area) override;
  void UpdateContent(ui::Aspect aspect) override;
  void FocusChanged(bool) override { Invalidate(); }

 private:
  void TakeText();
  void ShowScroll();
  const String& TextOfWindow() const { return whole_.empty() ? shown_ : whole_; }
  void PaintLinesInSight(HDC dc, const RECT& area);

  ui::KRXIndex& index_;
  String shown_;
  String whole_;                     // where not all of it is shown
  std::vector<std::size_t> starts_;  // of the lines that are shown, and the end behind the last one
  IndexScroll scroll_;
  ScrollBar bar_;
};

// Shows the stock icon of a picture box.
class PicturePeer final : public PanePeer {
 public:
  PicturePeer(Toolkit& toolkit, FormPeer& form, ui::PictureBox& box);

 protected:
  void Paint(HDC dc, const RECT& area) override;
  void UpdateContent(ui::Aspect) override { Invalidate(); }
  DWORD MirrorStyle() const override { return 0; }  // an icon has no direction

 private:
  ui::PictureBox& box_;
};

}  // namespace krx::win32
