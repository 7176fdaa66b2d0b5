#pragma once

#include <cstdint>
#include <functional>

#include "base/PanelSettings.h"
#include "ui/Color.h"

namespace krx::ui {

// The colours of a theme by what they are for. Texts have at least 4.5:1 on what they stand on, and
// what is to be seen without text (outlines, marks, the focus) 3:1.
struct Palette {
  Color Face, Text;        // of the form and what stands on it
  Color Field, FieldText;  // of what is filled in or chosen from
  Color Border, Line;      // outlines of controls; quiet lines between parts and rows
  Color Focus;             // around the control with the keyboard
  Color Key, KeyHot, KeyText;
  Color KeyPressed, PressedText;
  Color Accent, AccentHot, AccentPressed, AccentText;  // the key that Enter presses
  Color DisabledKey, DisabledText;
  Color Caption, CaptionHot, CaptionPressed, CaptionText;
  Color Selection, SelectionText;                 // the selected row of the list in use
  Color Quiet, QuietText;                         // that of any other list
  Color Hot;                                      // the row under the pointer
  Color Header;                                   // titles of columns; the text is the form's
  Color Ink, Folder, FolderInside, Metal, Paper;  // of pictures
};

// The palette of a theme; that of high contrast consists of the system's colours, which `system`
// gives by their index.
Palette PaletteOf(Theme theme, const std::function<Color(std::uint32_t index)>& system);

// The colour of the palette that a control's colour stands for. A red-green-blue value stays as it
// is, and so does a system colour that no theme replaces.
Color Themed(const Palette& palette, Color color);

// How far two red-green-blue values stand apart, from 1:1 to 21:1, as relative luminance tells.
double Contrast(Color one, Color other);

// So much of one colour, 0 to 1, in the other.
Color Mixed(Color part, Color rest, double share);

}  // namespace krx::ui
