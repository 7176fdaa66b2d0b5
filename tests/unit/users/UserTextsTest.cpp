#include "support/Walk.h"
#include "users/UsersTest.h"

// Text, font and access key of every control of the user dialogs.
namespace krx::test {

using ::testing::ElementsAreArray;

struct LabelRow {
  String Name;
  std::string Key;  // of its text
  StringView Field;
};

struct UserDialog {
  const char* Name;  // of the form
  void (*Open)(service::KRXDialog&);
  std::string Title;
  std::string TitleKey;
  std::vector<std::pair<String, std::string>> Buttons;  // with the keys of their texts
  std::vector<LabelRow> Labels;
};

const UserDialog kUserDialogs[] = {
    {"FLogOn",
     [](service::KRXDialog& dialog) { dialog.KRUserLogOn(); },
     "capLogon",
     "capLogon",
     {{u"keyOK", "keyOK"}, {u"keyCancel", "keyCancel"}, {u"keyLogOut", "keyLogOut"}},
     {{u"lblName", "lblName", u"txtName"}, {u"lblPassword", "lblPassword", u"txtPassword"}}},
    {"FLogOnCombo",
     [](service::KRXDialog& dialog) { dialog.KRUserLogOnCombo(); },
     "capLogon ",
     "capLogon",
     {{u"keyOK", "keyOK"}, {u"keyCancel", "keyCancel"}, {u"keyLogOff", "keyLogOut"}},
     {{u"lblName", "lblName", u"cboName"}, {u"lblPassword", "lblPassword", u"txtPassword"}}},
    {"FChangePassword",
     [](service::KRXDialog& dialog) { dialog.KRChangePassword(); },
     "capChangePassword",
     "capChangePassword",
     {{u"keyOK", "keyOK"}, {u"keyCancel", "keyCancel"}},
     {{u"lblChangePW(0)", "lblName", u"txtName"},
      {u"lblChangePW(1)", "lblFullName", u"txtFullName"},
      {u"lblChangePW(2)", "lblComment", u"txtComment"},
      {u"lblChangePW(3)", "lblActualPassword", u"txtActPassword"},
      {u"lblChangePW(4)", "lblNewPassword", u"txtPassword"},
      {u"lblChangePW(5)", "lblRepeatPassword", u"txtPassword2"}}},
    {"FWhoAmI",
     [](service::KRXDialog& dialog) { dialog.KRWhoAmI(); },
     "capCurrentUser",
     "capCurrentUser",
     {{u"keyOK", "keyOK"}},
     {{u"lblWhoAmI(0)", "lblFullName", u"txtFullName"},
      {u"lblWhoAmI(1)", "lblName", u"txtName"},
      {u"lblWhoAmI(2)", "lblComment", u"txtComment"},
      {u"lblWhoAmI(3)", "lblUserClass", u"txtUserClass"}}},
};

void PrintTo(const UserDialog& dialog, std::ostream* out) {
  *out << dialog.Name;
}

class UserDialogs : public UsersTest, public ::testing::WithParamInterface<UserDialog> {
 protected:
  UserDialogs() {
    Users().Current = {u"anna", u"operators", true};
    Users().Records[u"anna"] = {};
  }

  static const UserDialog& Which() { return GetParam(); }

  void Show(Script script) {
    const std::string name = Which().Name;
    platform.Expect(String(name.begin(), name.end()), [script](Operator& op) {
      script(op);
      op.Click(u"keyClose");
    });
    Which().Open(*dialog);
  }
};

TEST_P(UserDialogs, TakeEveryTextByItsKeyFromTheUserGroup) {
  Show([](Operator& op) {
    EXPECT_EQ(ToUtf8(op.Get<ui::KRXIndex>(u"idxCaption").Text()), Which().Title);
    EXPECT_EQ(ToUtf8(op.Form().Caption()), Which().Title);
    for (const auto& [name, key] : Which().Buttons)
      EXPECT_EQ(ToUtf8(op.Get<ui::KRXKey>(name).Caption()), key);
    for (const LabelRow& row : Which().Labels) {
      const auto& label = op.Get<ui::Label>(row.Name);
      EXPECT_EQ(ToUtf8(label.Caption()), row.Key);
      const bool is_numbered = row.Name.ends_with(u')');
      EXPECT_EQ(ToUtf8(label.Tag), is_numbered ? row.Key : "");
    }
  });
  Calls asked{"GetText " + Which().TitleKey + " -103"};
  for (const auto& [name, key] : Which().Buttons)
    asked.push_back("GetText " + key + " -103");
  for (const LabelRow& row : Which().Labels)
    asked.push_back("GetText " + row.Key + " -103");
  EXPECT_THAT(log.EntriesOf("GetText"), ElementsAreArray(asked));
}

TEST_P(UserDialogs, GiveEveryControlTheFontOfItsClass) {
  dialog->Settings().FontClassCaption = u"C";
  dialog->Settings().FontClassText = u"T";
  dialog->Settings().FontClassButton = u"B";
  dialog->Settings().FontClassInput = u"I";
  Show([](Operator& op) {
    EXPECT_EQ(op.Get(u"idxCaption").Font().Name, u"C");
    for (const auto& [name, key] : Which().Buttons)
      EXPECT_EQ(op.Get(name).Font().Name, u"B");
    for (const LabelRow& row : Which().Labels) {
      EXPECT_EQ(op.Get(row.Name).Font().Name, u"T");
      EXPECT_EQ(op.Get(row.Field).Font().Name, u"I");
    }
    EXPECT_EQ(op.Get(u"keyClose").Font(), Font()) << "keeps its design font";
  });
}

TEST_P(UserDialogs, AreLedByTheAccessKeyOfEveryLabelToItsField) {
  char16_t digit = u'0';
  for (const LabelRow& row : Which().Labels)
    runtime.Texts[String(row.Key.begin(), row.Key.end())] = String(u"&") + ++digit;
  Show([](Operator& op) {
    char16_t key = u'0';
    for (const LabelRow& row : Which().Labels) {
      op.Get(Which().Buttons.back().first).SetFocus();
      op.AccessKey(++key);
      EXPECT_EQ(ToUtf8(op.Focus()), ToUtf8(row.Field));
    }
  });
}

INSTANTIATE_TEST_SUITE_P(All, UserDialogs, ::testing::ValuesIn(kUserDialogs),
                         NameOfRow<UserDialog>);

}  // namespace krx::test
