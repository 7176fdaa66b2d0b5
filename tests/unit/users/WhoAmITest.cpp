#include "users/UsersTest.h"

namespace krx::test {

using ::testing::ElementsAreArray;

class WhoAmI : public UsersTest {
 protected:
  WhoAmI() {
    Users().Current = {u"anna", u"operators", true};
    Users().Records[u"anna"] = {.FullName = u"Anna A.", .Comment = u"shift 1"};
  }

  void Show(Script script) {
    platform.Expect(u"FWhoAmI", [script](Operator& op) {
      script(op);
      if (op.Form().Visible()) op.Click(u"keyOK");
    });
    dialog->KRWhoAmI();
  }
  static String Shown(Operator& op, StringView control) { return op.Get(control).DisplayedText(); }
};

TEST_F(WhoAmI, ShowsTheUserWhoIsLoggedOn) {
  Show([](Operator& op) {
    EXPECT_EQ(Shown(op, u"txtName"), u"anna");
    EXPECT_EQ(Shown(op, u"txtFullName"), u"Anna A.");
    EXPECT_EQ(Shown(op, u"txtUserClass"), u"text of operators");
    EXPECT_EQ(Shown(op, u"txtComment"), u"shift 1");
  });
  EXPECT_THAT(
      Users().Calls(),
      ElementsAreArray({"CreateUserAdministration", "UserAdministration1.GetCurrentUser()",
                        "UserAdministration1.GetUserInfo(anna)", "CreateUserClassAdministration",
                        "UserClassAdministration1.GetUserClassInfo(operators)",
                        "~UserClassAdministration1", "~UserAdministration1"}));
}

TEST_F(WhoAmI, EmptyCommentIsShownEmpty) {
  Users().Records[u"anna"].Comment.clear();
  Show([](Operator& op) { EXPECT_EQ(Shown(op, u"txtComment"), u""); });
}

TEST_F(WhoAmI, NobodyIsReportedWithoutADialog) {
  Users().Current.LoggedOn = false;  // whatever the other outputs hold
  dialog->KRWhoAmI();
  EXPECT_THAT(Users().Calls(),
              ElementsAreArray({"CreateUserAdministration", "UserAdministration1.GetCurrentUser()",
                                "Box msgNoCurrentUser|64|capCurrentUser", "~UserAdministration1"}));
}

TEST_F(WhoAmI, UserWithoutANameCountsAsNobody) {
  Users().Current.Name.clear();
  dialog->KRWhoAmI();
  EXPECT_THAT(log.EntriesOf("Box"), ElementsAreArray({"Box msgNoCurrentUser|64|capCurrentUser"}));
}

TEST_F(WhoAmI, RealMessageBoxIsAnInformationWithTheCaption) {
  Users().Current = {};
  platform.Expect(u"FMessageBox", [](Operator& op) {
    EXPECT_EQ(op.Get(u"idxCaption").DisplayedText(), u"capCurrentUser");
    EXPECT_EQ(op.Get(u"idxMessage").DisplayedText(), u"msgNoCurrentUser");
    EXPECT_EQ(op.Get<ui::PictureBox>(u"picIcon").Picture()->Icon.Id, ui::kInformationIcon);
    op.Press(ui::kKeyEnter);
  });
  dialog->KRWhoAmI();
}

TEST_F(WhoAmI, EveryWayOutUnloadsTheForm) {
  Show([](Operator& op) {
    op.Click(u"keyOK");
    EXPECT_FALSE(op.Form().Loaded());
  });
  Show([](Operator& op) {
    op.Click(u"keyClose");
    EXPECT_FALSE(op.Form().Loaded());
  });
  Show([](Operator& op) {
    op.Press(ui::kKeyEscape);
    EXPECT_FALSE(op.Form().Loaded());
  });
  Show([](Operator& op) {
    EXPECT_EQ(op.Focus(), u"keyOK") << "the only stop of Tab";
    op.Press(ui::kKeyEnter);
    EXPECT_FALSE(op.Form().Loaded());
  });
}

TEST_F(WhoAmI, PaintingMovesNoFocus) {
  Show([](Operator& op) {
    auto& form = dynamic_cast<service::DialogForm&>(op.Form());
    form.FocusControl = &op.Get(u"txtName");
    op.Uncover();
    EXPECT_EQ(op.Focus(), u"keyOK");
  });
}

TEST_F(WhoAmI, FieldsAreForDisplayOnly) {
  Show([](Operator& op) {
    for (const StringView name : {u"txtFullName", u"txtName", u"txtComment", u"txtUserClass"}) {
      const auto& box = op.Get<ui::TextBox>(name);
      EXPECT_TRUE(box.Locked());
      EXPECT_EQ(box.BackColor(), ui::kButtonFace);
      EXPECT_EQ(box.ForeColor(), ui::kButtonText);
    }
  });
}

TEST_F(WhoAmI, UserComesBeforeTextsAndTextsBeforeFonts) {
  Show([](Operator&) {});
  const auto& all = log.Entries();
  const auto first = [&](std::string_view prefix) {
    return std::find_if(all.begin(), all.end(),
                        [&](const std::string& entry) { return entry.starts_with(prefix); }) -
           all.begin();
  };
  EXPECT_LT(first("UserClassAdministration1."), first("GetText capCurrentUser"));
  EXPECT_LT(first("GetText lblUserClass"), first("SelectFontClass"));
}

TEST_F(WhoAmI, FieldWhoseCallFailsStaysEmpty) {
  const auto shown = [](Operator& op) {
    return std::vector<String>{Shown(op, u"txtName"), Shown(op, u"txtFullName"),
                               Shown(op, u"txtUserClass"), Shown(op, u"txtComment")};
  };
  // 1 the administration and 2 the user; 3 his record; 4 the class administration and 5 the class.
  for (const int call : {3, 4, 5}) {
    SCOPED_TRACE(call);
    Users().Restart();
    log.FailCall(call, false);
    Show([&](Operator& op) {
      const std::vector<String> expected =
          call == 3 ? std::vector<String>{u"anna", u"", u"text of operators", u""}
                    : std::vector<String>{u"anna", u"Anna A.", u"", u"shift 1"};
      EXPECT_EQ(shown(op), expected);
    });
  }
  for (const int call : {1, 2}) {
    Users().Restart();
    log.FailCall(call, false);
    dialog->KRWhoAmI();
    EXPECT_THAT(log.EntriesOf("Box"), ElementsAreArray({"Box msgNoCurrentUser|64|capCurrentUser"}));
  }
}

TEST_F(WhoAmI, LabelWhoseTextFailsKeepsItsDesignCaption) {
  log.FailCall(9, false);  // after the user (5), the text service, caption and button
  Show([](Operator& op) {
    EXPECT_EQ(op.Get<ui::Label>(u"lblWhoAmI(0)").Caption(), u"&Vollst\u00E4ndiger Name");
    EXPECT_EQ(op.Get<ui::Label>(u"lblWhoAmI(1)").Caption(), u"lblName");
  });
  EXPECT_TRUE(log.Injected());
}

}  // namespace krx::test
