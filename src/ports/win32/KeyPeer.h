#pragma once

#include "ports/win32/ControlPeer.h"
#include "ui/KRXKey.h"

namespace krx::win32 {

// A push button of the system; one with a cross is drawn by us.
class KeyPeer final : public ControlPeer {
 public:
  KeyPeer(Toolkit& toolkit, FormPeer& form, ui::KRXKey& key);

 protected:
  LRESULT Handle(UINT message, WPARAM w, LPARAM l) override;
  void UpdateContent(ui::Aspect aspect) override;
  void FocusChanged(bool focused) override;
  void Notified(WORD code) override;
  void Draw(const DRAWITEMSTRUCT& item) override;

 private:
  bool HasCross() const { return key_.Picture().Pixels > 0; }
  DWORD Style(bool focused) const;
  void DrawCross(HDC dc, const RECT& area, COLORREF color) const;

  ui::KRXKey& key_;
};

}  // namespace krx::win32
