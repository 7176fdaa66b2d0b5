// The texts that the runtime brings along: complete in both languages, and usable by keyboard.
#include <fstream>
#include <map>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include "base/Error.h"
#include "ports/headless/HeadlessPlatform.h"
#include "runtime/core/TextTable.h"
#include "ui/Control.h"

namespace krx::runtime {
namespace {

constexpr std::int32_t kUser = -103;
constexpr std::int32_t kDialog = -105;

// Every key that a dialog asks for.
const std::vector<String> kUserKeys{u"capLogon",
                                    u"capChangePassword",
                                    u"capCurrentUser",
                                    u"capOverviewUsers",
                                    u"capAddUser",
                                    u"capChangeUser",
                                    u"keyOK",
                                    u"keyCancel",
                                    u"keyLogOut",
                                    u"keyAddUser",
                                    u"keyChangeUser",
                                    u"keyRemoveUser",
                                    u"keyActivateUser",
                                    u"keyDeactivateUser",
                                    u"lblName",
                                    u"lblFullName",
                                    u"lblPassword",
                                    u"lblActualPassword",
                                    u"lblNewPassword",
                                    u"lblRepeatPassword",
                                    u"lblUserClass",
                                    u"lblComment",
                                    u"lblUser",
                                    u"lblState",
                                    u"lblRemainingLogOns",
                                    u"lblRenewPassword",
                                    u"enmStateActive",
                                    u"enmStateDeactivated",
                                    u"enmStateLocked",
                                    u"enmStateActiveChangePassword",
                                    u"msgUnknownUser",
                                    u"msgInvalidPassword",
                                    u"msgUserDeactivated",
                                    u"msgPasswordExpired",
                                    u"msgTooManyFailedLogons",
                                    u"msgRenewPassword",
                                    u"msgUnableToSaveUser",
                                    u"msgInvalidPasswordLength",
                                    u"msgCallFailed",
                                    u"msgUserExists",
                                    u"msgUnknownUserClass",
                                    u"msgNoCurrentUser",
                                    u"msgNoAddUser",
                                    u"msgIdleLogOff",
                                    u"msgLastLogOn",
                                    u"msgNoLastLogOn"};
const std::vector<String> kDialogKeys{u"OK",
                                      u"Cancel",
                                      u"Cancel&",
                                      u"Abort",
                                      u"Retry",
                                      u"Ignore",
                                      u"Yes",
                                      u"No",
                                      u"Help",
                                      u"Open",
                                      u"Save",
                                      u"Drive",
                                      u"Directories",
                                      u"FileName",
                                      u"FileType",
                                      u"SelectedDirectory",
                                      u"TitleOpen",
                                      u"TitleSaveAs",
                                      u"TitleSelectDirectory",
                                      u"DriveNotReady",
                                      u"CapsLockOn",
                                      u"TextDirection",
                                      u"KeyboardLayout"};

// The labels and buttons that an operator sees at the same time.
struct View {
  const char* Name;
  std::int32_t Group;
  std::vector<String> Keys;
};
const View kViews[] = {
    {"log-on", kUser, {u"lblName", u"lblPassword", u"keyOK", u"keyCancel", u"keyLogOut"}},
    {"change password",
     kUser,
     {u"lblName", u"lblFullName", u"lblComment", u"lblActualPassword", u"lblNewPassword",
      u"lblRepeatPassword", u"keyOK", u"keyCancel"}},
    {"who am I", kUser, {u"lblFullName", u"lblName", u"lblComment", u"lblUserClass", u"keyOK"}},
    {"user overview",
     kUser,
     {u"lblUser", u"keyAddUser", u"keyChangeUser", u"keyRemoveUser", u"keyActivateUser",
      u"keyDeactivateUser", u"keyOK"}},
    {"add or change user",
     kUser,
     {u"lblName", u"lblFullName", u"lblPassword", u"lblRepeatPassword", u"lblUserClass",
      u"lblComment", u"keyOK", u"keyCancel"}},
    {"OK, Cancel", kDialog, {u"OK", u"Cancel", u"Help"}},
    {"Abort, Retry, Ignore", kDialog, {u"Abort", u"Retry", u"Ignore", u"Help"}},
    {"Yes, No, Cancel", kDialog, {u"Yes", u"No", u"Cancel", u"Help"}},
    {"Retry, Cancel", kDialog, {u"Retry", u"Cancel&", u"Help"}},
    {"directory",
     kDialog,
     {u"SelectedDirectory", u"Drive", u"Directories", u"OK", u"Open", u"Cancel"}},
    {"open file",
     kDialog,
     {u"FileName", u"Directories", u"FileType", u"Drive", u"Open", u"Cancel"}},
    {"save file",
     kDialog,
     {u"FileName", u"Directories", u"FileType", u"Drive", u"Save", u"Cancel"}},
    {"touch file without a selection",
     kDialog,
     {u"SelectedDirectory", u"FileType", u"Drive", u"Open", u"Save", u"Cancel"}},
};

std::string ReadFile(const std::string& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(KRX_CHECKOUT "/" + path, std::ios::binary).rdbuf();
  return bytes.str();
}

TextTable Load(const std::string& language) {
  TextTable table;
  table.Add(String(language.begin(), language.end()),
            ReadFile("runtime/texts/" + language + ".txt"));
  return table;
}

class RuntimeTextsTest : public testing::TestWithParam<const char*> {
 protected:
  String Text(StringView key, std::int32_t group) const {
    const String* text = table_.Find(key, group);
    return text == nullptr ? String() : *text;
  }

  TextTable table_ = Load(GetParam());
  headless::HeadlessPlatform platform_;
};

TEST_P(RuntimeTextsTest, HoldEveryKeyOfTheDialogsAndNoOther) {
  EXPECT_EQ(46u, kUserKeys.size());
  EXPECT_EQ(23u, kDialogKeys.size());
  for (const String& key : kUserKeys)
    EXPECT_NE(u"", Text(key, kUser)) << ToUtf8(key);
  for (const String& key : kDialogKeys)
    EXPECT_NE(u"", Text(key, kDialog)) << ToUtf8(key);
  EXPECT_EQ(kUserKeys.size() + kDialogKeys.size(), table_.Entries().size());
}

TEST_P(RuntimeTextsTest, HaveNoAccessKeyTwiceInOneView) {
  for (const View& view : kViews) {
    std::map<char16_t, String> taken;
    for (const String& key : view.Keys) {
      const char16_t access_key = platform_.Folding()(ui::AccessKeyOf(Text(key, view.Group)));
      if (access_key == 0) continue;
      const auto [other, free] = taken.emplace(access_key, key);
      EXPECT_TRUE(free) << view.Name << ": " << ToUtf8(key) << " and " << ToUtf8(other->second);
    }
  }
}

TEST_P(RuntimeTextsTest, GiveAnAccessKeyToEveryLabelAndButtonThatNeedsOne) {
  const View expected[] = {
      {"user",
       kUser,
       {u"lblName", u"lblFullName", u"lblPassword", u"lblActualPassword", u"lblNewPassword",
        u"lblRepeatPassword", u"lblUserClass", u"lblComment", u"keyLogOut", u"keyAddUser",
        u"keyChangeUser", u"keyRemoveUser", u"keyActivateUser", u"keyDeactivateUser"}},
      {"dialog",
       kDialog,
       {u"Cancel&", u"Abort", u"Retry", u"Ignore", u"Yes", u"No", u"Help", u"Open", u"Save",
        u"Drive", u"Directories", u"FileName", u"FileType", u"SelectedDirectory"}},
  };
  std::size_t with_access_key = 0;
  for (const View& view : expected) {
    for (const String& key : view.Keys) {
      EXPECT_NE(u'\0', ui::AccessKeyOf(Text(key, view.Group))) << ToUtf8(key);
      ++with_access_key;
    }
  }
  // Titles, messages, states, OK and Cancel have none.
  std::size_t marked = 0;
  for (const auto& [name, text] : table_.Entries()) {
    if (text.find(u'&') != String::npos) ++marked;
  }
  EXPECT_EQ(with_access_key, marked);
}

TEST_P(RuntimeTextsTest, FitWhereTheyAreShown) {
  for (const auto& [name, text] : table_.Entries()) {
    const std::string key = ToUtf8(name.second);
    const bool message = key.starts_with("msg");
    EXPECT_NE(u' ', text.front()) << key;
    EXPECT_NE(u' ', text.back()) << key;
    if (message) {
      EXPECT_EQ(u'.', text.back()) << key;
    } else {
      EXPECT_EQ(String::npos, text.find(u'\n')) << key;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Languages, RuntimeTextsTest, testing::Values("de", "en"),
                         [](const auto& test) { return std::string(test.param); });

// The captions of the designs are the German texts.
TEST(GermanTexts, AreTheCaptionsOfTheDesigns) {
  const TextTable table = Load("de");
  const std::pair<StringView, StringView> captions[] = {
      {u"lblName", u"&Name"},
      {u"lblFullName", u"&Vollst\u00E4ndiger Name"},
      {u"lblPassword", u"&Passwort"},
      {u"lblRepeatPassword", u"Passwort &wiederholen"},
      {u"lblUserClass", u"&Benutzerklasse"},
      {u"lblComment", u"&Kommentar"},
      {u"lblUser", u"Benutzer"},
      {u"keyAddUser", u"&Hinzuf\u00FCgen"},
      {u"keyChangeUser", u"&\u00C4ndern"},
      {u"keyRemoveUser", u"&Entfernen"},
      {u"keyActivateUser", u"&Aktivieren"},
      {u"keyDeactivateUser", u"&Deaktivieren"},
  };
  for (const auto& [key, caption] : captions) {
    ASSERT_NE(nullptr, table.Find(key, kUser)) << ToUtf8(key);
    EXPECT_EQ(caption, *table.Find(key, kUser));
  }
}

TEST(IntegratorsManual, ExplainsEveryKey) {
  const std::string manual = ReadFile("docs/integration.md");
  for (const auto& keys : {kUserKeys, kDialogKeys}) {
    for (const String& key : keys) {
      EXPECT_NE(std::string::npos, manual.find("`" + ToUtf8(key) + "`")) << ToUtf8(key);
    }
  }
}

}  // namespace
}  // namespace krx::runtime
