// User overview and add/change user, with a real administrator's mouse and keys.

#include "driver/List.h"
#include "users/UsersTest.h"

namespace krx::drive {
namespace {

constexpr const wchar_t* kOverview = L"FUser";
constexpr const wchar_t* kAddUserForm = L"FAddUser";

struct Person {
  std::wstring Name;
  std::wstring Password;
};

class Administration : public UsersTest {
 protected:
  // The overview, opened by the administrator; afterwards the client prints who is in the store.
  Window OpenOverview() {
    RunUserScript(
        "LogOn \"admin\"\r\nDialogs.KRUser\r\nDim name, user_class, found\r\n"
        "For Each name In Array(\"admin\", \"alt\", \"eva.meier\", \"neu\", \"ruhend\", "
        "\"uta\")\r\n"
        "  Users.GetUserClass name, user_class, found\r\n"
        "  If found Then WScript.Echo name\r\nNext\r\n");
    return Form(kOverview, L"lvwUser");
  }
  Window OpenForm() {
    RunUserScript("LogOn \"admin\"\r\nWScript.Echo CStr(Dialogs.KRAddUser())\r\n");
    return Form(kAddUserForm, L"txtName");
  }
  // The client comes through; with its end that many lines.
  void ExpectEnd(std::size_t lines = 0) {
    const Lines printed = Printed();
    ASSERT_FALSE(printed.empty());
    EXPECT_EQ(printed.back(), "end");
    EXPECT_TRUE(lines == 0 || printed.size() == lines) << printed.size();
  }
  static List Rows(const Window& overview) { return List(overview.Child(L"lvwUser")); }

  // Selects a user with the mouse and presses a button.
  void Act(const Window& overview, const std::wstring& user, const wchar_t* key) {
    const List rows = Rows(overview);
    const int row = rows.Find(user);
    rows.Click(row);
    rows.WaitForSelected(row);
    overview.Child(key).Click();
  }
  void WaitForCell(const Window& overview, const std::wstring& user, int column,
                   const std::wstring& text) {
    const List rows = Rows(overview);
    if (!Within(kPatience, [&] { return rows.Cell(rows.Find(user), column) == text; }))
      throw std::runtime_error(Narrow(user) + " shows " +
                               Narrow(rows.Cell(rows.Find(user), column)));
  }

  // Fills the form from the name to the comment and leaves the focus there.
  void Fill(const Window& form, const Person& person) {
    Type(form, L"txtName", person.Name);
    Move(form, L"Enter", L"txtFullName");
    Type(form, L"txtFullName", L"Uta Neu");
    Move(form, L"Enter", L"txtPassword");
    FillPasswords(form, person.Password);
    PressKey(L"Down");  // the first class of the list
    if (!Within(kPatience, [&] { return !form.Child(L"cboUserClass").Text().empty(); }))
      throw std::runtime_error("no class is chosen");
    Move(form, L"Enter", L"txtComment");
  }
  void FillPasswords(const Window& form, const std::wstring& password) {
    Type(form, L"txtPassword", password);
    Move(form, L"Enter", L"txtPassword2");
    Type(form, L"txtPassword2", password);
    Move(form, L"Enter", L"cboUserClass");
  }
};

TEST_F(Administration, ListsTheUsersWithTheirStates) {
  const Window overview = OpenOverview();
  EXPECT_EQ(overview.Text(), Text("capOverviewUsers"));
  const List rows = Rows(overview);
  EXPECT_EQ(rows.Column(0), (std::vector<std::wstring>{kAdministrator, kExpired, kOperator,
                                                       kRenewing, kDeactivated}));
  const int eva = rows.Find(kOperator);
  EXPECT_EQ(rows.Cell(eva, 1), Text("enmStateActive"));
  EXPECT_EQ(rows.Cell(eva, 2), L"Eva Meier");
  EXPECT_EQ(rows.Cell(eva, 3), L"Operator");
  EXPECT_EQ(rows.Cell(eva, 6), L"Early shift");
  EXPECT_EQ(rows.Cell(rows.Find(kDeactivated), 1), Text("enmStateDeactivated"));
  EXPECT_EQ(rows.Selected(), -1);
  PressKey(L"Esc");
  ExpectEnd();
}

TEST_F(Administration, AddsAUserWhoOutlivesTheClient) {
  const Window overview = OpenOverview();
  overview.Child(L"keyAddUser").Click();
  const Window form = Form(kAddUserForm, L"txtName");
  EXPECT_FALSE(form.Child(L"keyOK").Enabled());
  Fill(form, {L"uta", L"Acht Pumpen"});
  EXPECT_TRUE(form.Child(L"keyOK").Enabled());
  PressKey(L"Enter");
  form.WaitUntilGone();
  Rows(overview).Find(L"uta");
  overview.Child(L"keyOK").Click();
  EXPECT_EQ(Printed(), (Lines{"admin", "alt", "eva.meier", "neu", "ruhend", "uta", "end"}));

  // A new client: the user is there, with this password, which is to be changed.
  RunUserScript(
      "Dim code\r\nSession.LogOnUser \"uta\", \"Acht Pumpen\", code\r\n"
      "WScript.Echo code\r\n");
  EXPECT_EQ(Printed(), (Lines{"6", "end"}));
}

TEST_F(Administration, ChangesTheUserOfTheRowThatEnterIsPressedOn) {
  const Window overview = OpenOverview();
  const List rows = Rows(overview);
  const int eva = rows.Find(kOperator);
  rows.Click(eva);
  rows.WaitForSelected(eva);
  PressKey(L"Enter");
  const Window form = Form(kAddUserForm, L"txtFullName");
  EXPECT_EQ(form.Text(), Text("capChangeUser"));
  EXPECT_EQ(form.Child(L"txtName").Text(), kOperator);
  EXPECT_EQ(form.Child(L"cboUserClass").Text(), L"Operator");
  Type(form, L"txtFullName", L"Eva Schulz");
  Move(form, L"Enter", L"txtPassword");
  FillPasswords(form, L"Neun Kessel");
  Move(form, L"Enter", L"txtComment");
  PressKey(L"Enter");
  form.WaitUntilGone();
  WaitForCell(overview, kOperator, 2, L"Eva Schulz");
  EXPECT_EQ(rows.Selected(), rows.Find(kOperator)) << "he stays selected";
  overview.Child(L"keyClose").Click();
  ExpectEnd();
}

TEST_F(Administration, RemovesDeactivatesAndActivates) {
  const Window overview = OpenOverview();
  Act(overview, kOperator, L"keyDeactivateUser");
  WaitForCell(overview, kOperator, 1, Text("enmStateDeactivated"));
  Act(overview, kOperator, L"keyActivateUser");
  WaitForCell(overview, kOperator, 1, Text("enmStateActive"));
  Act(overview, kExpired, L"keyRemoveUser");
  EXPECT_TRUE(Within(kPatience, [&] { return Rows(overview).Count() == 4; }));
  EXPECT_EQ(Rows(overview).Selected(), -1);
  overview.Child(L"keyOK").Click();
  EXPECT_EQ(Printed(), (Lines{"admin", "eva.meier", "neu", "ruhend", "end"}));
}

TEST_F(Administration, KeysWalkTheListAndDeleteRemovesNobody) {
  const Window overview = OpenOverview();
  const List rows = Rows(overview);
  PressKey(L"End");
  rows.WaitForSelected(4);
  PressKey(L"Up");
  rows.WaitForSelected(3);
  TypeText(L"e");  // type-ahead by name
  rows.WaitForSelected(rows.Find(kOperator));
  PressKey(L"Delete");
  PressKey(L"Home");
  rows.WaitForSelected(0);
  EXPECT_EQ(rows.Count(), 5);
  PressKey(L"Esc");
  ExpectEnd(6);  // five users
}

TEST_F(Administration, ADoubleClickChangesTheUser) {
  const Window overview = OpenOverview();
  Rows(overview).DoubleClick(Rows(overview).Find(kRenewing));
  const Window form = Form(kAddUserForm, L"txtFullName");
  EXPECT_EQ(form.Child(L"txtName").Text(), kRenewing);
  PressKey(L"Esc");
  form.WaitUntilGone();
  overview.WaitForFocusOn(L"lvwUser");
  PressKey(L"Esc");
  ExpectEnd();
}

TEST_F(Administration, OnesOwnClassIsLocked) {
  const Window overview = OpenOverview();
  Rows(overview).DoubleClick(Rows(overview).Find(kAdministrator));
  const Window form = Form(kAddUserForm, L"txtFullName");
  EXPECT_FALSE(form.Child(L"cboUserClass").Enabled());
  EXPECT_EQ(form.Child(L"cboUserClass").Text(), L"Administrator");
  form.Child(L"keyCancel").Click();
  form.WaitUntilGone();
  overview.WaitForFocusOn(L"lvwUser");
  PressKey(L"Esc");
  ExpectEnd();
}

TEST_F(Administration, WithoutASelectionTheActionsDoNothing) {
  const Window overview = OpenOverview();
  for (const wchar_t* key :
       {L"keyChangeUser", L"keyRemoveUser", L"keyActivateUser", L"keyDeactivateUser"})
    overview.Child(key).Click();
  overview.WaitForFocusOn(L"keyDeactivateUser");
  EXPECT_TRUE(Forms(kAddUserForm).empty());
  EXPECT_EQ(Rows(overview).Count(), 5);
  overview.Child(L"keyOK").Click();
  ExpectEnd(6);  // five users
}

// Refusals, with their messages on the screen.

TEST_F(Administration, RefusalsAreToldAndTheFormStays) {
  const Window form = OpenForm();
  Fill(form, {L"eva.meier", L"Acht Pumpen"});
  PressKey(L"Enter");
  Confirm(Text("msgUserExists"));
  Type(form, L"txtName", L"uta");
  Move(form, L"Enter", L"txtFullName");
  Move(form, L"Enter", L"txtPassword");
  FillPasswords(form, L"kurz");
  Move(form, L"Enter", L"txtComment");
  PressKey(L"Enter");
  Confirm(Text("msgInvalidPasswordLength"));
  FillPasswords(form, L"password");  // among those that everyone tries first
  Move(form, L"Enter", L"txtComment");
  PressKey(L"Enter");
  Confirm(Text("msgInvalidPassword"));
  form.WaitForFocusOn(L"txtPassword");
  form.Child(L"keyCancel").Click();
  EXPECT_EQ(Printed(), (Lines{"False", "end"}));
}

TEST_F(Administration, AStoreThatCannotBeWrittenIsTold) {
  const Window form = OpenForm();
  Fill(form, {L"uta", L"Acht Pumpen"});
  Store->RefuseWriting();
  PressKey(L"Enter");
  Confirm(Text("msgUnableToSaveUser"));
  form.WaitForFocusOn(L"txtName");
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), (Lines{"False", "end"}));
}

TEST_F(Administration, NobodyLoggedOnIsToldInsteadOfTheForm) {
  RunUserScript("WScript.Echo CStr(Dialogs.KRAddUser())\r\n");
  Confirm(Text("msgNoCurrentUser") + L'\n' + Text("msgNoAddUser"), Text("capAddUser"));
  EXPECT_EQ(Printed(), (Lines{"False", "end"}));
}

}  // namespace
}  // namespace krx::drive
