#include "ui/Pictures.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "ui/Coverage.h"

namespace krx::ui {

namespace {

constexpr double kGrid = 16;  // units of a picture in both directions

// Draws shapes that are given in units of the grid, one above the other.
class Canvas {
 public:
  Canvas(int size, Color ground)
      : size_(size),
        pixels_(static_cast<std::size_t>(size) * static_cast<std::size_t>(size), ground) {}

  // Upright and level edges fall on edges of pixels, so they stay crisp.
  double Snapped(double unit) const { return std::round(unit * size_ / kGrid); }
  double Loose(double unit) const { return unit * size_ / kGrid; }
  // Of a thin line.
  double Thin() const { return std::max(1.0, std::round(size_ / kGrid)); }
  double Size() const { return size_; }

  void Shape(Color color, std::span<const Dot> corners) {
    Coverage coverage(size_);
    coverage.Add(corners);
    const std::vector<double> shares = coverage.Shares();
    for (std::size_t i = 0; i < shares.size(); ++i)
      if (shares[i] > 0) pixels_[i] = Mixed(color, pixels_[i], shares[i]);
  }
  void Block(Color color, double left, double top, double right, double bottom) {
    Shape(color, std::array<Dot, 4>{{{left, top}, {right, top}, {right, bottom}, {left, bottom}}});
  }
  std::vector<Color> Take() { return std::move(pixels_); }

 private:
  int size_;
  std::vector<Color> pixels_;
};

// Two bars about a sixth as thick as the picture is large.
void DrawCross(Canvas& canvas, Color color) {
  const double size = canvas.Size();
  const double reach = std::max(1.4, size * 0.12);  // of a bar's end along the picture's edges
  const double middle = size / 2;
  canvas.Shape(color, std::array<Dot, 12>{{{reach, 0},
                                           {middle, middle - reach},
                                           {size - reach, 0},
                                           {size, reach},
                                           {middle + reach, middle},
                                           {size, size - reach},
                                           {size - reach, size},
                                           {middle, middle + reach},
                                           {reach, size},
                                           {0, size - reach},
                                           {middle - reach, middle},
                                           {0, reach}}});
}

// A bent line whose point shows down.
std::array<Dot, 6> Bend(const Canvas& canvas) {
  const double thick = std::max(1.4, canvas.Loose(2.2));
  const double left = canvas.Loose(2.5);
  const double right = canvas.Size() - left;
  const double middle = canvas.Size() / 2;
  const double top = middle - (middle - left + thick) / 2;
  const double point = top + middle - left;
  return {{{left, top},
           {middle, point},
           {right, top},
           {right, top + thick},
           {middle, point + thick},
           {left, top + thick}}};
}

void DrawDown(Canvas& canvas, Color color) {
  canvas.Shape(color, Bend(canvas));
}

void DrawAbove(Canvas& canvas, Color color) {
  auto bend = Bend(canvas);
  for (Dot& dot : bend)
    dot.Y = canvas.Size() - dot.Y;
  std::reverse(bend.begin(), bend.end());
  canvas.Shape(color, bend);
}

void DrawInside(Canvas& canvas, Color color) {
  auto bend = Bend(canvas);
  for (Dot& dot : bend)
    std::swap(dot.X, dot.Y);
  std::reverse(bend.begin(), bend.end());
  canvas.Shape(color, bend);
}

void DrawBack(Canvas& canvas, Color color) {
  auto bend = Bend(canvas);
  for (Dot& dot : bend)
    dot = {canvas.Size() - dot.Y, dot.X};
  canvas.Shape(color, bend);
}

// An arrow with a shaft.
void DrawUp(Canvas& canvas, Color color) {
  auto bend = Bend(canvas);
  const double top = canvas.Loose(2);
  const double lift = canvas.Size() - std::max(bend[1].Y, bend[4].Y) - top;
  for (Dot& dot : bend)
    dot.Y = canvas.Size() - dot.Y - lift;
  std::reverse(bend.begin(), bend.end());
  canvas.Shape(color, bend);
  const double half = std::max(1.4, canvas.Loose(2.2)) / 2;
  const double middle = canvas.Size() / 2;
  canvas.Block(color, middle - half, top + half, middle + half, canvas.Loose(14));
}

void DrawFolder(Canvas& canvas, const Inks& inks, bool open) {
  const double line = canvas.Thin();
  const double left = canvas.Snapped(1);
  const double right = canvas.Snapped(15);
  const double top = canvas.Snapped(3);
  const double lid = canvas.Snapped(5);
  const double bottom = canvas.Snapped(13);
  const double tab = canvas.Loose(6);
  const double slope = lid - top;
  canvas.Shape(inks.Line, std::array<Dot, 6>{{{left, top},
                                              {tab, top},
                                              {tab + slope, lid},
                                              {right, lid},
                                              {right, bottom},
                                              {left, bottom}}});
  canvas.Shape(inks.Fill, std::array<Dot, 6>{{{left + line, top + line},
                                              {tab, top + line},
                                              {tab + slope, lid + line},
                                              {right - line, lid + line},
                                              {right - line, bottom - line},
                                              {left + line, bottom - line}}});
  if (!open) return;
  const double lean = canvas.Loose(2.5);
  const double flap = canvas.Snapped(8);
  canvas.Shape(inks.Line,
               std::array<Dot, 4>{
                   {{left + lean, flap}, {canvas.Size(), flap}, {right, bottom}, {left, bottom}}});
  canvas.Shape(inks.Light, std::array<Dot, 4>{{{left + lean + line, flap + line},
                                               {canvas.Size() - 1.5 * line, flap + line},
                                               {right - line, bottom - line},
                                               {left + 1.5 * line, bottom - line}}});
}

void DrawDrive(Canvas& canvas, const Inks& inks) {
  const double line = canvas.Thin();
  const double left = canvas.Snapped(1);
  const double right = canvas.Snapped(15);
  const double top = canvas.Snapped(5);
  const double bottom = canvas.Snapped(12);
  canvas.Block(inks.Line, left, top, right, bottom);
  canvas.Block(inks.Metal, left + line, top + line, right - line, bottom - line);
  const double lamp = canvas.Snapped(12);
  canvas.Block(inks.Line, lamp - line, bottom - 3 * line, lamp + line, bottom - 2 * line);
}

void DrawFile(Canvas& canvas, const Inks& inks) {
  const double line = canvas.Thin();
  const double left = canvas.Snapped(3);
  const double right = canvas.Snapped(13);
  const double top = canvas.Snapped(1);
  const double bottom = canvas.Snapped(15);
  const double fold = canvas.Snapped(4);
  canvas.Shape(inks.Line, std::array<Dot, 5>{{{left, top},
                                              {right - fold, top},
                                              {right, top + fold},
                                              {right, bottom},
                                              {left, bottom}}});
  canvas.Shape(inks.Paper, std::array<Dot, 5>{{{left + line, top + line},
                                               {right - fold, top + line},
                                               {right - line, top + fold},
                                               {right - line, bottom - line},
                                               {left + line, bottom - line}}});
  canvas.Shape(inks.Line, std::array<Dot, 3>{{{right - fold - line, top},
                                              {right, top + fold + line},
                                              {right - fold - line, top + fold + line}}});
}

}  // namespace

Inks InksOf(const Palette& palette, Color line) {
  return {line, palette.Folder, palette.FolderInside, palette.Metal, palette.Paper};
}

std::vector<Color> Draw(Picture picture, int size, const Inks& inks, Color ground) {
  Canvas canvas(size, ground);
  switch (picture) {
    case Picture::Cross:
      DrawCross(canvas, inks.Line);
      break;
    case Picture::Down:
      DrawDown(canvas, inks.Line);
      break;
    case Picture::Above:
      DrawAbove(canvas, inks.Line);
      break;
    case Picture::Inside:
      DrawInside(canvas, inks.Line);
      break;
    case Picture::Back:
      DrawBack(canvas, inks.Line);
      break;
    case Picture::Up:
      DrawUp(canvas, inks.Line);
      break;
    case Picture::Folder:
    case Picture::OpenFolder:
      DrawFolder(canvas, inks, picture == Picture::OpenFolder);
      break;
    case Picture::Drive:
      DrawDrive(canvas, inks);
      break;
    case Picture::File:
      DrawFile(canvas, inks);
      break;
  }
  return canvas.Take();
}

// The distance of a pixel's middle from the centre says how much of it lies inside a circle.
std::vector<Color> Draw(const Corner& corner) {
  const int size = 2 * corner.Radius;
  std::vector<Color> pixels;
  pixels.reserve(static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      const double distance = std::hypot(x + 0.5 - corner.Radius, y + 0.5 - corner.Radius);
      const auto inside = [&](double radius) {
        return std::clamp(radius - distance + 0.5, 0.0, 1.0);
      };
      const Color edge = Mixed(corner.Border, corner.Ground, inside(corner.Radius));
      pixels.push_back(Mixed(corner.Fill, edge, inside(corner.Radius - corner.Thickness)));
    }
  }
  return pixels;
}

}  // namespace krx::ui
