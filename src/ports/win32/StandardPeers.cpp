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
  switch (message) {
    case WM_ERASEBKGND:
      return TRUE;
    case WM_PAINT: {
      const PaintScope paint(Window());
      RECT area;
      GetClientRect(Window(), &area);
      FillRect(paint.Dc(), &area, BrushFor(paint.Dc(), frame_.BackColor()));
      DrawEdge(paint.Dc(), &area, EDGE_ETCHED, BF_RECT);
      return 0;
    }
    default:
      return ControlPeer::Handle(message, w, l);
  }
}

}  // namespace krx::win32
