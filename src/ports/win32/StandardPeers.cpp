#include "ports/win32/StandardPeers.h"

#include <utility>

namespace krx::win32 {

LabelPeer::LabelPeer(Toolkit& toolkit, FormPeer& form, ui::Label& label)
    : ControlPeer(toolkit, form, label), label_(label) {
  const DWORD style = SS_LEFT | (label.UseMnemonic ? 0 : SS_NOPREFIX);
  CreateChild(L"STATIC", style, 0, label.Caption());
}

void LabelPeer::UpdateContent(ui::Aspect aspect) {
  if (aspect == ui::Aspect::Text) SetText(label_.Caption());
}

FramePeer::FramePeer(Toolkit& toolkit, FormPeer& form, ui::Frame& frame)
    : ControlPeer(toolkit, form, frame), frame_(frame) {
  CreateChild(L"BUTTON", BS_GROUPBOX, 0, String());
}

LRESULT FramePeer::Handle(UINT message, WPARAM w, LPARAM l) {
  if (message != WM_ERASEBKGND) return ControlPeer::Handle(message, w, l);
  const auto dc = reinterpret_cast<HDC>(w);
  RECT area;
  GetClientRect(Window(), &area);
  FillRect(dc, &area, BrushFor(dc, frame_.BackColor()));
  return TRUE;
}

}  // namespace krx::win32
