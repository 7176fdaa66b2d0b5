#include "ports/win32/RowImages.h"

#include <algorithm>
#include <array>

namespace krx::win32 {

namespace {

constexpr int kPicture = 16;  // pixels at 96 dpi, in both directions
constexpr COLORREF kTransparent = RGB(255, 0, 255);
constexpr COLORREF kPaper = RGB(255, 255, 255);
constexpr COLORREF kFolder = RGB(255, 205, 96);
constexpr COLORREF kFolderInside = RGB(255, 233, 178);
constexpr COLORREF kMetal = RGB(190, 196, 204);
constexpr COLORREF kOutline = RGB(96, 96, 96);

// A picture is drawn on a grid of 16 units, whatever its size in pixels is.
class Canvas {
 public:
  Canvas(HDC dc, POINT origin, int size) : dc_(dc), origin_(origin), size_(size) {}

  template <std::size_t N>
  void Shape(COLORREF fill, const std::array<POINT, N>& outline) const {
    std::array<POINT, N> points;
    std::transform(outline.begin(), outline.end(), points.begin(), [&](POINT unit) {
      return POINT{origin_.x + MulDiv(unit.x, size_, kPicture),
                   origin_.y + MulDiv(unit.y, size_, kPicture)};
    });
    SetDCBrushColor(dc_, fill);
    SetDCPenColor(dc_, kOutline);
    Polygon(dc_, points.data(), static_cast<int>(N));
  }

 private:
  HDC dc_;
  POINT origin_;
  int size_;
};

void DrawFolder(const Canvas& canvas, bool open) {
  canvas.Shape(kFolder, std::array<POINT, 6>{{{1, 3}, {6, 3}, {7, 5}, {14, 5}, {14, 13}, {1, 13}}});
  if (open) canvas.Shape(kFolderInside, std::array<POINT, 4>{{{4, 7}, {15, 7}, {13, 13}, {1, 13}}});
}

void DrawPicture(const Canvas& canvas, ui::RowList::Image image) {
  switch (image) {
    case ui::RowList::Image::Drive:
      canvas.Shape(kMetal, std::array<POINT, 4>{{{1, 6}, {14, 6}, {14, 12}, {1, 12}}});
      canvas.Shape(kOutline, std::array<POINT, 4>{{{11, 9}, {12, 9}, {12, 10}, {11, 10}}});
      return;
    case ui::RowList::Image::Folder:
      return DrawFolder(canvas, false);
    case ui::RowList::Image::OpenFolder:
      return DrawFolder(canvas, true);
    case ui::RowList::Image::File:
      canvas.Shape(kPaper, std::array<POINT, 5>{{{3, 1}, {10, 1}, {13, 4}, {13, 14}, {3, 14}}});
      return;
    case ui::RowList::Image::None:
      return;
  }
}

constexpr std::array kPictures{ui::RowList::Image::Drive, ui::RowList::Image::Folder,
                               ui::RowList::Image::OpenFolder, ui::RowList::Image::File};

void AddPictures(HIMAGELIST list, int size, int height) {
  const HDC screen = GetDC(nullptr);
  const HDC dc = CreateCompatibleDC(screen);
  for (const ui::RowList::Image image : kPictures) {
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, size, height);
    const HGDIOBJ before = SelectObject(dc, bitmap);
    SelectObject(dc, GetStockObject(DC_BRUSH));
    SelectObject(dc, GetStockObject(DC_PEN));
    const RECT all{0, 0, size, height};
    SetDCBrushColor(dc, kTransparent);
    FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    DrawPicture(Canvas(dc, {0, (height - size) / 2}, size), image);
    SelectObject(dc, before);
    ImageList_AddMasked(list, bitmap, kTransparent);
    DeleteObject(bitmap);
  }
  DeleteDC(dc);
  ReleaseDC(nullptr, screen);
}

}  // namespace

RowImages::RowImages(Scale scale, int row_height, bool visible)
    : scale_(scale), row_height_(row_height), visible_(visible) {
  const int size = visible ? scale.Thickness(kPicture) : 1;
  const int height = std::max(row_height, size);
  list_.reset(ImageList_Create(size, height, ILC_COLOR24 | ILC_MASK,
                               static_cast<int>(kPictures.size()), 0));
  if (list_ && visible) AddPictures(list_.get(), size, height);
}

int RowImages::Index(ui::RowList::Image image) {
  const auto found = std::find(kPictures.begin(), kPictures.end(), image);
  return found == kPictures.end() ? I_IMAGENONE : static_cast<int>(found - kPictures.begin());
}

}  // namespace krx::win32
