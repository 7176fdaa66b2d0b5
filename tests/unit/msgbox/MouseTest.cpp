#include "support/DialogTest.h"
#include "ui/Keyboard.h"

namespace krx::test {

class FMessageBoxMouse : public MessageBoxTest {};

TEST_F(FMessageBoxMouse, LeftButtonDragsTheBoxByItsCaption) {
  Show({}, [](Operator& op) {
    op.Form().Move(1000, 2000);
    const Twips width = op.Form().Width();
    op.MouseDown(u"idxCaption", ui::kLeftButton, 100, 50);
    op.MouseMove(u"idxCaption", ui::kLeftButton, 130, 30);
    // 1000 + 130 - 100, 2000 + 30 - 50.
    EXPECT_EQ(op.Form().Left(), 1030);
    EXPECT_EQ(op.Form().Top(), 1980);
    // The position counts from the caption, which has moved along: the same offset moves on.
    op.MouseMove(u"idxCaption", ui::kLeftButton, 130, 30);
    EXPECT_EQ(op.Form().Left(), 1060);
    EXPECT_EQ(op.Form().Top(), 1960);
    EXPECT_EQ(op.Form().Width(), width);
    op.Click(u"keyClose");
  });
}

TEST_F(FMessageBoxMouse, OtherButtonsDoNotDrag) {
  Show({}, [](Operator& op) {
    op.Form().Move(1000, 2000);
    for (const int button : {0, ui::kRightButton, 3, 4}) {
      op.MouseDown(u"idxCaption", button, 100, 50);
      op.MouseMove(u"idxCaption", button, 300, 300);
    }
    EXPECT_EQ(op.Form().Left(), 1000);
    EXPECT_EQ(op.Form().Top(), 2000);
    op.Click(u"keyClose");
  });
}

TEST_F(FMessageBoxMouse, RightButtonDoesNotMoveTheOriginOfADrag) {
  Show({}, [](Operator& op) {
    op.Form().Move(0, 0);
    op.MouseDown(u"idxCaption", ui::kLeftButton, 100, 50);
    op.MouseDown(u"idxCaption", ui::kRightButton, 10, 10);
    op.MouseMove(u"idxCaption", ui::kLeftButton, 101, 52);
    EXPECT_EQ(op.Form().Left(), 1);
    EXPECT_EQ(op.Form().Top(), 2);
    op.Click(u"keyClose");
  });
}

// The button went down on the margin, and the pointer sweeps over the caption line.
TEST_F(FMessageBoxMouse, AButtonPressedElsewhereDoesNotDrag) {
  Show({}, [](Operator& op) {
    op.Form().Move(1000, 2000);
    op.MouseMove(u"idxCaption", ui::kLeftButton, 100, 50);
    op.MouseMove(u"idxCaption", ui::kLeftButton, 300, 80);
    EXPECT_EQ(op.Form().Left(), 1000);
    EXPECT_EQ(op.Form().Top(), 2000);
    op.Click(u"keyClose");
  });
}

TEST_F(FMessageBoxMouse, AReleasedCaptionLineIsPressedAnewToDrag) {
  Show({}, [](Operator& op) {
    op.Form().Move(1000, 2000);
    op.MouseDown(u"idxCaption", ui::kLeftButton, 100, 50);
    op.MouseUp(u"idxCaption", ui::kLeftButton, 100, 50);
    op.MouseMove(u"idxCaption", ui::kLeftButton, 300, 80);
    EXPECT_EQ(op.Form().Left(), 1000);
    op.MouseDown(u"idxCaption", ui::kLeftButton, 100, 50);
    op.MouseMove(u"idxCaption", 0, 100, 50);  // released out of sight
    op.MouseMove(u"idxCaption", ui::kLeftButton, 300, 80);
    EXPECT_EQ(op.Form().Left(), 1000);
    op.MouseDown(u"idxCaption", ui::kLeftButton, 100, 50);
    op.MouseMove(u"idxCaption", ui::kLeftButton, 110, 50);
    EXPECT_EQ(op.Form().Left(), 1010);
    op.Click(u"keyClose");
  });
}

TEST_F(FMessageBoxMouse, MessageIsNoHandle) {
  Show({}, [](Operator& op) {
    op.Form().Move(0, 0);
    op.MouseDown(u"idxMessage", ui::kLeftButton, 0, 0);
    op.MouseMove(u"idxMessage", ui::kLeftButton, 50, 50);
    EXPECT_EQ(op.Form().Left(), 0);
    op.Click(u"keyClose");
  });
}

TEST_F(FMessageBoxMouse, HelpSendsTwoCharactersAndKeepsBoxAndResult) {
  const auto result =
      Show({.Style = kYesNo + kDefaultButton2, .HelpFile = u"h"}, [this](Operator& op) {
        op.Click(u"keyHelp");
        EXPECT_TRUE(op.Form().Visible());
        EXPECT_EQ(dynamic_cast<msgbox::FMessageBox&>(op.Form()).Result, 7);
        EXPECT_EQ(platform.SentKeys, std::vector<String>{u"F1"});
        op.Click(u"keyClose");
      });
  EXPECT_EQ(result, 7);
  const ui::Keystroke f{0, u'F', 0};
  const ui::Keystroke one{0, u'1', 0};
  EXPECT_THAT(ui::ParseKeystrokes(platform.SentKeys[0]), ::testing::ElementsAre(f, one));
}

TEST_F(FMessageBoxMouse, CloseButtonTakesNoFocus) {
  Show({}, [](Operator& op) {
    op.Click(u"keyClose");
    EXPECT_FALSE(op.Form().Visible());
    EXPECT_EQ(op.Focus(), u"keyButton(0)");
  });
}

TEST_F(FMessageBoxMouse, ClickUnloadsTheFormAtOnce) {
  Show({}, [](Operator& op) {
    op.Click(u"keyButton(0)");
    EXPECT_FALSE(op.Form().Loaded());
    EXPECT_FALSE(op.Form().Visible());
  });
}

TEST_F(FMessageBoxMouse, ClickedHelpButtonGetsTheFocusAndARepaintTakesItNotBack) {
  Show({.HelpFile = u"h"}, [](Operator& op) {
    op.Click(u"keyHelp");
    op.Uncover();
    EXPECT_EQ(op.Focus(), u"keyHelp");
    op.Click(u"keyClose");
  });
}

TEST_F(FMessageBoxMouse, BoxOpenedFromABoxIsIndependentOfIt) {
  const auto outer = Show({.Style = kYesNo}, [this](Operator& op) {
    EXPECT_EQ(
        Show({.Style = kAbortRetryIgnore}, [](Operator& inner) { inner.Click(u"keyButton(2)"); }),
        5);
    EXPECT_TRUE(op.Form().Visible());
    EXPECT_EQ(op.Focus(), u"keyButton(0)");
    op.Click(u"keyButton(1)");
  });
  EXPECT_EQ(outer, 7);
}

}  // namespace krx::test
