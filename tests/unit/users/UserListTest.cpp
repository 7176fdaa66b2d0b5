#include "users/UsersTest.h"

// The list of FLogOnCombo.
namespace krx::test {

using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

class UserList : public UsersTest {
 protected:
  using Combo = ui::KRXComboBox;

  void Show(Script script) {
    platform.Expect(u"FLogOnCombo", [script](Operator& op) {
      script(op);
      op.Click(u"keyCancel");
    });
    EXPECT_FALSE(dialog->KRUserLogOnCombo());
  }
  std::vector<String> ListOf(std::vector<String> names) {
    Users().Names = std::move(names);
    std::vector<String> items;
    Show([&](Operator& op) { items = op.Get<Combo>(u"cboName").Items(); });
    return items;
  }
};

TEST_F(UserList, KeepsTheOrderOfTheUserManagement) {
  const std::vector<String> names{u"zeno", u"Anna", u"anna", u"mia", u"", u"anna", u"\u00C4nne"};
  EXPECT_EQ(ListOf(names), names);
  EXPECT_THAT(Users().Calls(),
              ElementsAreArray({"CreateUserAdministration", "UserAdministration1.GetUserNames()",
                                "~UserAdministration1"}));
}

TEST_F(UserList, HoldsFiveHundredUsers) {
  std::vector<String> names;
  for (std::int32_t i = 500; i > 0; --i)
    names.push_back(u"user " + ToString(i));
  EXPECT_EQ(ListOf(names), names);
}

TEST_F(UserList, IsReadBeforeAnyText) {
  ListOf({u"anna"});
  EXPECT_THAT(log.Entries()[0], "CreateUserAdministration");
  EXPECT_THAT(log.Entries()[1], "UserAdministration1.GetUserNames()");
}

TEST_F(UserList, SelectsNoEntry) {
  Users().Names = {u"anna", u"Berta"};
  Show([](Operator& op) {
    EXPECT_EQ(op.Get<Combo>(u"cboName").ListIndex(), -1);
    EXPECT_EQ(op.Get<Combo>(u"cboName").Text(), u"");
    EXPECT_FALSE(Enabled(op, u"keyOK"));
  });
}

TEST_F(UserList, EmptyListLeavesNothingToConfirm) {
  EXPECT_THAT(ListOf({}), IsEmpty());
  Show([](Operator& op) {
    EXPECT_FALSE(Enabled(op, u"keyOK"));
    op.Press(ui::kKeyEnter);
    op.Type(u"secret");
    op.Press(ui::kKeyEnter);
    EXPECT_EQ(op.Focus(), u"cboName");
    EXPECT_TRUE(op.Form().Visible());
  });
}

TEST_F(UserList, FailingListIsEmptyAndTheDialogOpensAllTheSame) {
  Users().Names = {u"anna"};
  for (const int call : {1, 2}) {
    Users().Restart();
    log.FailCall(call, false);
    Show([](Operator& op) {
      EXPECT_THAT(op.Get<Combo>(u"cboName").Items(), IsEmpty());
      EXPECT_EQ(op.Get<Combo>(u"cboName").Font().Name, u"KRDialogsInput");
      EXPECT_EQ(op.Get<ui::KRXKey>(u"keyOK").Caption(), u"keyOK");
    });
    EXPECT_TRUE(log.Injected());
  }
}

TEST_F(UserList, BothNotificationsDecideOnOk) {
  Users().Names = {u"anna", u""};
  Show([](Operator& op) {
    auto& box = op.Get<Combo>(u"cboName");
    auto& ok = op.Get<ui::KRXKey>(u"keyOK");
    box.Text.Adopt(u"anna");
    box.Change();
    EXPECT_TRUE(ok.Enabled());
    ok.Enabled = false;
    box.SelectionChanged();
    EXPECT_TRUE(ok.Enabled());
    box.Select(1);
    EXPECT_FALSE(ok.Enabled()) << "an entry without a name";
    box.Select(0);
    EXPECT_TRUE(ok.Enabled());
  });
}

TEST_F(UserList, TextIsReadAnewAtEveryAttempt) {
  Users().Names = {u"anna", u"Berta"};
  Users().LogOnCodes = {1, 4, 2};
  Users().Records[u"Berta"] = {};
  const auto attempt = [](int entry) {
    return [entry](Operator& op) {
      op.Get<Combo>(u"cboName").Select(entry);
      op.Click(u"keyOK");
    };
  };
  platform.Expect(u"FLogOnCombo", attempt(0));
  platform.Expect(u"FLogOnCombo", attempt(1));
  ExpectChange([](Operator& op) {
    EXPECT_EQ(op.Get(u"txtName").DisplayedText(), u"Berta");
    op.Click(u"keyCancel");
  });
  platform.Expect(u"FLogOnCombo", attempt(0));
  EXPECT_TRUE(dialog->KRUserLogOnCombo());
  EXPECT_THAT(log.EntriesOf("UserSession1."),
              ElementsAreArray({"UserSession1.LogOnUser(anna, )", "UserSession1.LogOnUser(Berta, )",
                                "UserSession1.LogOnUser(anna, )"}));
}

// Only the text boxes select their content on getting the focus.
TEST_F(UserList, NameKeepsItsSelectionWhenItGetsTheFocus) {
  Users().Names = {u"anna", u"Berta"};
  Show([](Operator& op) {
    op.Get<Combo>(u"cboName").Select(1);
    op.Press(ui::kKeyTab);
    op.Press(ui::kKeyTab, ui::kShift);
    EXPECT_EQ(op.Focus(), u"cboName");
    EXPECT_EQ(op.Get<Combo>(u"cboName").ListIndex(), 1);
    EXPECT_EQ(op.Get<Combo>(u"cboName").Text(), u"Berta");
  });
}

}  // namespace krx::test
