#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "msgbox/FMessageBox.h"
#include "service/KRXDialog.h"
#include "service/MessageBoxStyle.h"
#include "support/Errors.h"
#include "support/Fakes.h"
#include "support/Print.h"

namespace krx::test {

// The parts of a message box's style by their names.
using service::kAbortRetryIgnore;
using service::kCritical;
using service::kDefaultButton2;
using service::kDefaultButton3;
using service::kDefaultButton4;
using service::kExclamation;
using service::kInformation;
using service::kOKCancel;
using service::kOKOnly;
using service::kQuestion;
using service::kRetryCancel;
using service::kYesNo;
using service::kYesNoCancel;

// An apartment with all dialogs over fakes, and its first dialog object. At the end of every test
// each form that was expected must have come and no service may be left.
class DialogTest : public ::testing::Test {
 protected:
  ~DialogTest() override {
    EXPECT_THAT(platform.Complaints(), ::testing::IsEmpty());
    EXPECT_EQ(runtime.LiveTextServices, 0);
    EXPECT_EQ(runtime.LiveFontServices, 0);
    EXPECT_EQ(runtime.Users.Live, 0);
  }

  CallLog log;
  FakePlatform platform{log};
  FakeRuntime runtime{log};
  service::Apartment apartment{platform, runtime};
  std::shared_ptr<service::KRXDialog> dialog = service::KRXDialog::Create(apartment);
};

// A message box to be opened; what a test does not name stays at these values.
struct BoxCall {
  String Text = u"Hello";
  std::int32_t Style = 0;
  String Title = u"title";
  String HelpFile = {};
  String Button1 = {};
  String Button2 = {};
  String Button3 = {};
  std::int32_t AutoActivation = 0;
};

// Opens message boxes as a client does, or only sets one up.
class MessageBoxTest : public DialogTest {
 protected:
  using Operator = headless::Operator;
  using Script = headless::HeadlessPlatform::Script;

  // Opens the box without expecting it to be shown.
  std::int32_t Open(const BoxCall& call) {
    return dialog->KRMsgBoxEx(call.Text, call.Style, call.Title, call.HelpFile, 0,
                              {call.Button1, call.Button2, call.Button3, call.AutoActivation});
  }
  // Opens the box, lets the operator answer it and returns its result.
  std::int32_t Show(const BoxCall& call, Script script) {
    platform.Expect(u"FMessageBox", std::move(script));
    return Open(call);
  }
  // The result of closing the box by its close button.
  std::int32_t ResultWhenClosed(const BoxCall& call) {
    return Show(call, [](Operator& op) { op.Click(u"keyClose"); });
  }
  // The form with all set-up operations done, not shown.
  std::unique_ptr<msgbox::FMessageBox> SetUpBox(const BoxCall& call) {
    auto form = std::make_unique<msgbox::FMessageBox>(apartment);
    form->DisplayIcon(call.Style);
    form->SetFonts();
    form->SetTextsEx(call.Button1, call.Button2, call.Button3, call.AutoActivation);
    form->SetTexts(call.Text, call.Style, call.Title, call.HelpFile, 0);
    form->CalcPositions();
    return form;
  }
};

}  // namespace krx::test
