#include "ports/win32/Panes.h"

namespace krx::win32 {

namespace {

constexpr Twips kIconTwips = 480;  // the stock icons are 32 pixels at 96 dpi

HICON StockIcon(ui::StockIcon icon) {
  return LoadIconA(nullptr, MAKEINTRESOURCEA(icon.Id));
}

}  // namespace

LRESULT PanePeer::Handle(UINT message, WPARAM w, LPARAM l) {
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
    default:
      break;
    case WM_MOUSEMOVE:
      // A button that was pressed elsewhere is none of this control's.
      if (GetCapture() != Window()) w &= ~static_cast<WPARAM>(MK_LBUTTON);
      break;
  }
  return ControlPeer::Handle(message, w, l);
}

IndexPeer::IndexPeer(Toolkit& toolkit, FormPeer& form, ui::KRXIndex& index)
    : PanePeer(toolkit, form, index), index_(index), shown_(index.DisplayedText()) {
  CreateChild(kPaneClass, 0, 0, shown_);
}

void IndexPeer::UpdateContent(ui::Aspect) {
  shown_ = index_.DisplayedText();
  SetText(shown_);
  Invalidate();
}

void IndexPeer::Paint(HDC dc, const RECT& area) {
  SetBkColor(dc, ResolveColor(index_.BackColor()));
  SetTextColor(dc,
               index_.Enabled() ? ResolveColor(index_.ForeColor()) : GetSysColor(COLOR_GRAYTEXT));
  toolkit_.Texts.Draw(dc, font_, shown_, area, form_.Scale().Pixels(index_.Indent()));
}

PicturePeer::PicturePeer(Toolkit& toolkit, FormPeer& form, ui::PictureBox& box)
    : PanePeer(toolkit, form, box), box_(box) {
  CreateChild(kPaneClass, 0, 0, String());
}

void PicturePeer::Paint(HDC dc, const RECT& area) {
  const HBRUSH background = BrushFor(dc, box_.BackColor());
  FillRect(dc, &area, background);
  const auto& picture = box_.Picture();
  const HICON icon = picture ? StockIcon(picture->Icon) : nullptr;
  if (!icon) return;
  const Scale scale = form_.Scale();
  const int x = scale.Pixels(picture->X);
  const int y = scale.Pixels(picture->Y);
  const int size = scale.Pixels(kIconTwips);
  if (size == GetSystemMetrics(SM_CXICON)) {
    DrawIcon(dc, x, y, icon);
  } else {
    DrawIconEx(dc, x, y, icon, size, size, 0, nullptr, DI_NORMAL);
  }
}

}  // namespace krx::win32
