#include "support/DialogTest.h"
#include "ui/Keyboard.h"

// Ctrl+C in a box, in the form in which the platform's own box gives it.
namespace krx::test {

class FMessageBoxCopy : public MessageBoxTest {
 protected:
  static constexpr StringView kLine = u"---------------------------\r\n";

  void Copy(const BoxCall& call, int key = u'C', int shift = ui::kControl) {
    Show(call, [&](Operator& op) {
      op.Press(key, shift);
      EXPECT_TRUE(op.Form().Visible());
      op.Click(u"keyClose");
    });
  }
};

TEST_F(FMessageBoxCopy, HoldsCaptionTextAndButtonsBetweenLines) {
  runtime.Texts = {{u"Yes", u"&Yes"}, {u"No", u"&No"}};
  Copy({.Text = u"Stop the pump?", .Style = kYesNo, .Title = u"Plant"});
  EXPECT_EQ(platform.Clipboard, String(kLine) + u"Plant\r\n" + String(kLine) +
                                    u"Stop the pump?\r\n" + String(kLine) + u"Yes   No   \r\n" +
                                    String(kLine));
}

TEST_F(FMessageBoxCopy, HoldsEveryLineOfTheWholeTextAndTheHelpButton) {
  const String longest(300, u'x');
  Copy({.Text = u"a\n" + longest, .HelpFile = u"h", .Button1 = u"Go && stop"});
  EXPECT_NE(platform.Clipboard.find(u"a\r\n" + longest + u"\r\n"), String::npos);
  EXPECT_NE(platform.Clipboard.find(u"Go & stop   Help   \r\n"), String::npos);
}

TEST_F(FMessageBoxCopy, ComesWithTheOlderKeyAsWell) {
  Copy({}, ui::kKeyInsert);
  EXPECT_NE(platform.Clipboard, u"");
}

TEST_F(FMessageBoxCopy, ComesWithNoOtherKey) {
  Copy({}, u'C', ui::kControl | ui::kShift);
  Copy({}, u'C', 0);
  Copy({}, u'X', ui::kControl);
  EXPECT_EQ(platform.Clipboard, u"");
}

// What the seconds on a button add is worked out here: a character of 8 points is 80 wide.
class FMessageBoxSeconds : public MessageBoxTest {
 protected:
  FMessageBoxSeconds() { runtime.Panel.ShowCountdown = true; }
  const BoxCall call{.Style = kYesNo + kDefaultButton2, .AutoActivation = 11};
};

TEST_F(FMessageBoxSeconds, StandOnTheDefaultButtonAndRunDown) {
  runtime.Texts = {{u"No", u"&No"}};
  const auto result = Show(call, [](Operator& op) {
    const auto& key = op.Get<ui::KRXKey>(u"keyButton(1)");
    EXPECT_EQ(key.Caption(), u"&No (11)");
    EXPECT_EQ(op.Get<ui::KRXKey>(u"keyButton(0)").Caption(), u"Yes");
    op.Wait(std::chrono::seconds(2));
    EXPECT_EQ(key.Caption(), u"&No (9)");
    op.Wait(std::chrono::seconds(8));
    EXPECT_EQ(key.Caption(), u"&No (1)");
    op.Wait(std::chrono::seconds(1));
    EXPECT_FALSE(op.Form().Visible());
  });
  EXPECT_EQ(result, 7);
}

TEST_F(FMessageBoxSeconds, MoveNothingWhileTheyRunDownNorWhenTheScreenChanges) {
  runtime.Texts = {{u"No", u"A rather long caption"}};
  Show(call, [](Operator& op) {
    const auto& key = op.Get<ui::KRXKey>(u"keyButton(1)");
    const Rect before = key.Bounds();
    EXPECT_EQ(before.Width, (21 + 5) * 80 + 180) << "the caption, blank, (11)";
    op.Wait(std::chrono::seconds(5));
    op.Form().ScreenChanged();
    EXPECT_EQ(key.Bounds(), before);
    EXPECT_EQ(key.Caption(), u"A rather long caption (6)");
    op.Click(u"keyClose");
  });
}

TEST_F(FMessageBoxSeconds, StandNowhereWithoutAutoActivation) {
  Show({.Style = kYesNo}, [](Operator& op) {
    EXPECT_EQ(op.Get<ui::KRXKey>(u"keyButton(0)").Caption(), u"Yes");
    op.Click(u"keyClose");
  });
}

TEST_F(FMessageBoxSeconds, StandNowhereWhereNobodyAsksForThem) {
  runtime.Panel.ShowCountdown = false;
  Show(call, [](Operator& op) {
    EXPECT_EQ(op.Get<ui::KRXKey>(u"keyButton(1)").Caption(), u"No");
    op.Click(u"keyClose");
  });
}

TEST_F(FMessageBoxSeconds, ActivateTheButtonAlsoBeforeTheFirstAnswerCounts) {
  runtime.Panel.FirstAnswerDelay = 1;
  const auto result = Show({.Style = kYesNo, .AutoActivation = 1}, [](Operator& op) {
    op.Click(u"keyButton(1)");
    EXPECT_TRUE(op.Form().Visible()) << "too early for an answer";
    op.Wait(std::chrono::seconds(1));
    EXPECT_FALSE(op.Form().Visible());
  });
  EXPECT_EQ(result, 6);
}

}  // namespace krx::test
