#include "administration/AdministrationTest.h"
#include "users/FAddUser.h"

// What the user management answers to adding and changing, and which classes may be handed out.
namespace krx::test {

using users::FAddUser;

struct Answer {
  std::int32_t Code;
  const char* Message;  // null: silent
  const char16_t* Focus;
};

class AddUserCodes : public AdministrationTest {
 protected:
  // The form stays open after each refusal, says this and leads there.
  void ExpectAnswer(const Answer& answer) {
    ExpectForm([this, answer](Operator& op) {
      if (op.Get<ui::TextBox>(u"txtName").Locked()) {
        Fill(op, u"txtPassword", u"pw");
        Fill(op, u"txtPassword2", u"pw");
      } else {
        FillUser(op);
      }
      const std::size_t before = log.EntriesOf("Box").size();
      op.Click(u"keyOK");
      const auto boxes = log.EntriesOf("Box");
      EXPECT_TRUE(op.Form().Visible());
      EXPECT_EQ(op.Focus(), answer.Focus);
      if (answer.Message) {
        ASSERT_EQ(boxes.size(), before + 1);
        EXPECT_EQ(boxes.back(), std::string("Box ") + answer.Message + "|48|KRXDialogs");
      } else {
        EXPECT_EQ(boxes.size(), before);
      }
      op.Click(u"keyCancel");
    });
  }
};

TEST_F(AddUserCodes, EveryRefusalOfANewUserHasItsMessageAndFocus) {
  const Answer answers[] = {{1, "msgInvalidPasswordLength", u"txtPassword"},
                            {2, "msgInvalidPassword", u"txtPassword"},
                            {3, "msgUserExists", u"txtName"},
                            {4, "msgUnableToSaveUser", u"txtName"},
                            {5, "msgCallFailed", u"keyCancel"},
                            {6, nullptr, u"keyOK"},
                            {-1, nullptr, u"keyOK"},
                            {INT32_MAX, nullptr, u"keyOK"},
                            {INT32_MIN, nullptr, u"keyOK"}};
  for (const Answer& answer : answers) {
    SCOPED_TRACE(answer.Code);
    Users().CreateCodes = {answer.Code};
    ExpectAnswer(answer);
    EXPECT_FALSE(dialog->KRAddUser());
  }
}

TEST_F(AddUserCodes, EveryRefusalOfAChangeHasItsMessageAndFocus) {
  AddPerson(u"eva", u"Operator");
  const Answer answers[] = {{1, "msgUnknownUser", u"keyCancel"},
                            {2, "msgUnknownUserClass", u"cboUserClass"},
                            {3, "msgUnableToSaveUser", u"keyCancel"},
                            {4, "msgInvalidPasswordLength", u"txtPassword"},
                            {5, "msgInvalidPassword", u"txtPassword"},
                            {6, "msgCallFailed", u"keyCancel"},
                            {7, nullptr, u"keyOK"},
                            {-1, nullptr, u"keyOK"},
                            {INT32_MIN, nullptr, u"keyOK"}};
  for (const Answer& answer : answers) {
    SCOPED_TRACE(answer.Code);
    Users().ModifyCodes = {answer.Code};
    ExpectAnswer(answer);
    EXPECT_FALSE(FAddUser(apartment).ChangeUser(u"eva"));
  }
}

TEST_F(AddUserCodes, ARefusedUserCanBeCorrectedAndAccepted) {
  Users().CreateCodes = {3, 0};
  ExpectForm([](Operator& op) {
    FillUser(op);
    op.Click(u"keyOK");
    EXPECT_EQ(op.Focus(), u"txtName");
    op.Type(u"eva2");  // the whole name is selected
    op.Click(u"keyOK");
  });
  EXPECT_TRUE(dialog->KRAddUser());
  EXPECT_THAT(
      log.EntriesOf("UserAdministration1.CreateUser"),
      ::testing::ElementsAre(
          "UserAdministration1.CreateUser(eva, Eva Meier, early shift, pw, Operator, 0, 3)",
          "UserAdministration1.CreateUser(eva2, Eva Meier, early shift, pw, Operator, 0, 3)"));
}

struct Offer {
  std::int32_t Mode;
  String OwnClass;
  std::vector<String> Classes;
};

TEST_F(AddUserCodes, ModeAndOwnLevelDecideWhichClassesAreOffered) {
  const std::vector<String> all{u"Guest", u"Operator", u"Admin"};
  const Offer offers[] = {{1, u"Guest", all},
                          {2, u"Guest", all},
                          {0, u"Admin", {u"Guest", u"Operator"}},
                          {0, u"Operator", {u"Guest"}},
                          {0, u"Guest", {}},
                          {0, u"", {}},  // an unknown class has level 0
                          {3, u"Admin", {}},
                          {-1, u"Admin", {}}};
  for (const Offer& offer : offers) {
    Users().AdministrationMode = offer.Mode;
    Users().Current.ClassName = offer.OwnClass;
    ExpectForm([&](Operator& op) {
      auto& box = op.Get<ui::KRXComboBox>(u"cboUserClass");
      EXPECT_EQ(box.Items(), offer.Classes) << offer.Mode << ToUtf8(offer.OwnClass);
      EXPECT_EQ(box.ListIndex(), -1);
      op.Click(u"keyCancel");
    });
    EXPECT_FALSE(dialog->KRAddUser());
  }
}

TEST_F(AddUserCodes, ClassesOfTheSameLevelAreNotOffered) {
  Users().AdministrationMode = 0;
  Users().Classes = {{u"Night", 9}, {u"Below", 8}, {u"Negative", -4}, {u"Admin", 9}};
  ExpectForm([](Operator& op) {
    EXPECT_THAT(op.Get<ui::KRXComboBox>(u"cboUserClass").Items(),
                ::testing::ElementsAre(u"Below", u"Negative"));
    op.Click(u"keyCancel");
  });
  EXPECT_FALSE(dialog->KRAddUser());
}

TEST_F(AddUserCodes, RestrictedModeAsksForTheOwnClassBeforeTheList) {
  Users().AdministrationMode = 0;
  Users().Current.Name = {};
  EXPECT_FALSE(dialog->KRAddUser());
  EXPECT_THAT(
      Users().Calls(),
      ::testing::ElementsAre(
          "CreateUserAdministration", "UserAdministration1.GetAdministrationMode()",
          "UserAdministration1.GetCurrentUser()", "CreateUserClassAdministration",
          "UserClassAdministration1.GetUserClassInfo(Admin)",
          "UserClassAdministration1.GetUserClasses()", "UserAdministration1.GetCurrentUser()",
          "Box msgNoCurrentUser\nmsgNoAddUser|48|capAddUser", "~UserClassAdministration1",
          "~UserAdministration1"));
}

}  // namespace krx::test
