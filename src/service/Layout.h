#pragma once

#include <span>

#include "base/Geometry.h"
#include "ui/Controls.h"

namespace krx::service {

// The layout rules that all dialogs share; all lengths in twips.

inline constexpr Twips kCaptionPadding = 30;           // added to the caption text's height
inline constexpr Twips kSmallestCaption = 285;         // no caption line is lower
inline constexpr Twips kCloseKeyInset = 60;            // the close key is this much lower
inline constexpr Twips kCloseKeyMargin = 30;           // between the close key and the form's edge
inline constexpr Twips kFormEdges = 30;                // around the form, both sides together
inline constexpr Twips kCrossMargin = 105;             // of the cross inside the close key
inline constexpr Twips kMargin = 120;                  // between the form's edges and its controls
inline constexpr Twips kButtonGap = 60;                // between two buttons
inline constexpr Twips kButtonPadding = 180;           // added to a button text's height and width
inline constexpr Twips kLabelToField = 45;             // from a label down to its field
inline constexpr Twips kRowGap = 105;                  // from a field down to the next label
inline constexpr Twips kFieldWidthInHeights = 9;       // a field's width in its own heights
inline constexpr Twips kFrameToButtons = 15;           // from the frame down to the button row
inline constexpr Twips kButtonWidthPerMinimum = 2.5f;  // narrowest button in ButtonMinHeights
inline constexpr Twips kUnmeasuredLine = 195;          // a label whose text cannot be measured
inline constexpr Twips kUnmeasuredField = 285;         // a field whose font cannot be measured

// Height of the caption line: its text and the padding, 285, or the configured minimum.
Twips CaptionHeight(Twips text_height, Twips minimum, Twips padding = kCaptionPadding);

// Height of a button: its text and 180, or the configured minimum.
Twips ButtonHeight(Twips text_height, Twips minimum);

// Width of a button of the user dialogs: its text and 180, or 2.5 times the minimum height.
Twips ButtonWidth(Twips text_width, Twips minimum_height);

// The picture of a close key of this height: steps of 8 pixels, the nearest one that leaves 105
// twips, from 8 to 64 pixels.
ui::CrossPicture CrossFor(Twips key_height, Twips twips_per_pixel);

// Puts the buttons that are shown side by side, beginning at `left`; returns where the next one
// would begin.
Twips PlaceRow(std::span<ui::KRXKey* const> keys, Twips left, Twips top, Twips gap = kButtonGap);
// Width of such a row, without a gap behind it.
Twips RowWidth(std::span<ui::KRXKey* const> keys, Twips gap = kButtonGap);

// A label above the field that it names.
struct InputRow {
  ui::Label& Label;
  ui::Control& Field;
};

// Stacks the rows inside the frame, whose upper left corner is set already, and sizes the frame
// around them. `margin` is the fields' distance from the frame. Fields get their natural height. A
// label or field that cannot be measured is passed over and keeps a height of its own.
void LayOutRows(ui::Frame& frame, std::span<const InputRow> rows, Twips margin);

}  // namespace krx::service
