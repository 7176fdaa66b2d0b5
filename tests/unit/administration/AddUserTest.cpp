#include "users/FAddUser.h"

#include "administration/AdministrationTest.h"

namespace krx::test {

using users::FAddUser;

class AddUser : public AdministrationTest {
 protected:
  bool Add() { return dialog->KRAddUser(); }
  bool Change(const String& user) { return FAddUser(apartment).ChangeUser(user); }
};

TEST_F(AddUser, StoresWhatWasEnteredWithTheZeroDateAndAChangeOfPasswordDue) {
  ExpectForm([](Operator& op) {
    FillUser(op);
    op.Click(u"keyOK");
    EXPECT_FALSE(op.Form().Visible());
  });
  EXPECT_TRUE(Add());
  EXPECT_THAT(Users().Calls(),
              ::testing::ElementsAre(
                  "CreateUserAdministration", "UserAdministration1.GetAdministrationMode()",
                  "CreateUserClassAdministration", "UserClassAdministration1.GetUserClasses()",
                  "UserAdministration1.GetCurrentUser()",
                  "UserAdministration1.CreateUser(eva, Eva Meier, early shift, pw, Operator, 0, 3)",
                  "~UserClassAdministration1", "~UserAdministration1"));
}

TEST_F(AddUser, CarriesItsTexts) {
  runtime.Texts = {{u"capAddUser", u"New user"}, {u"lblName", u"&User"}, {u"keyOK", u"&Fine"}};
  ExpectForm([](Operator& op) {
    auto& form = dynamic_cast<FAddUser&>(op.Form());
    EXPECT_EQ(form.idxCaption.Text(), u"New user");
    EXPECT_EQ(form.lblAddUser[0].Caption(), u"&User");
    const char16_t* const keys[] = {u"lblFullName", u"lblPassword", u"lblRepeatPassword",
                                    u"lblUserClass", u"lblComment"};
    for (std::size_t i = 0; i < 5; ++i) {
      EXPECT_EQ(form.lblAddUser[i + 1].Tag, keys[i]);
      EXPECT_EQ(form.lblAddUser[i + 1].Caption(), keys[i]);
    }
    EXPECT_EQ(form.keyOK.Caption(), u"&Fine");
    EXPECT_EQ(form.keyCancel.Caption(), u"keyCancel");
    op.Click(u"keyCancel");
  });
  EXPECT_FALSE(Add());
}

TEST_F(AddUser, NobodyLoggedOnIsToldInTwoLinesAndNoFormIsShown) {
  Users().Current = {};
  EXPECT_FALSE(Add());
  EXPECT_THAT(log.EntriesOf("Box"),
              ::testing::ElementsAre("Box msgNoCurrentUser\nmsgNoAddUser|48|capAddUser"));
}

// The name decides, not the flag.
TEST_F(AddUser, ANameWithoutTheLoggedOnFlagIsEnough) {
  Users().Current.LoggedOn = false;
  ExpectForm([](Operator& op) { op.Click(u"keyClose"); });
  EXPECT_FALSE(Add());
}

TEST_F(AddUser, OkNeedsNameClassAndTheSamePasswordTwice) {
  ExpectForm([](Operator& op) {
    const auto enabled = [&] { return Enabled(op, u"keyOK"); };
    EXPECT_FALSE(enabled());
    FillUser(op);
    EXPECT_TRUE(enabled());
    Fill(op, u"txtName", u"");
    EXPECT_FALSE(enabled());
    Fill(op, u"txtName", u"eva");
    Fill(op, u"txtPassword2", u"PW");
    EXPECT_FALSE(enabled()) << "the repetition is compared exactly";
    Fill(op, u"txtPassword", u"PW");
    EXPECT_TRUE(enabled());
    Fill(op, u"txtPassword", u"");
    Fill(op, u"txtPassword2", u"");
    EXPECT_FALSE(enabled()) << "an empty password is none";
    Fill(op, u"txtPassword", u"x");
    Fill(op, u"txtPassword2", u"x");
    EXPECT_TRUE(enabled());
    op.Get<ui::KRXComboBox>(u"cboUserClass").Text = u"";
    EXPECT_FALSE(enabled());
    Choose(op, u"Guest");
    EXPECT_TRUE(enabled());
    Fill(op, u"txtFullName", u"");
    Fill(op, u"txtComment", u"");
    EXPECT_TRUE(enabled()) << "full name and comment may be empty";
    op.Click(u"keyCancel");
  });
  EXPECT_FALSE(Add());
}

TEST_F(AddUser, EnterLeadsFromFieldToFieldAndConfirmsInTheLast) {
  ExpectForm([](Operator& op) {
    FillUser(op);
    op.Get(u"txtName").SetFocus();
    for (const StringView next :
         {u"txtFullName", u"txtPassword", u"txtPassword2", u"cboUserClass", u"txtComment"}) {
      op.Press(ui::kKeyEnter);
      EXPECT_EQ(op.Focus(), next);
    }
    op.Press(ui::kKeyEnter);
    EXPECT_FALSE(op.Form().Visible());
  });
  EXPECT_TRUE(Add());
}

TEST_F(AddUser, EnterInTheCommentReturnsToTheNameWhileTheRepetitionDiffers) {
  ExpectForm([](Operator& op) {
    FillUser(op);
    Fill(op, u"txtPassword2", u"other");
    op.Get(u"txtComment").SetFocus();
    op.Press(ui::kKeyEnter);
    EXPECT_EQ(op.Focus(), u"txtName");
    op.Click(u"keyCancel");
  });
  EXPECT_FALSE(Add());
}

TEST_F(AddUser, FieldsAreSelectedWhenTheFocusComes) {
  ExpectForm([](Operator& op) {
    FillUser(op);
    for (const StringView box :
         {u"txtName", u"txtFullName", u"txtPassword", u"txtPassword2", u"txtComment"}) {
      op.Get(u"keyCancel").SetFocus();
      op.Get(box).SetFocus();
      const auto& field = op.Get<ui::EditBox>(box);
      EXPECT_EQ(field.SelStart(), 0);
      EXPECT_EQ(field.SelLength(), static_cast<int>(field.TextLength())) << ToUtf8(box);
    }
    op.Click(u"keyCancel");
  });
  EXPECT_FALSE(Add());
}

TEST_F(AddUser, CancelCloseKeyAndEscSaveNothing) {
  const Script leave[] = {[](Operator& op) { op.Click(u"keyCancel"); },
                          [](Operator& op) { op.Click(u"keyClose"); },
                          [](Operator& op) { op.Press(ui::kKeyEscape); }};
  for (const Script& way : leave) {
    ExpectForm([&](Operator& op) {
      FillUser(op);
      way(op);
      EXPECT_FALSE(op.Form().Visible());
    });
    EXPECT_FALSE(Add());
  }
  EXPECT_THAT(log.EntriesOf("UserAdministration1.CreateUser"), ::testing::IsEmpty());
}

// A statement that fails leaves its value as it is, and the others go on.
TEST_F(AddUser, ClassesAreLoadedStatementByStatement) {
  using Items = std::vector<String>;
  // The classes offered when the first call of this kind fails; with no call, when none does.
  const auto offered = [this](const std::string& failing) {
    Items items;
    const auto run = [&] {
      ExpectForm([&](Operator& op) {
        items = op.Get<ui::KRXComboBox>(u"cboUserClass").Items();
        op.Click(u"keyCancel");
      });
      EXPECT_FALSE(Add());
      return log.Entries();
    };
    Users().Restart();
    int number = 0;
    for (const std::string& entry : run()) {
      if (failing.empty()) return items;
      number += entry.starts_with("~") ? 0 : 1;
      if (entry.find(failing) != std::string::npos) break;
    }
    Users().Restart();
    log.FailCall(number, false);
    run();
    EXPECT_TRUE(log.Injected()) << failing;
    return items;
  };
  Users().AdministrationMode = 0;
  EXPECT_EQ(offered(""), (Items{u"Guest", u"Operator"}));
  EXPECT_EQ(offered("GetAdministrationMode"), (Items{u"Guest", u"Operator"}));
  EXPECT_EQ(offered("GetUserClassInfo"), Items{}) << "his level is not known";
  EXPECT_EQ(offered("GetUserClasses"), Items{});
  Users().AdministrationMode = 2;
  EXPECT_EQ(offered(""), (Items{u"Guest", u"Operator", u"Admin"}));
  EXPECT_EQ(offered("GetAdministrationMode"), (Items{u"Guest", u"Operator"}))
      << "restricted, where the mode is not known";
}

// Changing.

TEST_F(AddUser, ChangingShowsTheUserAndKeepsHisName) {
  AddPerson(u"eva", u"Operator");
  ExpectForm([](Operator& op) {
    auto& form = dynamic_cast<FAddUser&>(op.Form());
    EXPECT_EQ(form.idxCaption.Text(), u"capChangeUser");
    EXPECT_EQ(form.txtName.Text(), u"eva");
    EXPECT_TRUE(form.txtName.Locked());
    EXPECT_EQ(form.txtName.BackColor(), ui::kButtonFace);
    EXPECT_EQ(form.txtFullName.Text(), u"Full eva");
    EXPECT_EQ(form.txtComment.Text(), u"about eva");
    EXPECT_EQ(form.cboUserClass.Text(), u"Operator");
    EXPECT_TRUE(form.cboUserClass.Enabled());
    EXPECT_TRUE(form.txtPassword.Text().Empty());
    EXPECT_TRUE(form.txtPassword2.Text().Empty());
    EXPECT_FALSE(form.keyOK.Enabled()) << "a password must be entered here too";
    EXPECT_EQ(op.Focus(), u"txtFullName");
    op.Press(ui::kKeyTab, ui::kShift);
    EXPECT_EQ(op.Focus(), u"txtName") << "to be read and copied";
    Fill(op, u"txtPassword", u"new");
    Fill(op, u"txtPassword2", u"new");
    op.Click(u"keyOK");
  });
  EXPECT_TRUE(Change(u"eva"));
  EXPECT_THAT(
      log.EntriesOf("UserAdministration1."),
      ::testing::ElementsAre(
          "UserAdministration1.GetAdministrationMode()", "UserAdministration1.GetCurrentUser()",
          "UserAdministration1.GetUserClass(eva)", "UserAdministration1.GetUserInfo(eva)",
          "UserAdministration1.ModifyUser(eva, Full eva, about eva, new, Operator, 0, 3)"));
}

TEST_F(AddUser, NobodyChangesHisOwnClassButAllElse) {
  AddPerson(u"root", u"Admin");
  ExpectForm([](Operator& op) {
    EXPECT_FALSE(Enabled(op, u"cboUserClass"));
    for (const StringView box : {u"txtFullName", u"txtPassword", u"txtPassword2", u"txtComment"})
      EXPECT_FALSE(op.Get<ui::EditBox>(box).Locked());
    op.Get(u"txtPassword2").SetFocus();
    op.Press(ui::kKeyEnter);
    EXPECT_EQ(op.Focus(), u"txtComment") << "past the class, which takes no focus";
    op.Click(u"keyCancel");
  });
  EXPECT_FALSE(Change(u"root"));
}

TEST_F(AddUser, OnesOwnNameIsComparedExactly) {
  AddPerson(u"Root", u"Admin");
  ExpectForm([](Operator& op) {
    EXPECT_TRUE(Enabled(op, u"cboUserClass"));
    op.Click(u"keyCancel");
  });
  EXPECT_FALSE(Change(u"Root"));
}

TEST_F(AddUser, ChangingDoesNotAskForALogOn) {
  AddPerson(u"eva", u"Operator");
  Users().Current = {};
  ExpectForm([](Operator& op) {
    EXPECT_TRUE(Enabled(op, u"cboUserClass"));
    op.Click(u"keyCancel");
  });
  EXPECT_FALSE(Change(u"eva"));
}

}  // namespace krx::test
