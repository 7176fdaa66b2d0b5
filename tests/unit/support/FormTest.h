#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ports/headless/Operator.h"
#include "support/Errors.h"
#include "support/Print.h"
#include "ui/Controls.h"
#include "ui/Keyboard.h"
#include "ui/Timer.h"

namespace krx::test {

// A form with a label, a text box, three buttons and a timer, for tests of the control model.
struct SampleForm : ui::Form {
  explicit SampleForm(ui::Platform& platform, String name = u"Sample")
      : Form(platform, std::move(name)) {}

  ui::Label lblName{*this, u"lblName"};
  ui::TextBox txtName{*this, u"txtName"};
  ui::KRXKey keyOne{*this, u"keyOne"};
  ui::KRXKey keyTwo{*this, u"keyTwo"};
  ui::KRXKey keyThree{*this, u"keyThree"};
  ui::Timer tmrSample{*this, u"tmrSample"};
};

class FormTest : public ::testing::Test {
 protected:
  using Operator = headless::Operator;
  using Script = headless::HeadlessPlatform::Script;

  ~FormTest() override { EXPECT_THAT(platform.Complaints(), ::testing::IsEmpty()); }

  // Shows a form and lets the operator run; a form still open is hidden then.
  void Show(ui::Form& shown, Script script) {
    platform.Expect(shown.Name(), [&shown, script](Operator& op) {
      script(op);
      shown.Hide();
    });
    shown.ShowModal();
  }

  headless::HeadlessPlatform platform;
  SampleForm form{platform};
};

}  // namespace krx::test
