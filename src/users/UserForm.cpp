#include "users/UserForm.h"

#include <algorithm>

#include "service/KRXDialog.h"
#include "service/MKRXDialog.h"
#include "service/Skip.h"

namespace krx::users {

namespace {

using service::MeasureTextHeight;
using service::MeasureTextWidth;
using service::Skip;

// Lengths of these forms in twips.
constexpr Twips kMargin = 120;    // of the frame in the form and of the fields in the frame
constexpr Twips kButtonGap = 60;  // between two buttons

}  // namespace

UserForm::UserForm(service::Apartment& apartment, String name)
    : DialogForm(apartment, std::move(name), host::kUserTexts) {}

void UserForm::LoadCaption(StringView key, StringView suffix) {
  Skip([&] { idxCaption.FontClass = Shared().FontClassCaption; });
  Skip([&] { SetCaption(Text(key) + String(suffix)); });
}

void UserForm::LoadKeys(std::span<ui::KRXKey* const> keys, std::span<const StringView> text_keys) {
  for (std::size_t i = 0; i < keys.size(); ++i) {
    Skip([&] { keys[i]->FontClass = Shared().FontClassButton; });
    Skip([&] { keys[i]->Caption = Text(text_keys[i]); });
  }
}

void UserForm::LoadLabel(ui::Label& label, StringView text_key) {
  Skip([&] { label.Font = ClassFont(Shared().FontClassText); });
  Skip([&] { label.Caption = Text(text_key); });
}

void UserForm::LoadInput(ui::Control& field) {
  Skip([&] { field.Font = ClassFont(Shared().FontClassInput); });
}

void UserForm::LayOut(std::span<const service::InputRow> rows, std::span<ui::KRXKey* const> keys,
                      Twips caption_padding) {
  Skip([&] { SizeCaption(caption_padding); });
  fra.Left = kMargin;
  fra.Top = idxCaption.Height() + kMargin;
  Skip([&] { service::LayOutRows(fra, rows, kMargin); });

  Twips row_width = -kButtonGap;
  for (ui::KRXKey* const key : keys) {
    Skip([&] {
      key->Height = service::ButtonHeight(MeasureTextHeight(*key), Shared().ButtonMinHeight);
    });
    Skip([&] {
      key->Width = service::ButtonWidth(MeasureTextWidth(*key), Shared().ButtonMinHeight);
    });
    row_width += key->Width() + kButtonGap;
  }
  const Twips right = fra.Left() + std::max(fra.Width(), row_width);
  const Twips top = fra.Top() + fra.Height() + service::kFrameToButtons;
  Twips x = right - row_width;
  Twips bottom = top;
  for (ui::KRXKey* const key : keys) {
    key->Left = x;
    key->Top = top;
    x += key->Width() + kButtonGap;
    bottom = std::max(bottom, top + key->Height());
  }
  Width = right + kMargin;
  Height = bottom + kMargin;
  PlaceCaption();
}

void UserForm::ShowMessage(StringView key, std::int32_t style, const String& title) {
  DialogService().KRMsgBox(Text(key), style, title, String(), 0);
}

void UserForm::MakeDisplayField(ui::TextBox& field) {
  field.Locked = true;
  field.TabStop = false;
  field.BackColor = ui::kButtonFace;
  field.ForeColor = ui::kButtonText;
}

}  // namespace krx::users
