#pragma once

#include "ports/win32/PanePeers.h"
#include "ui/BoardKey.h"

namespace krx::win32 {

// A key of a keyboard on the screen. No button of the system: one of those would take the focus
// from the field for which it types.
class BoardKeyPeer final : public PanePeer {
 public:
  BoardKeyPeer(Toolkit& toolkit, FormPeer& form, ui::BoardKey& key);

 protected:
  LRESULT Handle(UINT message, WPARAM w, LPARAM l) override;
  void UpdateContent(ui::Aspect aspect) override;
  void Paint(HDC dc, const RECT& area) override;
  bool Silent() const override { return key_.Discreet; }

 private:
  LRESULT Touched(UINT message, LPARAM l);
  void ShowPressed(bool pressed);

  ui::BoardKey& key_;
  bool pressed_ = false;
};

}  // namespace krx::win32
