#pragma once

#include "TestForm.h"

namespace krx::test {

// A form with every control that takes input, their labels and a frame behind them, as a log-on
// looks. Esc closes it.
class ControlsForm : public FormWithCross {
 public:
  explicit ControlsForm(ui::Platform& platform) : FormWithCross(platform, u"FControls") {
    Width = 5400;
    Height = 3600;
    idxCaption.Place({0, 0, 5400, 300});
    idxCaption.Text = u"Controls";
    fra.Place({120, 420, 5160, 2400});
    Label(lblName, u"&Name", 600);
    cboName.Place({1800, 600, 3000, 480});
    Label(lblPassword, u"&Passwort", 1260);
    txtPassword.Place({1800, 1260, 3000, 375});
    Label(lblShown, u"&Anzeige", 1860);
    txtShown.Place({1800, 1860, 3000, 375});
    txtShown.Text = u"shown";
    txtShown.Locked = true;
    txtShown.TabStop = false;
    txtShown.BackColor = ui::kButtonFace;
    keyOK.Place({180, 3000, 1215, 375});
    keyOK.Caption = u"&OK";
    MakeCross(keyClose, {5130, 30, 240, 240});
    keyClose.Click = [this] {
      ++Cancels;
      Unload();
    };
  }

  void AddNames(int count) {
    for (int i = 0; i < count; ++i)
      cboName.AddItem(String(1, static_cast<char16_t>(u'a' + i % 26)) + u" user " + ToString(i),
                      ui::KRXComboBox::kAtEnd);
  }

  ui::KRXIndex idxCaption{*this, u"idxCaption"};
  ui::Frame fra{*this, u"fra"};
  ui::Label lblName{*this, u"lblName"};
  ui::KRXComboBox cboName{*this, u"cboName"};
  ui::Label lblPassword{*this, u"lblPassword"};
  ui::PasswordBox txtPassword{*this, u"txtPassword"};
  ui::Label lblShown{*this, u"lblShown"};
  ui::TextBox txtShown{*this, u"txtShown"};
  ui::KRXKey keyOK{*this, u"keyOK"};
  ui::KRXKey keyClose{*this, u"keyClose"};
  int Cancels = 0;

 private:
  static void Label(ui::Label& label, const char16_t* caption, Twips top) {
    label.AutoSize = true;
    label.Caption = caption;
    label.Left = 300;
    label.Top = top;
  }
};

}  // namespace krx::test
