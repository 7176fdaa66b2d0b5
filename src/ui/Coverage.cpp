#include "ui/Coverage.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace krx::ui {

// An edge along the right side of a line changes what lies behind its end.
Coverage::Coverage(int size)
    : size_(size), changes_(static_cast<std::size_t>(size) * static_cast<std::size_t>(size + 2)) {}

void Coverage::Add(std::span<const Dot> polygon) {
  for (std::size_t i = 0; i < polygon.size(); ++i)
    Edge(polygon[i], polygon[(i + 1) % polygon.size()]);
}

void Coverage::Edge(Dot from, Dot to) {
  if (from.Y == to.Y) return;
  const double direction = from.Y < to.Y ? -1 : 1;
  if (from.Y > to.Y) std::swap(from, to);
  const double slope = (to.X - from.X) / (to.Y - from.Y);
  const double limit = size_;
  const auto x_at = [&](double y) { return std::clamp(from.X + (y - from.Y) * slope, 0.0, limit); };
  const double end = std::min(to.Y, limit);
  for (double y = std::max(from.Y, 0.0); y < end;) {
    const double next = std::min(std::floor(y) + 1, end);
    EdgeOfLine(static_cast<int>(y), (next - y) * direction, x_at(y), x_at(next));
    y = next;
  }
}

// Of what lies to the right of the edge, every pixel that the edge passes gets its part.
void Coverage::EdgeOfLine(int line, double height, double from, double to) {
  if (from > to) std::swap(from, to);
  double* const changes =
      &changes_[static_cast<std::size_t>(line) * static_cast<std::size_t>(size_ + 2)];
  double told = 0;
  const int first = static_cast<int>(from);
  for (int pixel = first; told < 1; ++pixel) {
    const double left = std::max<double>(pixel, from);
    const double right = std::min<double>(pixel + 1, to);
    const double width = to - from;
    // The part of the height that the edge has come down by the end of this pixel, and what of the
    // pixel lies to the right of the edge.
    const bool last = pixel + 1 >= to;
    const double before = width > 0 ? (left - from) / width : 0;
    const double after = last || width <= 0 ? 1 : (right - from) / width;
    const double middle = width > 0 ? (left + right) / 2 : from;
    const double share = before + (after - before) * (pixel + 1 - middle);
    changes[pixel] += height * (share - told);
    told = share;
    if (!last) continue;
    changes[pixel + 1] += height * (1 - told);
    return;
  }
}

std::vector<double> Coverage::Shares() const {
  const auto size = static_cast<std::size_t>(size_);
  std::vector<double> shares;
  shares.reserve(size * size);
  for (std::size_t line = 0; line < size; ++line) {
    double share = 0;
    for (std::size_t i = 0; i < size; ++i) {
      share += changes_[line * (size + 2) + i];
      shares.push_back(std::clamp(std::abs(share), 0.0, 1.0));
    }
  }
  return shares;
}

}  // namespace krx::ui
