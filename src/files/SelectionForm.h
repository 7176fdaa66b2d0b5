#pragma once

#include <array>

#include "service/DialogForm.h"

namespace krx::files {

// What all selection dialogs share: OK and Cancel, and fields that stand below their headings.
class SelectionForm : public service::DialogForm {
 public:
  ui::KRXKey keyOK{*this, u"keyOK"};
  ui::KRXKey keyCancel{*this, u"keyCancel"};

  String StartDirectory;  // as it was passed

 protected:
  SelectionForm(service::Apartment& apartment, String name);

  // Text keys of a file dialog that opens (0) or saves (1); empty for any other number.
  struct KindTexts {
    StringView Title;
    StringView OK;
  };
  static KindTexts TextsOf(std::int32_t file_dialog);

  // Puts a heading below what ends at `above`, and the field below the heading. A height of 0 is
  // the field's natural one. Returns where the field ends.
  static Twips Stack(ui::Label& heading, ui::Control& field, const Rect& column, Twips above);
  // Puts the button row below what ends at `bottom` and sizes the form.
  void PlaceButtons(Twips width, Twips bottom);

  const std::array<ui::KRXKey*, 2> keys_{&keyOK, &keyCancel};
};

inline constexpr Twips kHeadingToField = 30;  // from a heading down to its field
inline constexpr Twips kAboveButtons = 120;

}  // namespace krx::files
