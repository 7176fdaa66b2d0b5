#include "files/SelectionForm.h"

#include <utility>

#include "service/FileRequest.h"

namespace krx::files {

namespace {

constexpr Twips kAboveHeading = 60;

}  // namespace

SelectionForm::SelectionForm(service::Apartment& apartment, String name)
    : DialogForm(apartment, std::move(name), host::kDialogTexts) {
  DefaultKey = &keyOK;
}

SelectionForm::KindTexts SelectionForm::TextsOf(std::int32_t file_dialog) {
  switch (file_dialog) {
    case service::kFileOpen:
      return {u"TitleOpen", u"Open"};
    case service::kFileSave:
      return {u"TitleSaveAs", u"Save"};
    default:
      return {};
  }
}

Twips SelectionForm::Stack(ui::Label& heading, ui::Control& field, const Rect& column,
                           Twips above) {
  heading.Place({column.Left, above + kAboveHeading, column.Width, heading.Height()});
  const Twips top = heading.Top() + heading.Height() + kHeadingToField;
  field.Place({column.Left, top, column.Width, column.Height});
  return top + field.Height();
}

void SelectionForm::PlaceButtons(Twips width, Twips bottom) {
  const Twips right = width - service::kMargin;
  service::PlaceRow(keys_, right - service::RowWidth(keys_), bottom + kAboveButtons);
  Width = width;
  Height = keyOK.Top() + keyOK.Height() + service::kMargin;
  PlaceCaption();
}

}  // namespace krx::files
