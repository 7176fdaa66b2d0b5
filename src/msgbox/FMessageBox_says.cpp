// What the box says besides its message: the seconds on its default button, and what is copied.

#include "msgbox/FMessageBox.h"

namespace krx::msgbox {

namespace {

constexpr StringView kLine = u"---------------------------\r\n";

}  // namespace

void FMessageBox::BeginSeconds(ui::KRXKey& key) {
  counting_ = &key;
  counted_caption_ = key.Caption();
  ShowSeconds(ToString(seconds_left_));
}

void FMessageBox::ShowSeconds(StringView seconds) {
  counting_->Caption = counted_caption_ + u" (" + String(seconds) + u")";
}

void FMessageBox::CountDown() {
  if (--seconds_left_ > 0) {
    if (counting_) ShowSeconds(ToString(seconds_left_));
    return;
  }
  tmrAutoActivation.Enabled = false;
  Unload();
}

String FMessageBox::CopiedText() const {
  String text(kLine);
  text += ReplaceAll(idxCaption.WholeText(), u"\n", u"\r\n") + u"\r\n";
  text += kLine;
  text += ReplaceAll(idxMessage.WholeText(), u"\n", u"\r\n") + u"\r\n";
  text += kLine;
  for (const ui::KRXKey* const key : Row())
    if (key->Visible()) text += key->DisplayedText() + u"   ";
  text += u"\r\n";
  return text += kLine;
}

}  // namespace krx::msgbox
