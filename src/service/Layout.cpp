#include "service/Layout.h"

#include <algorithm>
#include <cmath>

#include "service/MKRXDialog.h"
#include "service/Skip.h"

namespace krx::service {

Twips CaptionHeight(Twips text_height, Twips minimum, Twips padding) {
  return MaxValue({text_height + padding, kSmallestCaption, minimum});
}

Twips ButtonHeight(Twips text_height, Twips minimum) {
  return MaxValue({text_height + kButtonPadding, minimum});
}

Twips ButtonWidth(Twips text_width, Twips minimum_height) {
  return MaxValue({text_width + kButtonPadding, kButtonWidthPerMinimum * minimum_height});
}

Twips PlaceRow(std::span<ui::KRXKey* const> keys, Twips left, Twips top, Twips gap) {
  for (ui::KRXKey* const key : keys) {
    if (!key->Visible()) continue;
    key->Left = left;
    key->Top = top;
    left += key->Width() + gap;
  }
  return left;
}

Twips RowWidth(std::span<ui::KRXKey* const> keys, Twips gap) {
  Twips width = -gap;
  for (const ui::KRXKey* const key : keys)
    if (key->Visible()) width += key->Width() + gap;
  return width;
}

ui::CrossPicture CrossFor(Twips key_height, Twips twips_per_pixel) {
  constexpr float kStep = 8;
  constexpr float kMostSteps = 8;
  const float steps = std::round((key_height - kCrossMargin) / twips_per_pixel / kStep);
  return {static_cast<int>(std::clamp(steps, 1.0f, kMostSteps) * kStep)};
}

void LayOutRows(ui::Frame& frame, std::span<const InputRow> rows, Twips margin) {
  const Twips left = frame.Left() + margin;
  Twips top = frame.Top() + margin;
  Twips bottom = top;
  Twips widest = 0;
  for (const InputRow& row : rows) {
    ui::Label& label = row.Label;
    ui::Control& field = row.Field;
    label.AutoSize = false;
    label.Height = kUnmeasuredLine;
    Skip([&] { label.AutoSize = true; });
    label.Left = left;
    label.Top = top;
    field.Height.Adopt(kUnmeasuredField);
    Twips height = field.Height();
    Skip([&] {
      field.Height = 0;
      height = field.Height();
    });
    Skip([&] {
      field.Place(
          {left, top + label.Height() + kLabelToField, kFieldWidthInHeights * height, height});
    });
    bottom = field.Top() + field.Height();
    widest = std::max(widest, field.Width());
    top = bottom + kRowGap;
  }
  frame.Width = widest + 2 * margin;
  frame.Height = bottom + margin - frame.Top();
}

}  // namespace krx::service
