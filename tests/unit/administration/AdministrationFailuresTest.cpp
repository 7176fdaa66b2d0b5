#include "users/FAddUser.h"
#include "users/FailingCalls.h"

// Every call of the user administration is failed in turn.
namespace krx::test {

class AdministrationFailures : public FailingCalls {
 protected:
  AdministrationFailures() {
    Users().Current = {u"root", u"Admin", true};
    Users().Classes = {{u"Operator", 5}};
    Users().AdministrationMode = 1;
    Users().Names = {u"eva", u"ole"};
    for (const String& name : Users().Names)
      Users().Records[name] = {};
  }

  // The overview loads until it is shown. Add/change user fetches its caption, which must not fail,
  // and loads until it asks who is logged on; opened by the overview it does so again.
  std::vector<bool> LoadingOf(const Calls& entries) const override {
    std::vector<bool> loading_of_call;
    const bool overview = std::find(entries.begin(), entries.end(), "Show FUser") != entries.end();
    bool loading = overview;
    bool form = false;
    for (const std::string& entry : entries) {
      const bool asks = entry.find("GetCurrentUser()") != std::string::npos;
      if (entry == "Show FUser" || (form && asks)) loading = form = false;
      if (!IsNote(entry)) loading_of_call.push_back(loading);
      if (entry.starts_with("GetText capAddUser") || entry.starts_with("GetText capChangeUser"))
        loading = form = true;
    }
    return loading_of_call;
  }

  // Fills whatever a failure has left of the form, and confirms.
  static void Confirm(Operator& op) {
    if (!op.Get<ui::TextBox>(u"txtName").Locked()) Fill(op, u"txtName", u"ida");
    Fill(op, u"txtPassword", u"pw");
    Fill(op, u"txtPassword2", u"pw");
    op.Get<ui::KRXComboBox>(u"cboUserClass").Text = u"Operator";
    for (int i = 0; i < 9 && op.Form().Visible(); ++i)
      op.Click(u"keyOK");
  }
};

// The text service and the caption, texts (8) and fonts (15 times 2 and their service), classes
// (3), the current user, seven attempts, texts and boxes.
TEST_F(AdministrationFailures, AddUserWithEveryRefusal) {
  FailEveryCall({[this] {
                   Users().CreateCodes = {1, 2, 3, 4, 5, 6, 0};
                   platform.Expect(u"FAddUser", Confirm);
                 },
                 [this] { dialog->KRAddUser(); }},
                2 + 8 + 31 + 4 + 1 + 7 + 2 * 5);
}

TEST_F(AdministrationFailures, ChangeUserWithEveryRefusal) {
  FailEveryCall({[this] {
                   Users().ModifyCodes = {1, 2, 3, 4, 5, 6, 7, 0};
                   platform.Expect(u"FAddUser", Confirm);
                 },
                 [this] { users::FAddUser(apartment).ChangeUser(u"eva"); }},
                2 + 8 + 31 + 4 + 3 + 8 + 2 * 6);
}

TEST_F(AdministrationFailures, AddUserOfNobody) {
  Users().Current = {};
  FailEveryCall({[] {}, [this] { dialog->KRAddUser(); }}, 2 + 8 + 31 + 4 + 1 + 3);
}

// Texts, fonts and the first refresh while loading; then every action with its refresh.
TEST_F(AdministrationFailures, OverviewWithEveryAction) {
  const auto work = [](Operator& op) {
    auto& list = op.Get<ui::ListView>(u"lvwUser");
    op.Click(u"keyAddUser");
    for (const StringView key :
         {u"keyActivateUser", u"keyDeactivateUser", u"keyChangeUser", u"keyRemoveUser"}) {
      if (list.RowCount() > 0) op.ClickRow(u"lvwUser", 0);
      op.Click(key);
    }
    op.Click(u"keyOK");
  };
  FailEveryCall({[this, work] {
                   platform.Expect(u"FUser", work);
                   platform.Expect(u"FAddUser", Confirm);
                   platform.Expect(u"FAddUser", Confirm);
                 },
                 [this] { dialog->KRUser(); }},
                40 + 5 * 12);
}

}  // namespace krx::test
