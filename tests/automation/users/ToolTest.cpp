// The administrator's tool, as a plant runs it, and what the components make of what it leaves.
#include <algorithm>
#include <fstream>
#include <iterator>

#include "driver/Client.h"
#include "users/UsersTest.h"

namespace krx::drive {
namespace {

class ToolTest : public testing::Test {
 protected:
  struct Answer {
    DWORD Code;
    std::string Text;
  };

  ToolTest() {
    store.Provision(kAdministrator, kPassword, "");
    std::filesystem::remove(key);
  }
  ~ToolTest() override {
    std::error_code ignored;
    std::filesystem::remove(key, ignored);
    std::filesystem::remove(key.parent_path(), ignored);  // unless others have theirs there
  }

  Answer Run(const std::wstring& arguments) const {
    store.Use();
    Client tool(L"\"" + (ProgramFolder() / "krxusers.exe").wstring() + L"\" " + arguments);
    Answer answer{tool.Finish(), ""};
    for (const std::string& line : tool.Lines())
      answer.Text += line + "\n";
    return answer;
  }

  // The number that a log-on of the administrator answers, or what its error says.
  std::string LogOn(const std::wstring& password = kPassword) const {
    store.Use();
    const ScriptFile file(
        "Dim Session, Result\r\n"
        "Set Session = CreateObject(\"KorvelRuntime.UserSession\")\r\n"
        "On Error Resume Next\r\n"
        "Session.LogOnUser " +
        ScriptLiteral(kAdministrator) + ", " + ScriptLiteral(password) +
        ", Result\r\n"
        "If Err.Number <> 0 Then WScript.Echo Err.Description Else WScript.Echo Result\r\n");
    Client client(file.Command());
    client.Finish();
    return client.Lines().empty() ? "" : client.Lines().back();
  }

  void SetRule(const std::string& line) const {
    std::ofstream(Folder() / "users.conf", std::ios::binary | std::ios::app) << line << '\n';
  }
  const std::filesystem::path& Folder() const { return store.Folder(); }
  std::string KeyName() const { return Narrow(key.wstring()); }

  const UserStoreFolder store;
  const std::filesystem::path key =
      Folder().parent_path() / "Keys" / (Folder().filename().string() + ".key");
};

TEST_F(ToolTest, PasswordsGetAKeyThatLiesApart) {
  const Answer created = Run(L"key create");
  EXPECT_EQ(created.Code, 0u) << created.Text;
  EXPECT_NE(created.Text.find(KeyName() + "\n"), std::string::npos) << created.Text;
  EXPECT_EQ(Run(L"key create").Code, 1u) << "never over another";
  SetRule("keyed-passwords = on");
  EXPECT_EQ(LogOn(), "2");
  EXPECT_EQ(LogOn(L"another"), "1");
  const Answer shown = Run(L"key show");
  EXPECT_NE(shown.Text.find("\tpasswords: 2\n"), std::string::npos) << shown.Text;
  EXPECT_EQ(Run(L"key renew").Code, 0u);
  EXPECT_EQ(LogOn(), "2");
  EXPECT_EQ(Run(L"verify").Code, 0u);
  EXPECT_EQ(Run(L"key lose").Code, 2u);
}

TEST_F(ToolTest, AKeyThatIsNotThereIsNamedAndNewPasswordsMendIt) {
  ASSERT_EQ(Run(L"key create").Code, 0u);
  SetRule("keyed-passwords = on");
  ASSERT_EQ(LogOn(), "2");
  std::filesystem::remove(key);
  EXPECT_NE(LogOn().find(KeyName()), std::string::npos) << LogOn();
  std::ofstream(key, std::ios::binary) << "the key of another machine";
  EXPECT_NE(LogOn().find(KeyName()), std::string::npos) << LogOn();
  const Answer verified = Run(L"verify");
  EXPECT_EQ(verified.Code, 3u);
  EXPECT_NE(verified.Text.find(KeyName()), std::string::npos) << verified.Text;
  EXPECT_EQ(Run(L"reset admin").Code, 1u) << "no password without the key that the rules ask for";
  std::filesystem::remove(key);
  ASSERT_EQ(Run(L"key create").Code, 0u);
  EXPECT_EQ(Run(L"reset admin").Code, 0u);
  EXPECT_EQ(LogOn(), "1") << "the old password is over";
}

TEST_F(ToolTest, ADamagedDatabaseIsNamedAndABackupBringsItBack) {
  ASSERT_EQ(Run(L"backup \"" + (Folder() / "backup.db").wstring() + L"\"").Code, 0u);
  const auto size = static_cast<std::streamoff>(std::filesystem::file_size(Folder() / "users.db"));
  {
    std::fstream file(Folder() / "users.db", std::ios::binary | std::ios::in | std::ios::out);
    file.seekp(size / 2);
    std::fill_n(std::ostreambuf_iterator<char>(file), 4096, '\x55');
    ASSERT_TRUE(file.flush());
  }
  const Answer damaged = Run(L"verify");
  EXPECT_EQ(damaged.Code, 3u) << damaged.Text;
  EXPECT_EQ(damaged.Text.find("are whole"), std::string::npos) << damaged.Text;
  EXPECT_GT(damaged.Text.size(), 10u) << damaged.Text;
  const Answer restored = Run(L"restore \"" + (Folder() / "backup.db").wstring() + L"\"");
  EXPECT_EQ(restored.Code, 0u) << restored.Text;
  EXPECT_NE(restored.Text.find("What was there before: "), std::string::npos) << restored.Text;
  const Answer whole = Run(L"verify");
  EXPECT_EQ(whole.Code, 0u) << whole.Text;
  EXPECT_EQ(LogOn(), "2");
}

}  // namespace
}  // namespace krx::drive
