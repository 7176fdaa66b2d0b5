#include <limits>

#include "users/FChangePassword.h"
#include "users/UsersTest.h"

// Whose password is changed, the codes of an attempt, and what reaches the user management.
namespace krx::test {

using ::testing::ElementsAreArray;

class ChangePassword : public UsersTest {
 protected:
  ChangePassword() {
    Users().Current = {u"anna", u"operators", true};
    Users().Records[u"anna"] = {.FullName = u"Anna A.", .Comment = u"shift 1"};
  }

  bool Change(const std::optional<String>& user = std::nullopt) {
    return users::FChangePassword(apartment).ChangePassword(user);
  }
  static Script Confirm(String current, String fresh) {
    return [current, fresh](Operator& op) {
      FillChange(op, current, fresh);
      op.Click(u"keyOK");
    };
  }
  // An attempt that ends with the code; returns where the focus is when the dialog comes again.
  String FocusAfter(std::int32_t code) {
    Users().Restart();
    Users().ChangeCodes = {code};
    ExpectChange(Confirm(u"old", u"new"));
    String focus;
    ExpectChange([&](Operator& op) {
      focus = op.Focus();
      EXPECT_EQ(Secret(op, u"txtActPassword"), "old") << "the fields keep their text";
      EXPECT_EQ(Secret(op, u"txtPassword"), "new");
      EXPECT_EQ(Secret(op, u"txtPassword2"), "new");
      EXPECT_TRUE(Enabled(op, u"keyOK"));
      op.Click(u"keyCancel");
    });
    EXPECT_FALSE(Change());
    return focus;
  }
  static Calls OfCurrentUser(Calls calls) {
    calls.insert(calls.begin(), {"CreateUserAdministration", "UserAdministration1.GetCurrentUser()",
                                 "UserAdministration1.GetUserInfo(anna)"});
    calls.push_back("~UserAdministration1");
    return calls;
  }
  static Calls Refused(const std::string& message) {
    return OfCurrentUser({"UserAdministration1.ChangeUserPassword(anna, new, old)",
                          "Box " + message + "|48|KRXDialogs"});
  }
};

TEST_F(ChangePassword, SuccessEndsTheDialogWithTrue) {
  Users().ChangeCodes = {0};
  ExpectChange(Confirm(u"old", u"new"));
  EXPECT_TRUE(Change());
  EXPECT_THAT(
      Users().Calls(),
      ElementsAreArray(OfCurrentUser({"UserAdministration1.ChangeUserPassword(anna, new, old)"})));
}

TEST_F(ChangePassword, RefusalsShowTheirMessageAndLeadOn) {
  struct Row {
    std::int32_t Code;
    std::string Message;
    String Focus;
  };
  for (const auto& [code, message, focus] :
       {Row{1, "msgUnknownUser", u"keyCancel"}, Row{2, "msgInvalidPassword", u"txtActPassword"},
        Row{3, "msgUnableToSaveUser", u"keyCancel"},
        Row{4, "msgInvalidPasswordLength", u"txtPassword"},
        Row{5, "msgInvalidPassword", u"txtActPassword"}, Row{6, "msgCallFailed", u"keyCancel"}}) {
    SCOPED_TRACE(code);
    EXPECT_EQ(FocusAfter(code), focus);
    EXPECT_THAT(Users().Calls(), ElementsAreArray(Refused(message)));
    EXPECT_THAT(log.EntriesOf("GetText msg"), ElementsAreArray({"GetText " + message + " -103"}));
  }
}

TEST_F(ChangePassword, CodesOutsideTheTableAreSilent) {
  using Limits = std::numeric_limits<std::int32_t>;
  for (const std::int32_t code :
       {-1, -2, -6, 7, 8, 256, 65536, Limits::min(), Limits::min() + 2, Limits::max()}) {
    SCOPED_TRACE(code);
    EXPECT_EQ(FocusAfter(code), u"txtActPassword") << "the first of the tab order";
    EXPECT_THAT(Users().Calls(), ElementsAreArray(OfCurrentUser(
                                     {"UserAdministration1.ChangeUserPassword(anna, new, old)"})));
  }
}

TEST_F(ChangePassword, OneObjectServesAllAttemptsOfACall) {
  Users().ChangeCodes = {2, 4, -1, 0};
  Calls expected;
  const Calls boxes{"msgInvalidPassword", "msgInvalidPasswordLength", "", ""};
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    const String number = ToString(static_cast<std::int32_t>(i));
    ExpectChange(Confirm(u"old" + number, u"new" + number));
    expected.push_back("UserAdministration1.ChangeUserPassword(anna, new" + std::to_string(i) +
                       ", old" + std::to_string(i) + ")");
    if (!boxes[i].empty()) expected.push_back("Box " + boxes[i] + "|48|KRXDialogs");
  }
  EXPECT_TRUE(Change());
  EXPECT_THAT(Users().Calls(), ElementsAreArray(OfCurrentUser(expected)));
}

TEST_F(ChangePassword, LeavingIsFalse) {
  for (const StringView key : {u"keyCancel", u"keyClose"}) {
    Users().Restart();
    ExpectChange([key](Operator& op) {
      FillChange(op, u"old", u"new");
      op.Click(key);
    });
    EXPECT_FALSE(Change());
    EXPECT_THAT(Users().Calls(), ElementsAreArray(OfCurrentUser({})));
  }
  ExpectChange([](Operator& op) { op.Press(ui::kKeyEscape); });
  EXPECT_FALSE(Change());
}

TEST_F(ChangePassword, MethodOfTheServiceChangesTheCurrentUser) {
  ExpectChange(Confirm(u"old", u"new"));
  dialog->KRChangePassword();
  EXPECT_THAT(
      Users().Calls(),
      ElementsAreArray(OfCurrentUser({"UserAdministration1.ChangeUserPassword(anna, new, old)"})));
}

TEST_F(ChangePassword, NobodyLoggedOnIsReportedWithoutADialog) {
  Users().Current = {};
  EXPECT_FALSE(Change());
  EXPECT_THAT(
      Users().Calls(),
      ElementsAreArray({"CreateUserAdministration", "UserAdministration1.GetCurrentUser()",
                        "Box msgNoCurrentUser|64|capChangePassword", "~UserAdministration1"}));
}

// The flag decides on the message, the name on the dialog.
TEST_F(ChangePassword, NameThatIsNotLoggedOnIsReportedAndAskedAllTheSame) {
  Users().Current.LoggedOn = false;
  ExpectChange([](Operator& op) { op.Click(u"keyCancel"); });
  EXPECT_FALSE(Change());
  EXPECT_THAT(Users().Calls(),
              ElementsAreArray({"CreateUserAdministration", "UserAdministration1.GetCurrentUser()",
                                "Box msgNoCurrentUser|64|capChangePassword",
                                "UserAdministration1.GetUserInfo(anna)", "~UserAdministration1"}));
}

TEST_F(ChangePassword, LoggedOnUserWithoutANameIsLeftAlone) {
  Users().Current.Name.clear();
  EXPECT_FALSE(Change());
  EXPECT_THAT(Users().Calls(),
              ElementsAreArray({"CreateUserAdministration", "UserAdministration1.GetCurrentUser()",
                                "~UserAdministration1"}));
}

TEST_F(ChangePassword, NamedUserNeedsNoOneLoggedOn) {
  Users().Current = {};
  ExpectChange(Confirm(u"old", u"new"));
  EXPECT_TRUE(Change(u"anna"));
  EXPECT_THAT(
      Users().Calls(),
      ElementsAreArray({"CreateUserAdministration", "UserAdministration1.GetUserClass(anna)",
                        "UserAdministration1.GetUserInfo(anna)",
                        "UserAdministration1.ChangeUserPassword(anna, new, old)",
                        "~UserAdministration1"}));
}

TEST_F(ChangePassword, UnknownNamedUserIsReportedWithoutADialog) {
  EXPECT_FALSE(Change(u"zeno"));
  EXPECT_THAT(
      Users().Calls(),
      ElementsAreArray({"CreateUserAdministration", "UserAdministration1.GetUserClass(zeno)",
                        "Box msgUnknownUser|64|capChangePassword", "~UserAdministration1"}));
}

TEST_F(ChangePassword, EmptyNamedUserIsAskedForAndNeverShown) {
  EXPECT_FALSE(Change(u""));
  EXPECT_THAT(log.EntriesOf("Box"), ElementsAreArray({"Box msgUnknownUser|64|capChangePassword"}));
  Users().Restart();
  Users().Records[u""] = {};
  EXPECT_FALSE(Change(u""));
  EXPECT_THAT(Users().Calls(),
              ElementsAreArray({"CreateUserAdministration", "UserAdministration1.GetUserClass()",
                                "~UserAdministration1"}));
}

TEST_F(ChangePassword, MessagesBeforeTheDialogTakeItsTitleAsItIs) {
  runtime.Texts[u"capChangePassword"] = u"Kennwort\\n\u00E4ndern";
  EXPECT_FALSE(Change(u"zeno"));
  EXPECT_THAT(log.EntriesOf("Box"),
              ElementsAreArray({"Box msgUnknownUser|64|Kennwort\\n\u00E4ndern"}));
}

TEST_F(ChangePassword, NameOfEveryAttemptIsReadFromItsField) {
  Users().ChangeCodes = {2};
  ExpectChange([](Operator& op) {
    op.Get<ui::TextBox>(u"txtName").Text = u"other";
    FillChange(op, u"old", u"new");
    op.Click(u"keyOK");
  });
  ExpectChange(Confirm(u"old", u"new"));
  EXPECT_TRUE(Change());
  EXPECT_THAT(log.EntriesOf("UserAdministration1.Change"),
              ElementsAreArray({"UserAdministration1.ChangeUserPassword(other, new, old)",
                                "UserAdministration1.ChangeUserPassword(other, new, old)"}));
}

TEST_F(ChangePassword, NothingIsKeptBetweenCalls) {
  Users().ChangeCodes = {2};
  ExpectChange(Confirm(u"old", u"new"));
  ExpectChange([](Operator& op) { op.Click(u"keyCancel"); });
  EXPECT_FALSE(Change());
  ExpectChange([](Operator& op) {
    for (const StringView box : {u"txtActPassword", u"txtPassword", u"txtPassword2"})
      EXPECT_EQ(Secret(op, box), "");
    EXPECT_FALSE(Enabled(op, u"keyOK"));
    EXPECT_EQ(op.Focus(), u"txtActPassword");
    op.Click(u"keyCancel");
  });
  EXPECT_FALSE(Change());
}

TEST_F(ChangePassword, RealMessageBoxesHaveTheirTitles) {
  platform.Expect(u"FMessageBox", [](Operator& op) {
    EXPECT_EQ(op.Get(u"idxCaption").DisplayedText(), u"capChangePassword");
    EXPECT_EQ(op.Get<ui::PictureBox>(u"picIcon").Picture()->Icon.Id, ui::kInformationIcon);
    op.Press(ui::kKeyEnter);
  });
  EXPECT_FALSE(Change(u"zeno"));
  Users().ChangeCodes = {6};
  ExpectChange(Confirm(u"old", u"new"));
  platform.Expect(u"FMessageBox", [](Operator& op) {
    EXPECT_EQ(op.Get(u"idxCaption").DisplayedText(), u"KRXDialogs");
    EXPECT_EQ(op.Get<ui::PictureBox>(u"picIcon").Picture()->Icon.Id, ui::kExclamationIcon);
    op.Press(ui::kKeyEnter);
  });
  ExpectChange([](Operator& op) { op.Click(u"keyCancel"); });
  EXPECT_FALSE(Change());
}

}  // namespace krx::test
