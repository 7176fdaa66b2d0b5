// Every script in the documents runs to its end, and the example of a member opens the member's
// dialog.

#include "documents/Examples.h"

#include <algorithm>
#include <regex>

#include "documents/Markdown.h"
#include "users/UsersTest.h"

namespace krx::drive {
namespace {

using tests::Example;

constexpr const char* kEnd = "end of the example";

// As the script host reads files without a mark: in the code page of Western Europe.
std::string ForScriptHost(const std::string& text) {
  constexpr UINT kWesternEurope = 1252;
  const std::wstring wide = Widen(text);
  std::string bytes(wide.size(), '\0');
  const int length = static_cast<int>(wide.size());
  WideCharToMultiByte(kWesternEurope, 0, wide.data(), length, bytes.data(), length, nullptr,
                      nullptr);
  return bytes;
}

// The dialog that a page of the reference tells of; none on other pages.
std::wstring FormOf(const std::string& page) {
  const std::string text = tests::ReadText(std::string(KRX_CHECKOUT "/") + page);
  std::smatch form;
  const std::regex fact(R"re(\| (?:Form|Formular) \| `(\w+)` \|)re");
  return std::regex_search(text, form, fact) ? Widen(form[1]) : std::wstring();
}

class DocumentScripts : public UsersTest, public ::testing::WithParamInterface<Example> {
 protected:
  // With the administrator logged on, whom some dialogs want to know.
  void RunExample() {
    RunPlainScript(
        "Set krx_session = CreateObject(\"KorvelRuntime.UserSession\")\r\n"
        "krx_session.LogOnUser " +
        ScriptLiteral(kAdministrator) + ", " + ScriptLiteral(kPassword) + ", krx_result\r\n" +
        ForScriptHost(GetParam().Whole()) + "WScript.Echo \"" + kEnd + "\"\r\n");
  }

  // Leaves every dialog that opens, until the script has ended; returns their names.
  std::vector<std::wstring> LeaveAll() {
    std::vector<std::wstring> left;
    while (const auto form = Next()) {
      left.push_back(form->Name());
      form->WaitUntilActive();
      // Where a finger is expected, only the button gives up.
      form->Child(left.back().ends_with(L"Touch") ? L"keyCancel" : L"keyClose").Click();
      form->WaitUntilGone();
    }
    return left;
  }

 private:
  std::optional<Window> Next() {
    std::vector<Window> open;
    const bool told = Within(kPatience, [&] {
      open = Forms(L"");
      return !open.empty() || !TheClient().Running();
    });
    if (!told) throw std::runtime_error("the script neither opens a dialog nor ends");
    return open.empty() ? std::nullopt : std::optional(open.front());
  }
};

TEST_P(DocumentScripts, RunToTheirEnd) {
  RunExample();
  const auto left = LeaveAll();
  const Lines printed = Printed();
  ASSERT_FALSE(printed.empty());
  EXPECT_EQ(printed.back(), kEnd) << ::testing::PrintToString(printed);
  const std::wstring form = FormOf(GetParam().Page);
  EXPECT_TRUE(form.empty() || std::find(left.begin(), left.end(), form) != left.end())
      << Narrow(form) << " has not opened but " << left.size() << " others";
}

INSTANTIATE_TEST_SUITE_P(Of, DocumentScripts, ::testing::ValuesIn(tests::Examples(KRX_CHECKOUT)),
                         [](const auto& test) { return test.param.Name(); });

}  // namespace
}  // namespace krx::drive
