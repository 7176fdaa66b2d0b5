// Every button of every button set, clicked with the mouse by an operator of a script client.

#include <algorithm>

#include "support/DialogTest.h"

namespace krx::drive {
namespace {

struct Button {
  std::string Key;  // of its text
  std::string Result;
};

struct ButtonSet {
  int Style;
  std::vector<Button> Buttons;
};

class ButtonSets : public DialogTest, public ::testing::WithParamInterface<ButtonSet> {};

TEST_P(ButtonSets, EachButtonShowsItsTextAndReturnsItsCode) {
  const auto& buttons = GetParam().Buttons;
  RunScript("Dim i\r\nFor i = 1 To " + std::to_string(buttons.size()) +
            "\r\nWScript.Echo Dialogs.KRMsgBox(\"Text\", " + std::to_string(GetParam().Style) +
            ", \"Title\")\r\nNext\r\n");
  Lines expected;
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    const Window box = NextBox();
    ASSERT_EQ(VisibleButtons(box).size(), buttons.size());
    for (std::size_t k = 0; k < buttons.size(); ++k)
      EXPECT_EQ(Shown(box.Child(L"keyButton(" + std::to_wstring(k) + L")")), Text(buttons[k].Key));
    box.Child(L"keyButton(" + std::to_wstring(i) + L")").Click();
    box.WaitUntilGone();
    expected.push_back(buttons[i].Result);
  }
  EXPECT_EQ(Printed(), expected);
}

TEST_P(ButtonSets, CloseButtonReturnsTheDefaultButtonsCode) {
  const auto& buttons = GetParam().Buttons;
  RunScript("Dim i\r\nFor i = 0 To " + std::to_string(buttons.size() - 1) +
            "\r\nWScript.Echo Dialogs.KRMsgBox(\"Text\", " + std::to_string(GetParam().Style) +
            " + 256 * i, \"Title\")\r\nNext\r\n");
  Lines expected;
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    const Window box = NextBox();
    box.WaitForFocusOn(L"keyButton(" + std::to_wstring(i) + L")");
    box.Child(L"keyClose").Click();
    box.WaitUntilGone();
    expected.push_back(buttons[i].Result);
  }
  EXPECT_EQ(Printed(), expected);
}

INSTANTIATE_TEST_SUITE_P(
    All, ButtonSets,
    ::testing::Values(ButtonSet{0, {{"OK", "1"}}}, ButtonSet{1, {{"OK", "1"}, {"Cancel", "2"}}},
                      ButtonSet{2, {{"Abort", "3"}, {"Retry", "4"}, {"Ignore", "5"}}},
                      ButtonSet{3, {{"Yes", "6"}, {"No", "7"}, {"Cancel", "2"}}},
                      ButtonSet{4, {{"Yes", "6"}, {"No", "7"}}},
                      ButtonSet{5, {{"Retry", "4"}, {"Cancel&", "2"}}}),
    [](const auto& run) { return "Set" + std::to_string(run.param.Style); });

class OtherSets : public DialogTest {};

TEST_F(OtherSets, SetSixWithoutAFreeButtonHasNoAnswerButtonAndReturnsZero) {
  RunScript(Ask(6));
  const Window box = NextBox();
  EXPECT_TRUE(VisibleButtons(box).empty());
  box.Child(L"keyClose").Click();
  EXPECT_EQ(Printed(), Lines{"0"});
}

TEST_F(OtherSets, EveryIconStyleShowsAPictureAndNoneShowsNone) {
  RunScript(
      "Dim style\r\nFor Each style In Array(0, 16, 32, 48, 64)\r\n"
      "WScript.Echo Dialogs.KRMsgBox(\"Text\", style, \"Title\")\r\nNext\r\n");
  for (const bool has_icon : {false, true, true, true, true}) {
    const Window box = NextBox();
    const auto icon = box.Find(L"picIcon");
    EXPECT_EQ(icon && icon->Visible(), has_icon);
    box.Child(L"keyButton(0)").Click();
    box.WaitUntilGone();
  }
  EXPECT_EQ(Printed(), (Lines{"1", "1", "1", "1", "1"}));
}

}  // namespace
}  // namespace krx::drive
