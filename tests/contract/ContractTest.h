#pragma once

#include <gtest/gtest.h>

#include <string>

#include "Port.h"
#include "ui/Keyboard.h"
#include "ui/Timer.h"

namespace krx::test {

// A form with one control of every kind that takes input. Esc hides it.
class ContractForm : public ui::Form {
 public:
  explicit ContractForm(ui::Platform& platform, String name = u"FContract")
      : Form(platform, std::move(name)) {
    Width = 4500;
    Height = 3000;
    lblName.Caption = u"&Name";
    lblName.Place({180, 300, 900, 240});
    txtName.Place({1200, 300, 2400, 0});
    txtPassword.Place({1200, 900, 2400, 0});
    keyOne.Place({180, 2000, 1200, 375});
    keyOne.Caption = u"&One";
    keyTwo.Place({1500, 2000, 1200, 375});
    keyTwo.Caption = u"&Two";
    keyClose.Place({2820, 2000, 1200, 375});
    CancelKey = &keyClose;
    keyClose.Click = [this] {
      ++Cancels;
      Hide();
    };
  }

  ui::Label lblName{*this, u"lblName"};
  ui::TextBox txtName{*this, u"txtName"};
  ui::PasswordBox txtPassword{*this, u"txtPassword"};
  ui::KRXKey keyOne{*this, u"keyOne"};
  ui::KRXKey keyTwo{*this, u"keyTwo"};
  ui::KRXKey keyClose{*this, u"keyClose"};
  ui::Timer tmrTick{*this, u"tmrTick"};
  int Cancels = 0;
};

class ContractTest : public testing::Test {
 protected:
  void Show(const HandScript& script) { port->Show(form, script); }
  static void Leave(Hand& hand) { hand.Press(ui::kKeyEscape); }

  const std::unique_ptr<Port> port = MakePort();
  ui::Platform& platform = port->Platform();
  ContractForm form{platform};
  std::string log;
};

}  // namespace krx::test
