#pragma once

#include "users/UsersTest.h"

namespace krx::test {

// The two dialogs of the user administration over a scripted user management: an administrator is
// logged on, and there are three classes.
class AdministrationTest : public UsersTest {
 protected:
  AdministrationTest() {
    Users().Current = {u"root", u"Admin", true};
    Users().Classes = {{u"Guest", 1}, {u"Operator", 5}, {u"Admin", 9}};
    Users().AdministrationMode = 1;
  }

  void AddPerson(const String& name, const String& user_class, std::int32_t state = 0) {
    Users().Names.push_back(name);
    Users().Records[name] = {u"Full " + name, u"about " + name, state, 3, 0, 90};
    Users().ClassOf[name] = user_class;
  }

  // The next add/change dialog, and what the operator does there.
  void ExpectForm(Script script) { platform.Expect(u"FAddUser", std::move(script)); }
  void ExpectOverview(Script script) { platform.Expect(u"FUser", std::move(script)); }

  static void Choose(Operator& op, StringView user_class) {
    auto& box = op.Get<ui::KRXComboBox>(u"cboUserClass");
    const auto& items = box.Items();
    const auto found = std::find(items.begin(), items.end(), user_class);
    ASSERT_NE(found, items.end());
    box.Select(static_cast<int>(found - items.begin()));
  }
  static void FillUser(Operator& op, StringView name = u"eva", StringView password = u"pw") {
    Fill(op, u"txtName", name);
    Fill(op, u"txtFullName", u"Eva Meier");
    Fill(op, u"txtPassword", password);
    Fill(op, u"txtPassword2", password);
    Fill(op, u"txtComment", u"early shift");
    Choose(op, u"Operator");
  }

  static Calls RowsOf(const ui::RowList& list) {
    Calls rows;
    for (int row = 0; row < list.RowCount(); ++row) {
      std::string text;
      for (int column = 0; column < static_cast<int>(list.Columns().size()); ++column)
        text += (column ? "|" : "") + ToUtf8(list.Cell(row, column));
      rows.push_back(text);
    }
    return rows;
  }
  static Calls Rows(Operator& op) { return RowsOf(op.Get<ui::ListView>(u"lvwUser")); }
  static Calls NamesOf(Operator& op) {
    Calls names;
    for (const std::string& row : Rows(op))
      names.push_back(row.substr(0, row.find('|')));
    return names;
  }
};

}  // namespace krx::test
