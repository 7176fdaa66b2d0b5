#include "ports/win32/StandardPeers.h"

namespace krx::win32 {

namespace {

constexpr Twips kCaptionIndent = 135;  // of a frame's caption from its left edge

}  // namespace

LabelPeer::LabelPeer(Toolkit& toolkit, FormPeer& form, ui::Label& label)
    : DrawnPeer(toolkit, form, label), label_(label) {}

void LabelPeer::Paint(HDC dc, const RECT& area) const {
  const Theme& theme = form_.Theme();
  Flood(dc, area, theme(label_.BackColor()));
  SetTextColor(dc, label_.Enabled() ? theme(label_.ForeColor()) : theme->DisabledText);
  const UINT marks = label_.UseMnemonic ? form_.CaptionFormat() : DT_NOPREFIX;
  RECT text = area;
  DrawTextW(dc, Wide(label_.Caption()), -1, &text, DT_WORDBREAK | DT_EXPANDTABS | marks);
}

FramePeer::FramePeer(Toolkit& toolkit, FormPeer& form, ui::Frame& frame)
    : DrawnPeer(toolkit, form, frame), frame_(frame) {}

// The caption stands in the upper edge, which is therefore half a line lower.
void FramePeer::Paint(HDC dc, const RECT& area) const {
  const Theme& theme = form_.Theme();
  const COLORREF back = theme(frame_.BackColor());
  const UINT format = DT_SINGLELINE | DT_TOP | form_.CaptionFormat();
  const int indent = form_.Scale().Pixels(kCaptionIndent);
  RECT edge = area;
  RECT text = area;
  const bool captioned = !frame_.Caption().empty();
  if (captioned) {
    DrawTextW(dc, Wide(frame_.Caption()), -1, &text, format | DT_CALCRECT);
    OffsetRect(&text, indent, 0);
    edge.top += (text.bottom - text.top) / 2;
    Flood(dc, {area.left, area.top, area.right, edge.top}, back);
  }
  toolkit_.Drawing.Box(dc, edge,
                       {back, theme->Line, back, form_.Scale().Thickness(1),
                        form_.Scale().Thickness(kCornerRadius)});
  if (!captioned) return;
  RECT gap = text;
  InflateRect(&gap, indent / 3, 0);
  Flood(dc, gap, back);
  SetTextColor(dc, theme(frame_.ForeColor()));
  DrawTextW(dc, Wide(frame_.Caption()), -1, &text, format);
}

}  // namespace krx::win32
