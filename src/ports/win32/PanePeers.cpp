#include "ports/win32/PanePeers.h"

#include <algorithm>

namespace krx::win32 {

namespace {

constexpr Twips kIconTwips = 480;  // the stock icons are 32 pixels at 96 dpi

HICON StockIcon(ui::StockIcon icon) {
  return LoadIconA(nullptr, MAKEINTRESOURCEA(icon.Id));
}

}  // namespace

LRESULT PanePeer::Handle(UINT message, WPARAM w, LPARAM l) {
  if (const auto touched = HandleTouch(message, w, l)) return *touched;
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT: {
      const PaintScope paint(Window());
      RECT area;
      GetClientRect(Window(), &area);
      Paint(paint.Dc(), area);
      return 0;
    }
    case WM_LBUTTONDOWN:
      SetCapture(Window());
      break;
    case WM_LBUTTONUP:
      if (GetCapture() == Window()) ReleaseCapture();
      break;
    case WM_MOUSEMOVE:
      // A button that was pressed elsewhere is none of this control's.
      if (GetCapture() != Window()) w &= ~static_cast<WPARAM>(MK_LBUTTON);
      break;
    default:
      break;
  }
  return ControlPeer::Handle(message, w, l);
}

IndexPeer::IndexPeer(Toolkit& toolkit, FormPeer& form, ui::KRXIndex& index)
    : PanePeer(toolkit, form, index),
      index_(index),
      scroll_(index),
      bar_(toolkit, form, ScrollBar::Wide::AsUsual,
           {[this] { return scroll_.Extent(); }, [this](int top) { scroll_.ScrollTo(top); }}) {
  TakeText();
  CreateChild(kPaneClass, 0, 0, TextOfWindow());
  ShowScroll();
}

void IndexPeer::ShowScroll() {
  scroll_.Show(Window());
  bar_.Follow(Window());
}

void IndexPeer::TakeText() {
  shown_ = index_.DisplayedText();
  whole_ = index_.Room().Width > 0 ? index_.WholeText() : String();
  starts_.assign(1, 0);
  for (std::size_t at = shown_.find(u'\n'); at != String::npos; at = shown_.find(u'\n', at + 1))
    starts_.push_back(at + 1);
  starts_.push_back(shown_.size() + 1);
}

void IndexPeer::Update(ui::Aspect aspect) {
  PanePeer::Update(aspect);
  if (aspect == ui::Aspect::Bounds && Window()) ShowScroll();
}

void IndexPeer::UpdateContent(ui::Aspect aspect) {
  if (aspect != ui::Aspect::Scroll) {
    TakeText();
    SetText(TextOfWindow());
  }
  ShowScroll();
  Invalidate();
}

LRESULT IndexPeer::Handle(UINT message, WPARAM w, LPARAM l) {
  if (!index_.Scrolls() && message != WM_NCCALCSIZE) return PanePeer::Handle(message, w, l);
  if (const auto heard = bar_.Hear(Window(), message, w, l)) return *heard;
  if (message == WM_NCPAINT) {
    bar_.Paint(Window());
    return 0;
  }
  if (message == WM_NCCALCSIZE) DropSystemBars(Window(), WS_VSCROLL);
  scroll_.Hear(Window(), form_.Scale(), message, w, l);
  const LRESULT result = PanePeer::Handle(message, w, l);
  // Both forms of the message start with what is to be the client area.
  if (message == WM_NCCALCSIZE) bar_.TakeRoom(Window(), *reinterpret_cast<RECT*>(l));
  return result;
}

void IndexPeer::Paint(HDC dc, const RECT& area) {
  const Theme& theme = form_.Theme();
  SetBkColor(dc, theme(index_.BackColor()));
  SetTextColor(dc, index_.Enabled() ? theme(index_.ForeColor()) : theme->DisabledText);
  if (index_.Scrolls()) {
    PaintLinesInSight(dc, area);
  } else {
    toolkit_.Texts.Draw(dc, font_, shown_, area, form_.Scale().Pixels(index_.Indent()));
  }
}

// Only these, however long the text is.
void IndexPeer::PaintLinesInSight(HDC dc, const RECT& area) {
  const std::size_t lines = starts_.size() - 1;
  const auto first = std::min(static_cast<std::size_t>(index_.TopLine()), lines - 1);
  const auto last = std::min(first + static_cast<std::size_t>(index_.LinesInSight()), lines);
  const StringView part =
      StringView(shown_).substr(starts_[first], starts_[last] - 1 - starts_[first]);
  RECT rows = area;
  rows.bottom =
      rows.top + toolkit_.Texts.Measure(font_, StringView()).cy * static_cast<LONG>(last - first);
  toolkit_.Texts.Draw(dc, font_, part, rows, form_.Scale().Pixels(index_.Indent()));
  const RECT rest{area.left, rows.bottom, area.right, area.bottom};
  toolkit_.Texts.Draw(dc, font_, StringView(), rest, 0);
  if (GetFocus() == Window() && form_.ShowsFocus())
    FrameRect(dc, &area, BrushFor(dc, form_.Theme()->Focus));
}

PicturePeer::PicturePeer(Toolkit& toolkit, FormPeer& form, ui::PictureBox& box)
    : PanePeer(toolkit, form, box), box_(box) {
  CreateChild(kPaneClass, 0, 0, String());
}

void PicturePeer::Paint(HDC dc, const RECT& area) {
  Flood(dc, area, form_.Theme()(box_.BackColor()));
  const auto& picture = box_.Picture();
  const HICON icon = picture ? StockIcon(picture->Icon) : nullptr;
  if (!icon) return;
  const Scale scale = form_.Scale();
  const int x = scale.Pixels(picture->X);
  const int y = scale.Pixels(picture->Y);
  const int size = scale.Pixels(kIconTwips);
  // DrawIcon knows one size only, whatever the monitor's resolution is.
  if (size == GetSystemMetrics(SM_CXICON)) {
    DrawIcon(dc, x, y, icon);
  } else {
    DrawIconEx(dc, x, y, icon, size, size, 0, nullptr, DI_NORMAL);
  }
}

}  // namespace krx::win32
