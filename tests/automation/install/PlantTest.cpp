// What belongs to the plant is the plant's: neither an upgrade nor a removal touches it.

#include <cstdlib>
#include <fstream>

#include "driver/Window.h"
#include "install/FoundClasses.h"
#include "install/Installer.h"

namespace krx::install {
namespace {

namespace fs = std::filesystem;
using drive::Lines;

constexpr const char* kPasswordLine = "Password, shown this once: ";
constexpr const char* kTexts = "# The plant's own.\n-105 Yes = &Jawoll\n";

class Plant : public InstallTest {
 protected:
  void SetUp() override {
    SetEnvironmentVariableW(L"KORVEL_USERS_FOLDER", nullptr);
    fs::remove_all(Users().parent_path());
    InstallTest::SetUp();
  }
  void TearDown() override {
    InstallTest::TearDown();
    fs::remove_all(Users().parent_path());
    fs::remove(Texts());
  }

  static fs::path Users() { return fs::path(_wgetenv(L"ProgramData")) / "Korvel" / "Users"; }
  fs::path Texts() const { return Folder() / "KorvelTexts.de.txt"; }

  // Makes users with the installed tool and returns the administrator's first password.
  std::string Provision() const {
    drive::Client tool(L"\"" + (Folder() / "krxusers.exe").wstring() +
                       L"\" provision admin --generate");
    EXPECT_EQ(tool.Finish(), 0u);
    for (const std::string& line : tool.Lines())
      if (line.starts_with(kPasswordLine)) return line.substr(std::string(kPasswordLine).size());
    throw std::runtime_error("krxusers tells no password");
  }

  std::map<std::string, std::string> Belongings() const {
    std::map<std::string, std::string> files{{"texts", Read(Texts())}};
    for (const auto& file : fs::directory_iterator(Users()))
      files[file.path().filename().string()] = Read(file.path());
    return files;
  }

  // The answer of the users to a log-on, and the text of a button.
  Lines LogOnAndLookUp(const std::string& password) {
    const FoundClasses classes(For());
    RunPlainScript(
        "Set Session = CreateObject(\"KorvelRuntime.UserSession\")\r\n"
        "Session.LogOnUser \"admin\", " +
        drive::ScriptLiteral(drive::Widen(password)) +
        ", Result\r\n"
        "WScript.Echo Result\r\n"
        "CreateObject(\"KorvelRuntime.RuntimeSettings\").Language = \"de\"\r\n"
        "CreateObject(\"KorvelRuntime.TextService\").GetText \"Yes\", -105, Text\r\n"
        "WScript.Echo Text\r\n");
    return Printed();
  }
};

TEST_P(Plant, UsersRulesTextsAndAuditOutliveUpgradeAndRemoval) {
  Install(Version::Old, L"ADDLOCAL=ALL");
  const std::string password = Provision();
  std::ofstream(Users() / "users.conf", std::ios::binary | std::ios::app)
      << "\n# The plant's own.\n";
  std::ofstream(Texts(), std::ios::binary) << kTexts;
  const auto before = Belongings();
  for (const char* name : {"users.db", "users.conf", "texts"})
    ASSERT_TRUE(before.contains(name) && !before.at(name).empty()) << name;

  Install(Version::New);
  EXPECT_EQ(Belongings(), before);
  // 6: the right password, which has to be renewed at the first log-on.
  EXPECT_EQ(LogOnAndLookUp(password), (Lines{"6", "&Jawoll"}));

  const auto used = Belongings();
  Uninstall();
  EXPECT_EQ(Belongings(), used);
}

TEST_P(Plant, AnUpgradeKeepsTheChosenParts) {
  Install(Version::Old, L"ADDLOCAL=Dialogs,UsersTool");
  Install(Version::New);
  EXPECT_TRUE(Has(L"Dialogs"));
  EXPECT_TRUE(Has(L"UsersTool"));
  EXPECT_FALSE(Has(L"Runtime"));
  EXPECT_FALSE(Has(L"Samples"));
}

INSTANTIATE_TEST_SUITE_P(For, Plant, ::testing::Values(Scope::Machine, Scope::User),
                         [](const auto& scope) {
                           return scope.param == Scope::Machine ? "TheMachine" : "TheUser";
                         });

}  // namespace
}  // namespace krx::install
