#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace krx::ui {

// A point in pixels; the upper left corner of the first pixel is the origin.
struct Dot {
  double X = 0;
  double Y = 0;
};

// How much of every pixel of a square lies inside polygons, exactly: what is drawn by it has smooth
// edges at any size. The corners of one polygon are given clockwise.
class Coverage {
 public:
  explicit Coverage(int size);

  void Add(std::span<const Dot> polygon);
  // From 0 to 1, line by line.
  std::vector<double> Shares() const;

 private:
  void Edge(Dot from, Dot to);
  void EdgeOfLine(int line, double height, double from, double to);

  int size_;
  std::vector<double> changes_;  // of the share, from the pixel to its left
};

}  // namespace krx::ui
