// The notice before log-on as the reference runtime finds it, under real keys and the real mouse.

#include "users/UsersTest.h"

namespace krx::drive {
namespace {

struct LogOnWay {
  const char* Call;
  const wchar_t* Form;
  const wchar_t* Name;
};

void PrintTo(const LogOnWay& way, std::ostream* out) {
  *out << way.Call;
}

class LogOnNotice : public UsersTest, public ::testing::WithParamInterface<LogOnWay> {
 protected:
  void SetUp() override {
    UsersTest::SetUp();
    Store->Write("log-on-notice.txt", "Authorised staff only.\r\nWhat you do is recorded.\r\n");
    Store->Write("log-on-notice.de.txt", "Nur f\xC3\xBCr Befugte.\n");
  }
  // The notice of the next log-on, waiting for its answer.
  Window Notice() {
    Window box = NextBox();
    box.WaitUntilAtRest(L"keyButton(0)");
    return box;
  }
  void ExpectTheDialogNext(const Window& box) {
    box.WaitUntilGone();
    Form(GetParam().Form, GetParam().Name);
    PressKey(L"Esc");
    EXPECT_EQ(Printed(), (Lines{"False, nobody", "end"}));
  }
};

TEST_P(LogOnNotice, IsAcknowledgedByEnter) {
  RunDialog(GetParam().Call);
  const Window box = Notice();
  EXPECT_EQ(Narrow(box.Child(L"idxMessage").Text()),
            "Authorised staff only.\nWhat you do is recorded.");
  EXPECT_EQ(Narrow(box.Child(L"idxCaption").Text()), Narrow(Text("capLogon")));
  EXPECT_EQ(VisibleButtons(box), (std::vector<std::wstring>{L"keyButton(0)", L"keyButton(1)"}));
  EXPECT_TRUE(Forms(GetParam().Form).empty());
  PressKey(L"Enter");
  ExpectTheDialogNext(box);
}

TEST_P(LogOnNotice, IsAcknowledgedByTheMouse) {
  RunDialog(GetParam().Call);
  const Window box = Notice();
  box.Child(L"keyButton(0)").Click();
  ExpectTheDialogNext(box);
}

TEST_P(LogOnNotice, LeavesTheLogOnWithoutAnAnswer) {
  RunUserScript(std::string("Dim i\r\nFor i = 1 To 3\r\nWScript.Echo CStr(Dialogs.") +
                GetParam().Call + ")\r\nNext\r\n");
  Notice();
  PressKey(L"Esc");
  Notice().Child(L"keyClose").Click();
  const Window last = Notice();
  PressKey(L"Right");
  last.WaitForFocusOn(L"keyButton(1)");
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), (Lines{"False", "False", "False", "end"}));
}

TEST_P(LogOnNotice, ComesInTheLanguageOfTheRuntime) {
  RunUserScript(std::string("Runtime.Language = \"de\"\r\nWScript.Echo CStr(Dialogs.") +
                GetParam().Call + ")\r\n");
  const Window box = Notice();
  EXPECT_EQ(Narrow(box.Child(L"idxMessage").Text()), Narrow(L"Nur f\u00FCr Befugte."));
  EXPECT_EQ(Narrow(box.Child(L"idxCaption").Text()), Narrow(drive::Text("capLogon", "de")));
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), (Lines{"False", "end"}));
}

TEST_P(LogOnNotice, OneThatIsNoTextIsRecordedAndKeepsNobodyOut) {
  Store->Write("log-on-notice.txt", "Authorised\n\xFF\n");
  RunUserScript(
      "Dim panel\r\nSet panel = CreateObject(\"KorvelRuntime.PanelSettings\")\r\n"
      "On Error Resume Next\r\nDim text\r\ntext = panel.LogOnNotice\r\n"
      "WScript.Echo Hex(Err.Number) & \" \" & Mid(Err.Description, "
      "InStrRev(Err.Description, \"\\\") + 1)\r\nOn Error Goto 0\r\n"
      "WScript.Echo CStr(Dialogs." +
      std::string(GetParam().Call) + ")\r\n");
  Form(GetParam().Form, GetParam().Name);
  PressKey(L"Esc");
  const std::string reason = "log-on-notice.txt, line 2: the line is not UTF-8";
  EXPECT_EQ(Printed(), (Lines{"80040212 " + reason, "False", "end"}));
  const std::string log = Store->AuditLog();
  const auto at = log.find("read notice");
  ASSERT_NE(at, std::string::npos) << log;
  EXPECT_NE(log.find(reason, at), std::string::npos) << log;
  EXPECT_EQ(log.find("read notice", at + 1), std::string::npos) << log;
}

INSTANTIATE_TEST_SUITE_P(
    Dialogs, LogOnNotice,
    ::testing::Values(LogOnWay{"KRUserLogOn()", L"FLogOn", L"txtName"},
                      LogOnWay{"KRUserLogOnCombo()", L"FLogOnCombo", L"cboName"}),
    [](const auto& way) { return std::string(way.index == 0 ? "TypedName" : "ListedName"); });

}  // namespace
}  // namespace krx::drive
