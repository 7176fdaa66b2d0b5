#include "users/UsersTest.h"

// Codes 4 and 6 send the operator to the change-password dialog, and then always back.
namespace krx::test {

using ::testing::ElementsAreArray;

class LogOnRenew : public LogOnTest {
 protected:
  LogOnRenew() { Users().Records[u"anna"] = {.FullName = u"Anna A.", .Comment = u"shift 1"}; }

  // One attempt with the code; afterwards the dialog is given up. `nested` are the calls expected
  // of the change-password dialog's administration object between its beginning and end.
  void Run(std::int32_t code, const Calls& nested) {
    Users().Restart();
    Users().LogOnCodes = {code};
    Expect(Confirm(u"anna", u"old"));
    Expect([](Operator& op) {
      EXPECT_EQ(op.Focus(), u"txtPassword");
      EXPECT_EQ(NameText(op), u"anna");
      EXPECT_EQ(Secret(op, u"txtPassword"), "old") << "not even the changed password is put in";
      op.Click(u"keyCancel");
    });
    EXPECT_FALSE(LogOn()) << "a changed password is no log-on";
    const std::string number = Nested();
    Calls calls{
        "CreateUserSession", "UserSession1.LogOnUser(anna, old)",
        code == 4 ? "Box msgPasswordExpired|48|KRXDialogs" : "Box msgRenewPassword|48|KRXDialogs",
        "CreateUserAdministration", "UserAdministration" + number + ".GetUserClass(anna)"};
    for (const std::string& call : nested) {
      const bool own = !call.starts_with("Box");
      calls.push_back(own ? "UserAdministration" + number + "." + call : call);
    }
    calls.push_back("~UserAdministration" + number);
    calls.push_back("~UserSession1");
    EXPECT_THAT(Users().Calls(), ElementsAreArray(InDialog(calls)));
  }
};

TEST_P(LogOnRenew, CancelledChangeLeadsBack) {
  for (const std::int32_t code : {4, 6}) {
    for (const StringView key : {u"keyCancel", u"keyClose"}) {
      SCOPED_TRACE(code);
      platform.Expect(Which().Form, Confirm(u"anna", u"old"));
      ExpectChange([key](Operator& op) { op.Click(key); });
      ExpectGivingUp();
      Users().Restart();
      Users().LogOnCodes = {code};
      EXPECT_FALSE(LogOn());
    }
  }
}

TEST_P(LogOnRenew, DialogsComeInTheOrderOfTheWay) {
  for (const std::int32_t code : {4, 6}) {
    SCOPED_TRACE(code);
    Users().Restart();
    Users().LogOnCodes = {code};
    platform.ShowingIsNoted = true;
    Expect(Confirm(u"anna", u"old"));
    ExpectChange([](Operator& op) {
      EXPECT_EQ(op.Get(u"txtName").DisplayedText(), u"anna");
      EXPECT_EQ(op.Get(u"txtFullName").DisplayedText(), u"Anna A.");
      EXPECT_EQ(op.Get(u"txtComment").DisplayedText(), u"shift 1");
      EXPECT_EQ(Secret(op, u"txtActPassword"), "") << "the typed password is not handed over";
      FillChange(op, u"old", u"new");
      op.Click(u"keyOK");
    });
    Expect([](Operator& op) {
      EXPECT_EQ(op.Focus(), u"txtPassword");
      EXPECT_EQ(NameText(op), u"anna");
      EXPECT_EQ(Secret(op, u"txtPassword"), "old");
      op.Type(u"new");  // replaces the selected old one
      op.Press(ui::kKeyEnter);
    });
    EXPECT_TRUE(LogOn());
    const std::string form = ToUtf8(Which().Form);
    EXPECT_THAT(log.EntriesOf("Show"),
                ElementsAreArray({"Show " + form, std::string("Show FMessageBox"),
                                  std::string("Show FChangePassword"), "Show " + form}));
    const std::string admin = "UserAdministration" + Nested();
    EXPECT_THAT(Users().Calls(),
                ElementsAreArray(InDialog(
                    {"CreateUserSession", "UserSession1.LogOnUser(anna, old)",
                     code == 4 ? "Box msgPasswordExpired|48|KRXDialogs"
                               : "Box msgRenewPassword|48|KRXDialogs",
                     "CreateUserAdministration", admin + ".GetUserClass(anna)",
                     admin + ".GetUserInfo(anna)", admin + ".ChangeUserPassword(anna, new, old)",
                     "~" + admin, "UserSession1.LogOnUser(anna, new)", "~UserSession1"})));
  }
}

TEST_P(LogOnRenew, RefusedAndGivenUpChangeLeadsBack) {
  for (const std::int32_t code : {4, 6}) {
    SCOPED_TRACE(code);
    Users().Restart();
    Users().LogOnCodes = {code};
    Users().ChangeCodes = {2};
    Expect(Confirm(u"anna", u"old"));
    ExpectChange([](Operator& op) {
      FillChange(op, u"bad", u"new");
      op.Click(u"keyOK");
    });
    ExpectChange([](Operator& op) {
      EXPECT_EQ(op.Focus(), u"txtActPassword");
      op.Click(u"keyCancel");
    });
    Expect([](Operator& op) {
      EXPECT_EQ(op.Focus(), u"txtPassword");
      op.Click(u"keyCancel");
    });
    EXPECT_FALSE(LogOn());
    const std::string admin = "UserAdministration" + Nested();
    EXPECT_THAT(Users().Calls(),
                ElementsAreArray(InDialog(
                    {"CreateUserSession", "UserSession1.LogOnUser(anna, old)",
                     code == 4 ? "Box msgPasswordExpired|48|KRXDialogs"
                               : "Box msgRenewPassword|48|KRXDialogs",
                     "CreateUserAdministration", admin + ".GetUserClass(anna)",
                     admin + ".GetUserInfo(anna)", admin + ".ChangeUserPassword(anna, new, bad)",
                     "Box msgInvalidPassword|48|KRXDialogs", "~" + admin, "~UserSession1"})));
  }
}

// The user was removed between the attempt and the change.
TEST_P(LogOnRenew, UserWhoIsGoneIsReportedAndLeadsBack) {
  Users().Records.clear();
  for (const std::int32_t code : {4, 6})
    Run(code, {"Box msgUnknownUser|64|capChangePassword"});
}

TEST_P(LogOnRenew, ExpiredAgainAndAgainOpensTheChangeEachTime) {
  Users().LogOnCodes = {4, 6, 4};
  for (int i = 0; i < 3; ++i) {
    Expect(Confirm(u"anna", u"old"));
    ExpectChange([](Operator& op) { op.Press(ui::kKeyEscape); });
  }
  ExpectGivingUp();
  EXPECT_FALSE(LogOn());
  EXPECT_THAT(log.EntriesOf("CreateUserSession"), ::testing::SizeIs(1));
  EXPECT_THAT(log.EntriesOf("CreateUserAdministration"),
              ::testing::SizeIs(Which().HasList ? 4 : 3));
}

BOTH_LOG_ON_DIALOGS(LogOnRenew);

}  // namespace krx::test
