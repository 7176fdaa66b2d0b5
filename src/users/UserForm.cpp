#include "users/UserForm.h"

#include <algorithm>
#include <vector>

#include "service/KRXDialog.h"
#include "service/MKRXDialog.h"
#include "service/MessageBoxStyle.h"
#include "service/Skip.h"

namespace krx::users {

namespace {

using service::kMargin;  // of the frame in the form and of the fields in the frame
using service::Skip;

}  // namespace

UserForm::UserForm(service::Apartment& apartment, String name, String frame)
    : DialogForm(apartment, std::move(name), host::kUserTexts), fra(*this, std::move(frame)) {}

void UserForm::OrderRows() {
  std::vector<ui::Control*> controls;
  for (const service::InputRow& row : InputRows())
    controls.insert(controls.end(), {&row.Label, &row.Field});
  OrderTabs(controls);
}

void UserForm::NameLabels(std::span<ui::Label> labels, std::initializer_list<LabelText> texts) {
  auto label = labels.begin();
  for (const LabelText& text : texts) {
    label->Tag = text.Key;
    label->Caption = String(text.Caption);
    ++label;
  }
}

void UserForm::LoadCaption(StringView key, StringView suffix) {
  Skip([&] { SetCaption(Text(key) + String(suffix)); });
}

void UserForm::LoadLabels(std::span<ui::Label> labels) {
  for (ui::Label& label : labels)
    LoadText(label, label.Tag);
}

void UserForm::LoadButtons() {
  for (ui::KRXKey* const key : Buttons())
    LoadText(*key, key->Name());
}

void UserForm::LoadLook() {
  std::vector<ui::Control*> labels;
  std::vector<ui::Control*> fields;
  for (const service::InputRow& row : InputRows()) {
    labels.push_back(&row.Label);
    fields.push_back(&row.Field);
  }
  LoadFonts(Buttons(), labels, fields);
  CalcPositions();
}

void UserForm::CalcPositions() {
  const std::vector<service::InputRow> rows = InputRows();
  const std::vector<ui::KRXKey*> keys = Buttons();
  SizeCaptionAnyway(caption_padding_);
  for (ui::KRXKey* const key : keys)
    SizeKey(*key);
  const Twips row_width = service::RowWidth(keys);
  fra.Left = kMargin;
  fra.Top = idxCaption.Height() + kMargin;
  service::LayOutRows(fra, rows, kMargin);
  const Twips overhang = std::max(row_width - fra.Width(), 0.0f);
  if (overhang > 0) {
    fra.Left = kMargin + (wide_row_ == WideRow::EndsWithFrame ? overhang : overhang / 2);
    service::LayOutRows(fra, rows, kMargin);
  }

  Twips right = kMargin + std::max(fra.Width(), row_width);
  const Twips top = fra.Top() + fra.Height() + service::kFrameToButtons;
  service::PlaceRow(keys, right - row_width, top);
  Twips bottom = top;
  for (const ui::KRXKey* const key : keys)
    bottom = std::max(bottom, top + key->Height());
  for (const service::InputRow& row : rows)
    right = std::max(right, row.Label.Left() + row.Label.Width());
  Twips title = 0;
  Skip([&] { title = WidthOfTitle(); });
  Width = std::max(right + kMargin, title);
  Height = bottom + kMargin;
  PlaceCaption();
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
  DefaultKey = &ok;
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
