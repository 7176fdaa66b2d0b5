#pragma once

#include "ports/win32/ControlPeer.h"
#include "ports/win32/Hovering.h"
#include "ui/KRXKey.h"

namespace krx::win32 {

// A push button of the system, drawn by us.
class KeyPeer final : public ControlPeer {
 public:
  KeyPeer(Toolkit& toolkit, FormPeer& form, ui::KRXKey& key);

 protected:
  LRESULT Handle(UINT message, WPARAM w, LPARAM l) override;
  void UpdateContent(ui::Aspect aspect) override;
  void FocusChanged(bool) override { Invalidate(); }
  void Notified(WORD code) override;
  void Draw(const DRAWITEMSTRUCT& item) override;

 private:
  struct Look {
    COLORREF Fill;
    COLORREF Border;
    COLORREF Text;
    COLORREF Ring;  // around the one with the keyboard
  };
  bool HasCross() const { return key_.Picture().Pixels > 0; }
  Look LookOf(bool pressed, bool disabled, ui::Color ground) const;
  void DrawCaption(HDC dc, RECT area, COLORREF color) const;

  ui::KRXKey& key_;
  Hovering hovering_;
};

}  // namespace krx::win32
