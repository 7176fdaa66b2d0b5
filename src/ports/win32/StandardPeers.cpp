#include "ports/win32/StandardPeers.h"

namespace krx::win32 {

namespace {

constexpr Twips kCaptionIndent = 135;  // of a frame's caption from its left edge

}  // namespace

LabelPeer::LabelPeer(Toolkit& toolkit, FormPeer& form, ui::Label& label)
    : DrawnPeer(toolkit, form, label), label_(label) {}

void LabelPeer::Paint(HDC dc, const RECT& area) const {
  FillRect(dc, &area, BrushFor(dc, label_.BackColor()));
  SetTextColor(dc,
               label_.Enabled() ? ResolveColor(label_.ForeColor()) : GetSysColor(COLOR_GRAYTEXT));
  const UINT marks = label_.UseMnemonic ? CaptionFormat() : DT_NOPREFIX;
  RECT text = area;
  DrawTextW(dc, Wide(label_.Caption()), -1, &text, DT_WORDBREAK | DT_EXPANDTABS | marks);
}

FramePeer::FramePeer(Toolkit& toolkit, FormPeer& form, ui::Frame& frame)
    : DrawnPeer(toolkit, form, frame), frame_(frame) {}

// The caption stands in the upper edge, which is therefore half a line lower.
void FramePeer::Paint(HDC dc, const RECT& area) const {
  FillRect(dc, &area, BrushFor(dc, frame_.BackColor()));
  RECT edge = area;
  if (frame_.Caption().empty()) {
    DrawEdge(dc, &edge, EDGE_ETCHED, BF_RECT);
    return;
  }
  const UINT format = DT_SINGLELINE | DT_TOP | CaptionFormat();
  RECT text = area;
  DrawTextW(dc, Wide(frame_.Caption()), -1, &text, format | DT_CALCRECT);
  const int indent = form_.Scale().Pixels(kCaptionIndent);
  OffsetRect(&text, indent, 0);
  edge.top += (text.bottom - text.top) / 2;
  DrawEdge(dc, &edge, EDGE_ETCHED, BF_RECT);
  RECT gap = text;
  InflateRect(&gap, indent / 3, 0);
  FillRect(dc, &gap, BrushFor(dc, frame_.BackColor()));
  SetTextColor(dc, ResolveColor(frame_.ForeColor()));
  DrawTextW(dc, Wide(frame_.Caption()), -1, &text, format);
}

}  // namespace krx::win32
