#include "ports/win32/StandardPeers.h"

#include <utility>

namespace krx::win32 {

namespace {

constexpr Twips kCaptionIndent = 135;  // of a frame's caption from its left edge

}  // namespace

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
  CreateChild(L"BUTTON", BS_GROUPBOX, 0, frame.Caption());
}

void FramePeer::UpdateContent(ui::Aspect aspect) {
  if (aspect == ui::Aspect::Text) SetText(frame_.Caption());
  Invalidate();
}

LRESULT FramePeer::Handle(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case WM_ERASEBKGND:
      return TRUE;
    case WM_PAINT: {
      const PaintScope paint(Window());
      RECT area;
      GetClientRect(Window(), &area);
      Paint(paint.Dc(), area);
      return 0;
    }
    default:
      return ControlPeer::Handle(message, w, l);
  }
}

// The caption stands in the upper edge, which is therefore half a line lower.
void FramePeer::Paint(HDC dc, RECT area) const {
  FillRect(dc, &area, BrushFor(dc, frame_.BackColor()));
  if (frame_.Caption().empty()) {
    DrawEdge(dc, &area, EDGE_ETCHED, BF_RECT);
    return;
  }
  const HGDIOBJ before = SelectObject(dc, font_->Get());
  const bool hide_marks = (SendMessageW(Window(), WM_QUERYUISTATE, 0, 0) & UISF_HIDEACCEL) != 0;
  const UINT format = DT_SINGLELINE | DT_TOP | (hide_marks ? DT_HIDEPREFIX : 0u);
  RECT text = area;
  DrawTextW(dc, Wide(frame_.Caption()), -1, &text, format | DT_CALCRECT);
  const int indent = form_.Scale().Pixels(kCaptionIndent);
  OffsetRect(&text, indent, 0);
  area.top += (text.bottom - text.top) / 2;
  DrawEdge(dc, &area, EDGE_ETCHED, BF_RECT);
  RECT gap = text;
  InflateRect(&gap, indent / 3, 0);
  FillRect(dc, &gap, BrushFor(dc, frame_.BackColor()));
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, ResolveColor(frame_.ForeColor()));
  DrawTextW(dc, Wide(frame_.Caption()), -1, &text, format);
  SelectObject(dc, before);
}

}  // namespace krx::win32
