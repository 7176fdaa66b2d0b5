#include "service/MKRXDialog.h"

#include <utility>

#include "base/Error.h"
#include "ui/Form.h"

namespace krx::service {

namespace {

const ui::Label& Measured(const ui::Control& control) {
  auto* const label = dynamic_cast<ui::Label*>(control.Parent().Find(u"lblSize"));
  if (!label) throw ObjectNotSet();
  // Sized once, when font and caption are both in place.
  label->AutoSize = false;
  label->Font = control.Font();
  label->Caption = control.DisplayedText();
  label->AutoSize = true;
  return *label;
}

}  // namespace

String EncodeLineBreaks(String text) {
  text = ReplaceAll(std::move(text), u"\r\n", u"\\n");
  text = ReplaceAll(std::move(text), u"\n", u"\\n");
  return ReplaceAll(std::move(text), u"\r", u"\\n");
}

Twips MeasureTextHeight(const ui::Control& control) {
  return Measured(control).Height();
}

Twips MeasureTextWidth(const ui::Control& control) {
  return Measured(control).Width();
}

void SelectAllText(ui::EditBox& box) {
  box.SelStart = 0;
  box.SelLength = static_cast<int>(box.TextLength());
}

}  // namespace krx::service
