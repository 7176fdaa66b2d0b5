#include "users/UsersTest.h"

// The notice that operators acknowledge before they log on.
namespace krx::test {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class LogOnNotice : public LogOnTest {
 protected:
  LogOnNotice() {
    runtime.LogOnNotice = u"Only for authorised staff.\nWhat you do is recorded.";
    runtime.Texts[u"capLogon"] = u"Log on";
  }
  void ExpectNotice(Script script) { platform.Expect(u"FMessageBox", std::move(script)); }
  void Acknowledge() {
    ExpectNotice([](Operator& op) { op.Click(u"keyButton(0)"); });
  }
};

TEST_P(LogOnNotice, StandsInABoxOfItsOwnBeforeTheDialog) {
  bool seen = false;
  ExpectNotice([&](Operator& op) {
    seen = true;
    EXPECT_EQ(op.Get<ui::KRXIndex>(u"idxMessage").WholeText(), runtime.LogOnNotice);
    EXPECT_EQ(op.Get<ui::KRXIndex>(u"idxCaption").Text(), u"Log on");
    EXPECT_EQ(op.Get<ui::PictureBox>(u"picIcon").Picture()->Icon.Id, ui::kInformationIcon);
    EXPECT_EQ(op.Get<ui::KRXKey>(u"keyButton(0)").Caption(), u"OK");
    EXPECT_EQ(op.Get<ui::KRXKey>(u"keyButton(1)").Caption(), u"Cancel");
    EXPECT_FALSE(op.Get(u"keyButton(2)").Visible());
    EXPECT_FALSE(op.Get(u"keyHelp").Visible());
    EXPECT_EQ(op.Focus(), u"keyButton(0)");
    EXPECT_THAT(Users().Calls(), IsEmpty()) << "the dialog is not even loaded";
    op.Press(ui::kKeyEnter);
  });
  Users().LogOnCodes = {2};
  Expect([&](Operator& op) {
    EXPECT_TRUE(seen);
    Confirm(u"anna", u"secret")(op);
  });
  EXPECT_TRUE(LogOn());
}

TEST_P(LogOnNotice, WhoDoesNotAcknowledgeItHasGivenUp) {
  const Script ways[] = {
      [](Operator& op) { op.Click(u"keyButton(1)"); },
      [](Operator& op) { op.Click(u"keyClose"); },
      [](Operator& op) { op.Press(ui::kKeyEscape); },
  };
  for (const Script& leave : ways) {
    ExpectNotice(leave);
    EXPECT_FALSE(LogOn());
  }
  EXPECT_THAT(Users().Calls(), IsEmpty());
}

TEST_P(LogOnNotice, IsAskedForAndShownOnceInEachCall) {
  Users().LogOnCodes = {1, 2};
  Acknowledge();
  Expect(Confirm(u"anna", u"wrong"));
  Expect(Confirm(u"anna", u"secret"));
  EXPECT_TRUE(LogOn());
  EXPECT_EQ(runtime.LogOnNoticeAsked, 1);
  Acknowledge();
  ExpectGivingUp();
  EXPECT_FALSE(LogOn());
  EXPECT_EQ(runtime.LogOnNoticeAsked, 2);
}

TEST_P(LogOnNotice, WithoutOneTheDialogComesAtOnce) {
  runtime.LogOnNotice.clear();
  platform.ShowingIsNoted = true;
  ExpectGivingUp();
  EXPECT_FALSE(LogOn());
  EXPECT_THAT(log.Entries(), Not(Contains(HasSubstr("Show FMessageBox"))));
}

TEST_P(LogOnNotice, OneThatCannotBeReadKeepsNobodyOut) {
  runtime.LogOnNoticeFails = true;
  ExpectGivingUp();
  EXPECT_FALSE(LogOn());
}

TEST_P(LogOnNotice, NeedsNoDialogServiceAndNoTitle) {
  apartment.Shared.DialogService = nullptr;
  runtime.Texts[u"capLogon"].clear();  // the box then bears the application's name
  ExpectNotice([](Operator& op) {
    EXPECT_EQ(op.Get<ui::KRXIndex>(u"idxCaption").Text(), u"KRXDialogs");
    op.Click(u"keyButton(0)");
  });
  ExpectGivingUp();
  EXPECT_FALSE(LogOn());
}

TEST_P(LogOnNotice, NoOtherDialogAsksForIt) {
  Users().Current = {u"anna", u"operators", true};
  platform.Expect(u"FChangePassword", [](Operator& op) { op.Click(u"keyCancel"); });
  dialog->KRChangePassword();
  platform.Expect(u"FWhoAmI", [](Operator& op) { op.Click(u"keyOK"); });
  dialog->KRWhoAmI();
  EXPECT_EQ(runtime.LogOnNoticeAsked, 0);
}

BOTH_LOG_ON_DIALOGS(LogOnNotice);

}  // namespace krx::test
