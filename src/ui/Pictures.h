#pragma once

#include <vector>

#include "ui/Palette.h"

namespace krx::ui {

// The pictures of the controls. They are drawn by outlines, so every size has smooth edges.
enum class Picture { Cross, Down, Above, Inside, Back, Up, Folder, OpenFolder, Drive, File };

// Inks of a picture.
struct Inks {
  Color Line;
  Color Fill;   // of folders
  Color Light;  // of what lies inside them
  Color Metal;
  Color Paper;
};
// Those of a palette, with lines in a colour of their own.
Inks InksOf(const Palette& palette, Color line);

// A square picture of `size` pixels on a ground of one colour, line by line.
std::vector<Color> Draw(Picture picture, int size, const Inks& inks, Color ground);

// A quarter of a rounded corner, the upper left one: outside it the ground, then the border in its
// thickness, then the fill.
struct Corner {
  int Radius;
  int Thickness;
  Color Ground;
  Color Border;
  Color Fill;
};
// The square that holds all four corners, upper left first; twice the radius in both directions.
std::vector<Color> Draw(const Corner& corner);

}  // namespace krx::ui
