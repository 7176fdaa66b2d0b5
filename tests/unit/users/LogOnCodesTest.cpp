#include <limits>

#include "users/UsersTest.h"

// The codes of a log-on attempt: message, focus afterwards, and what reaches the user management.
namespace krx::test {

using ::testing::ElementsAreArray;

class LogOnCodes : public LogOnTest {
 protected:
  // An attempt that ends with the code; returns where the focus is when the dialog comes again.
  String FocusAfter(std::int32_t code) {
    Users().LogOnCodes = {code};
    Expect(Confirm(u"anna", u"secret"));
    String focus;
    Expect([&](Operator& op) {
      focus = op.Focus();
      EXPECT_EQ(NameText(op), u"anna") << "the fields keep their text";
      EXPECT_EQ(Secret(op, u"txtPassword"), "secret");
      EXPECT_TRUE(Enabled(op, u"keyOK"));
      op.Click(u"keyCancel");
    });
    EXPECT_FALSE(LogOn());
    return focus;
  }
  static Calls Refused(const std::string& message) {
    return InDialog({"CreateUserSession", "UserSession1.LogOnUser(anna, secret)",
                     "Box " + message + "|48|KRXDialogs", "~UserSession1"});
  }
};

TEST_P(LogOnCodes, SuccessEndsTheDialogWithTrue) {
  Users().LogOnCodes = {2};
  Expect(Confirm(u"anna", u"secret"));
  EXPECT_TRUE(LogOn());
  EXPECT_THAT(Users().Calls(),
              ElementsAreArray(InDialog(
                  {"CreateUserSession", "UserSession1.LogOnUser(anna, secret)", "~UserSession1"})));
}

TEST_P(LogOnCodes, UnknownUserLeadsBackToTheName) {
  EXPECT_EQ(FocusAfter(0), Which().NameField);
  EXPECT_THAT(Users().Calls(), ElementsAreArray(Refused("msgUnknownUser")));
}

TEST_P(LogOnCodes, WrongPasswordLeadsToThePassword) {
  EXPECT_EQ(FocusAfter(1), u"txtPassword");
  EXPECT_THAT(Users().Calls(), ElementsAreArray(Refused("msgInvalidPassword")));
}

TEST_P(LogOnCodes, DeactivatedUserLeadsBackToTheName) {
  EXPECT_EQ(FocusAfter(3), Which().NameField);
  EXPECT_THAT(Users().Calls(), ElementsAreArray(Refused("msgUserDeactivated")));
}

TEST_P(LogOnCodes, TooManyFailedLogOnsLeadBackToTheName) {
  EXPECT_EQ(FocusAfter(5), Which().NameField);
  EXPECT_THAT(Users().Calls(), ElementsAreArray(Refused("msgTooManyFailedLogons")));
}

TEST_P(LogOnCodes, CodesOutsideTheTableAreSilent) {
  using Limits = std::numeric_limits<std::int32_t>;
  for (const std::int32_t code : {-1, -2, -4, -6, 7, 8, 11, 256 + 2, 65536 + 2, Limits::min(),
                                  Limits::min() + 2, Limits::max()}) {
    SCOPED_TRACE(code);
    Users().Restart();
    FocusAfter(code);
    EXPECT_THAT(Users().Calls(), ElementsAreArray(InDialog({"CreateUserSession",
                                                            "UserSession1.LogOnUser(anna, secret)",
                                                            "~UserSession1"})));
  }
}

// Nothing moves the focus then; the dialog comes as it came first, without a field to go to.
TEST_P(LogOnCodes, SilentRefusalForgetsWhereTheFocusWas) {
  EXPECT_EQ(FocusAfter(7), Which().NameField);
}

TEST_P(LogOnCodes, MessageIsTheTextOfTheKeyInTheUserGroup) {
  runtime.Texts[u"msgUnknownUser"] = u"Benutzer unbekannt";
  FocusAfter(0);
  EXPECT_THAT(log.EntriesOf("GetText msg"), ElementsAreArray({"GetText msgUnknownUser -103"}));
  EXPECT_THAT(log.EntriesOf("Box"), ElementsAreArray({"Box Benutzer unbekannt|48|KRXDialogs"}));
}

TEST_P(LogOnCodes, OneSessionServesAllAttemptsOfACall) {
  Users().LogOnCodes = {0, 1, -3, 3, 5, 2};
  const std::vector<String> names{u"x", u"anna", u"Berta", u"carl", u"carl", u"anna"};
  Calls expected{"CreateUserSession"};
  const Calls boxes{"msgUnknownUser",     "msgInvalidPassword",     "",
                    "msgUserDeactivated", "msgTooManyFailedLogons", ""};
  for (std::size_t i = 0; i < names.size(); ++i) {
    Expect(Confirm(names[i], u"p" + ToString(static_cast<std::int32_t>(i))));
    expected.push_back("UserSession1.LogOnUser(" + ToUtf8(names[i]) + ", p" + std::to_string(i) +
                       ")");
    if (!boxes[i].empty()) expected.push_back("Box " + boxes[i] + "|48|KRXDialogs");
  }
  expected.push_back("~UserSession1");
  EXPECT_TRUE(LogOn());
  EXPECT_THAT(Users().Calls(), ElementsAreArray(InDialog(expected)));
}

TEST_P(LogOnCodes, EmptyPasswordIsTheUserManagementsMatter) {
  Expect(Confirm(u"anna", u""));
  EXPECT_TRUE(LogOn());
  EXPECT_THAT(log.EntriesOf("UserSession1."), ElementsAreArray({"UserSession1.LogOnUser(anna, )"}));
}

TEST_P(LogOnCodes, LeavingMakesNoSession) {
  for (const StringView key : {u"keyCancel", u"keyClose"}) {
    Users().Restart();
    Expect([key](Operator& op) {
      Name(op, u"anna");
      Fill(op, u"txtPassword", u"secret");
      op.Click(key);
    });
    EXPECT_FALSE(LogOn());
    EXPECT_THAT(Users().Calls(), ElementsAreArray(InDialog({})));
  }
}

TEST_P(LogOnCodes, EscapeLeaves) {
  Expect([](Operator& op) { op.Press(ui::kKeyEscape); });
  EXPECT_FALSE(LogOn());
}

TEST_P(LogOnCodes, LeavingAfterARefusalIsFalse) {
  Users().LogOnCodes = {1};
  Expect(Confirm(u"anna", u"x"));
  Expect([](Operator& op) { op.Click(u"keyClose"); });
  EXPECT_FALSE(LogOn());
}

TEST_P(LogOnCodes, LoggingOffUsesASessionOfItsOwnAndIsFalse) {
  for (const std::int32_t code : {0, 1, 2, -1}) {
    Users().Restart();
    Users().LogOffCode = code;
    Expect([](Operator& op) { op.Click(Which().LogOffKey); });
    EXPECT_FALSE(LogOn());
    EXPECT_THAT(Users().Calls(),
                ElementsAreArray(
                    InDialog({"CreateUserSession", "UserSession1.LogOffUser()", "~UserSession1"})));
  }
}

TEST_P(LogOnCodes, LoggingOffAfterAnAttemptLeavesItsSessionAlone) {
  Users().LogOnCodes = {1};
  Expect(Confirm(u"anna", u"x"));
  Expect([](Operator& op) { op.Click(Which().LogOffKey); });
  EXPECT_FALSE(LogOn());
  EXPECT_THAT(
      Users().Calls(),
      ElementsAreArray(InDialog({"CreateUserSession", "UserSession1.LogOnUser(anna, x)",
                                 "Box msgInvalidPassword|48|KRXDialogs", "CreateUserSession",
                                 "UserSession2.LogOffUser()", "~UserSession2", "~UserSession1"})));
}

TEST_P(LogOnCodes, NothingIsKeptBetweenCalls) {
  Users().LogOnCodes = {1};
  Expect(Confirm(u"anna", u"secret"));
  ExpectGivingUp();
  EXPECT_FALSE(LogOn());
  Expect([](Operator& op) {
    EXPECT_EQ(NameText(op), u"");
    EXPECT_EQ(Secret(op, u"txtPassword"), "");
    EXPECT_FALSE(Enabled(op, u"keyOK"));
    EXPECT_EQ(op.Focus(), Which().NameField);
    op.Click(u"keyCancel");
  });
  EXPECT_FALSE(LogOn());
}

TEST_P(LogOnCodes, RealMessageBoxHasTheDefaultTitleAndOneButton) {
  Users().LogOnCodes = {0};
  Expect(Confirm(u"zeno", u"x"));
  platform.Expect(u"FMessageBox", [](Operator& op) {
    EXPECT_EQ(op.Get(u"idxCaption").DisplayedText(), u"KRXDialogs");
    EXPECT_EQ(op.Get(u"idxMessage").DisplayedText(), u"msgUnknownUser");
    EXPECT_EQ(op.Get<ui::PictureBox>(u"picIcon").Picture()->Icon.Id, ui::kExclamationIcon);
    EXPECT_FALSE(op.Get(u"keyButton(1)").Visible());
    EXPECT_FALSE(op.Get(u"keyHelp").Visible());
    op.Press(ui::kKeyEnter);
  });
  ExpectGivingUp();
  EXPECT_FALSE(LogOn());
}

BOTH_LOG_ON_DIALOGS(LogOnCodes);

}  // namespace krx::test
