// The message box under the keyboard: focus, tab order, access keys, Enter, Space and Esc.

#include "support/DialogTest.h"

namespace krx::drive {
namespace {

constexpr const wchar_t* kFirst = L"keyButton(0)";
constexpr const wchar_t* kSecond = L"keyButton(1)";
constexpr const wchar_t* kThird = L"keyButton(2)";

constexpr int kYesNoCancel = 3;

struct Stroke {
  const wchar_t* Key;
  const wchar_t* Focus;  // control that has it then; null for the key that ends the box
};

struct Answer {
  const char* Name;
  int Style;
  const wchar_t* Start;  // control that has the focus at first; null where none has it
  std::vector<Stroke> Strokes;
  const char* Result;
};

void PrintTo(const Answer& answer, std::ostream* out) {
  *out << answer.Name;
}

class AnswerByKeyboard : public DialogTest, public ::testing::WithParamInterface<Answer> {};

TEST_P(AnswerByKeyboard, GivesTheResult) {
  RunScript(Ask(GetParam().Style));
  const Window box = NextBox();
  if (GetParam().Start) box.WaitForFocusOn(GetParam().Start);
  for (const auto& [key, focus] : GetParam().Strokes) {
    PressKey(key);
    if (focus) box.WaitForFocusOn(focus);
  }
  EXPECT_EQ(Printed(), Lines{GetParam().Result});
}

const Answer kAnswers[] = {
    {"EnterPressesTheDefaultButton", kYesNoCancel, kFirst, {{L"Enter", nullptr}}, "6"},
    {"EnterPressesTheFocusedButtonEvenIfAnotherIsTheDefault",
     kYesNoCancel,
     kFirst,
     {{L"Tab", kSecond}, {L"Enter", nullptr}},
     "7"},
    {"SpacePressesTheFocusedButton", kYesNoCancel + 512, kThird, {{L"Space", nullptr}}, "2"},
    {"TabAndShiftTabRunThroughTheButtonsInBothDirections",
     kYesNoCancel,
     kFirst,
     {{L"Tab", kSecond},
      {L"Tab", kThird},
      {L"Shift+Tab", kSecond},
      {L"Shift+Tab", kFirst},
      {L"Enter", nullptr}},
     "6"},
    {"EscDoesWhatTheCloseButtonDoesAndReturnsTheDefaultButtonsCode",
     kYesNoCancel + 256,
     kSecond,
     {{L"Esc", nullptr}},
     "7"},
    {"EscClosesABoxWithoutAnswerButton", 6, nullptr, {{L"Esc", nullptr}}, "0"},
    // As everywhere in dialogs: where no text can be typed, the letter alone will do.
    {"AnAccessKeyNeedsNoModifier", kYesNoCancel, kFirst, {{L"n", nullptr}}, "7"},
};
INSTANTIATE_TEST_SUITE_P(Keyboard, AnswerByKeyboard, ::testing::ValuesIn(kAnswers),
                         [](const auto& test) { return std::string(test.param.Name); });

class Keyboard : public DialogTest {};

TEST_F(Keyboard, TabComesRoundToWhereItStarted) {
  RunScript(Ask(kYesNoCancel));
  const Window box = NextBox();
  box.WaitForFocusOn(kFirst);
  // At most the three answers and the close button take part.
  bool round = false;
  for (int i = 0; i < 4 && !round; ++i) {
    const auto before = box.FocusedChild();
    PressKey(L"Tab");
    ASSERT_TRUE(Within(kPatience, [&] {
      const auto now = box.FocusedChild();
      return now && !(*now == *before);
    }));
    round = box.FocusedChild()->Name() == kFirst;
  }
  EXPECT_TRUE(round);
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), Lines{"6"});
}

TEST_F(Keyboard, AccessKeysPressTheirButtons) {
  RunScript(
      "Dim i\r\nFor i = 1 To 3\r\n"
      "WScript.Echo Dialogs.KRMsgBoxEx(\"Text\", 0, \"Title\", \"\", 0, \"&First\", \"Secon&d\", "
      "\"&Third\")\r\nNext\r\n");
  for (const wchar_t* key : {L"Alt+d", L"Alt+t", L"Alt+f"}) {
    const Window box = NextBox();
    PressKey(key);
    box.WaitUntilGone();
  }
  EXPECT_EQ(Printed(), (Lines{"12", "13", "11"}));
}

TEST_F(Keyboard, OtherKeysLeaveTheBoxOpen) {
  RunScript(Ask(kYesNoCancel));
  const Window box = NextBox();
  box.WaitForFocusOn(kFirst);
  PressKey(L"Alt+q");
  TypeText(L"xz");
  PressKey(L"Delete");
  PressKey(L"Tab");
  box.WaitForFocusOn(kSecond);  // all keys before have been handled
  EXPECT_TRUE(box.Visible());
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), Lines{"7"});
}

}  // namespace
}  // namespace krx::drive
