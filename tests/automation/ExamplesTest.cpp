// The examples that this platform can run do what their texts promise.

#include "support/DialogTest.h"

namespace krx::drive {
namespace {

class Examples : public DialogTest {
 protected:
  void AnswerAndExpect(const wchar_t* key, const std::string& line) {
    const Window box = NextBox();
    EXPECT_EQ(box.Text(), L"Pump");
    box.Child(key).Click();
    EXPECT_EQ(Printed(), Lines{line});
  }
};

TEST_F(Examples, VbScriptAsksAndPrintsTheAnswer) {
  RunCommand(L"cscript.exe //nologo " + Widen(KRX_EXAMPLES "/message_box.vbs"));
  AnswerAndExpect(L"keyButton(1)", "Nothing happens.");
}

TEST_F(Examples, CPlusPlusAsksAndPrintsTheAnswer) {
  RunProgram("message_box.exe");
  AnswerAndExpect(L"keyButton(0)", "The pump starts.");
}

}  // namespace
}  // namespace krx::drive
