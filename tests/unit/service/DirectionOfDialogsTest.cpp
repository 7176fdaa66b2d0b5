#include "support/DialogTest.h"

namespace krx::test {

// What a dialog asks of the runtime besides its own texts.
class DialogDirection : public MessageBoxTest {
 protected:
  bool Mirrored() {
    bool mirrored = false;
    Show({}, [&](Operator& op) {
      mirrored = op.Form().RightToLeft();
      op.Click(u"keyClose");
    });
    return mirrored;
  }
};

TEST_F(DialogDirection, FollowsTheTextOfTheLanguage) {
  runtime.Texts[u"TextDirection"] = u"rtl";
  EXPECT_TRUE(Mirrored());
  runtime.Texts[u"TextDirection"] = u"RTL";
  EXPECT_TRUE(Mirrored());
  runtime.Texts[u"TextDirection"] = u"ltr";
  EXPECT_FALSE(Mirrored());
}

TEST_F(DialogDirection, IsLeftToRightWithARuntimeThatDoesNotKnowTheKey) {
  EXPECT_FALSE(Mirrored());
  runtime.DirectionFails = true;
  EXPECT_FALSE(Mirrored());
}

TEST_F(DialogDirection, CostsOneCallForEachDialog) {
  Mirrored();
  EXPECT_EQ(runtime.DirectionAsked, 1);
  Mirrored();
  EXPECT_EQ(runtime.DirectionAsked, 2);
}

TEST_F(DialogDirection, WordsForCapsLockAreAskedForOnceAndOnlyWhenTheyAreNeeded) {
  runtime.Texts[u"CapsLockOn"] = u"Caps Lock is on";
  Show({}, [this](Operator& op) {
    EXPECT_THAT(log.EntriesOf("GetText CapsLockOn"), ::testing::IsEmpty());
    EXPECT_EQ(op.Form().CapsLockWords(), u"Caps Lock is on");
    EXPECT_EQ(op.Form().CapsLockWords(), u"Caps Lock is on");
    EXPECT_THAT(log.EntriesOf("GetText CapsLockOn"),
                ::testing::ElementsAre("GetText CapsLockOn -105"));
    op.Click(u"keyClose");
  });
}

TEST_F(DialogDirection, ThereAreNoWordsForCapsLockWhereTheRuntimeHasNone) {
  Show({}, [](Operator& op) {
    EXPECT_EQ(op.Form().CapsLockWords(), u"");
    op.Click(u"keyClose");
  });
}

}  // namespace krx::test
