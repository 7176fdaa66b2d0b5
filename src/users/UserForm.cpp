#include "users/UserForm.h"

#include <algorithm>

#include "service/KRXDialog.h"
#include "service/MKRXDialog.h"
#include "service/Skip.h"

namespace krx::users {

namespace {

using service::MaxValue;
using service::MeasureTextHeight;
using service::MeasureTextWidth;
using service::Skip;

// Lengths of these forms in twips.
constexpr Twips kMargin = 120;    // of the frame in the form and of the fields in the frame
constexpr Twips kButtonGap = 60;  // between two buttons
constexpr Size kUnmeasuredKey{1215, 375};  // a button whose text cannot be measured

}  // namespace

UserForm::UserForm(service::Apartment& apartment, String name, String frame)
    : DialogForm(apartment, std::move(name), host::kUserTexts), fra(*this, std::move(frame)) {
  idxCaption.Height = service::kSmallestCaption;  // should its text not be measurable
}

void UserForm::OrderRows(Rows rows) {
  int position = 0;
  for (const auto& [label, field] : rows) {
    label.TabIndex = position++;
    field.TabIndex = position++;
  }
}

void UserForm::LoadCaption(StringView key, StringView suffix) {
  Skip([&] { SetCaption(Text(key) + String(suffix)); });
}

void UserForm::LoadText(ui::KRXKey& key, StringView text_key) {
  Skip([&] { key.Caption = Text(text_key); });
}

void UserForm::LoadText(ui::Label& label, StringView text_key) {
  Skip([&] { label.Caption = Text(text_key); });
}

void UserForm::LoadFonts(Keys keys, Rows rows) {
  Skip([&] { idxCaption.FontClass = Shared().FontClassCaption; });
  for (ui::KRXKey* const key : keys)
    Skip([&] { key->FontClass = Shared().FontClassButton; });
  for (const service::InputRow& row : rows)
    Skip([&] { row.Label.Font = ClassFont(Shared().FontClassText); });
  for (const service::InputRow& row : rows)
    Skip([&] { row.Field.Font = ClassFont(Shared().FontClassInput); });
}

void UserForm::LayOut(Rows rows, Keys keys, Twips caption_padding, WideRow wide_row) {
  if (!Skip([&] { SizeCaption(caption_padding); })) SizeCloseKey();
  const Twips row_width = SizeKeys(keys);
  fra.Left = kMargin;
  fra.Top = idxCaption.Height() + kMargin;
  service::LayOutRows(fra, rows, kMargin);
  const Twips overhang = std::max(row_width - fra.Width(), 0.0f);
  if (overhang > 0) {
    fra.Left = kMargin + (wide_row == WideRow::EndsWithFrame ? overhang : overhang / 2);
    service::LayOutRows(fra, rows, kMargin);
  }

  const Twips right = kMargin + std::max(fra.Width(), row_width);
  const Twips top = fra.Top() + fra.Height() + service::kFrameToButtons;
  PlaceKeys(keys, right - row_width, top);
  Twips height = 0;
  for (const ui::KRXKey* const key : keys)
    height = std::max(height, key->Height());
  Twips title = 0;
  Skip([&] { title = WidthOfTitle(); });
  Width = MaxValue({right + kMargin, WidestLabelEnd(rows) + kMargin, title});
  Height = top + height + kMargin;
  PlaceCaption();
}

void UserForm::SizeKey(ui::KRXKey& key) {
  key.Place({0, 0, kUnmeasuredKey.Width, kUnmeasuredKey.Height});
  const Twips minimum = Shared().ButtonMinHeight;
  Skip([&] { key.Height = service::ButtonHeight(MeasureTextHeight(key), minimum); });
  Skip([&] { key.Width = service::ButtonWidth(MeasureTextWidth(key), minimum); });
}

// Returns the width of the button row.
Twips UserForm::SizeKeys(Keys keys) {
  Twips row_width = -kButtonGap;
  for (ui::KRXKey* const key : keys) {
    SizeKey(*key);
    row_width += key->Width() + kButtonGap;
  }
  return row_width;
}

void UserForm::PlaceKeys(Keys keys, Twips left, Twips top) {
  for (ui::KRXKey* const key : keys) {
    key->Left = left;
    key->Top = top;
    left += key->Width() + kButtonGap;
  }
}

Twips UserForm::WidestLabelEnd(Rows rows) const {
  Twips end = 0;
  for (const service::InputRow& row : rows)
    end = std::max(end, row.Label.Left() + row.Label.Width());
  return end;
}

void UserForm::ShowMessage(StringView key, std::int32_t style, const String& title) {
  const String text = Text(key);
  DialogService().KRMsgBox(text, style, title, String(), 0);
}

void UserForm::Refuse(StringView key, ui::Control& focus) {
  ShowMessage(key, service::kExclamation, String());
  FocusControl = &focus;
}

void UserForm::HideOnAnswer(ui::KRXKey& ok, ui::KRXKey& cancel, bool& ok_pressed) {
  ok.Click = [this, &ok_pressed] {
    ok_pressed = true;
    Hide();
  };
  cancel.Click = [this] { Hide(); };
  keyClose.Click = [this] { Hide(); };
}

void UserForm::ConfirmOnEnter(ui::Control& field, ui::KRXKey& ok, ui::Control& otherwise) {
  OnEnter(field, [&ok, &otherwise] {
    if (!ok.Enabled()) return otherwise.SetFocus();
    ok.SetFocus();
    ok.Click();
  });
}

void UserForm::SelectAllOnFocus(ui::EditBox& box) {
  box.GotFocus = [&box] { service::SelectAllText(box); };
}

void UserForm::MakeDisplayField(ui::TextBox& field) {
  field.Locked = true;
  field.TabStop = false;
  field.BackColor = ui::kButtonFace;
  field.ForeColor = ui::kButtonText;
}

}  // namespace krx::users
