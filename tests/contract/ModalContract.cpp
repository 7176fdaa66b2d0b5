#include <atomic>

#include "ContractTest.h"
#include "base/Error.h"

namespace krx::test {

namespace {

using ModalContract = ContractTest;

TEST_F(ModalContract, HidingEndsTheCallAndKeepsTheFormLoaded) {
  form.keyOne.Click = [&] { form.Hide(); };
  for (int i = 0; i < 2; ++i) {
    Show([](Hand& hand) { hand.Click(u"keyOne"); });
    EXPECT_FALSE(form.Visible());
    EXPECT_TRUE(form.Loaded());
  }
}

TEST_F(ModalContract, AFormMayUnloadItselfInItsOwnHandler) {
  int unloads = 0;
  form.UnloadStep = [&] { ++unloads; };
  form.keyOne.Click = [&] {
    form.Unload();
    form.keyOne.Caption = u"still there";
  };
  Show([](Hand& hand) { hand.Click(u"keyOne"); });
  EXPECT_EQ(unloads, 1);
  EXPECT_FALSE(form.Loaded());
  EXPECT_EQ(form.ThePeer(), nullptr);
}

TEST_F(ModalContract, AnErrorOfAHandlerIsThrownByTheCallThatShowsTheForm) {
  form.keyOne.Click = [] { throw RuntimeError(5, u"wrong"); };
  try {
    Show([](Hand& hand) { hand.Click(u"keyOne"); });
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_EQ(ToUtf8(error.Description()), "wrong");
  }
  EXPECT_FALSE(form.Visible());
  EXPECT_FALSE(form.Loaded());
}

TEST_F(ModalContract, AnInnerFormReturnsToTheHandlerThatOpenedIt) {
  ContractForm inner(platform, u"FInner");
  form.keyOne.Click = [&] {
    log += "(";
    inner.ShowModal();
    log += ")";
  };
  inner.keyTwo.Click = [&] { log += "inner"; };
  Show([](Hand& hand) {
    hand.Open(u"keyOne", u"FInner", [](Hand& inside) {
      inside.Click(u"keyTwo");
      Leave(inside);
    });
    Leave(hand);
  });
  EXPECT_EQ(log, "(inner)");
  EXPECT_EQ(inner.Cancels, 1);
  EXPECT_EQ(form.Cancels, 1);
}

// The second form comes up by itself, under the operator's hand, with a button where the first has
// one.
TEST_F(ModalContract, AButtonHeldAsAFormComesUpAnswersNeitherOfBoth) {
  ContractForm inner(platform, u"FInner");
  form.keyOne.Click = [&] { log += "outer "; };
  form.keyOne.MouseDown = [&](int, int, Twips, Twips) { form.tmrTick.Enabled = true; };
  form.tmrTick.Interval = 10;
  form.tmrTick.Tick = [&] {
    form.tmrTick.Enabled = false;
    inner.ShowModal();
  };
  inner.keyOne.Click = [&] { log += "inner "; };
  Show([&](Hand& hand) {
    hand.HoldWhile(u"keyOne", u"FInner", [&](Hand& inside) {
      inside.LetGo(u"keyOne");
      inside.Press(ui::kKeyTab);  // has its turn behind the release
      inside.AwaitFocus(u"txtPassword");
      EXPECT_EQ(log, "");
      inside.Click(u"keyOne");
      inside.Await([&] { return log == "inner "; });
      Leave(inside);
    });
    Leave(hand);
  });
  EXPECT_EQ(log, "inner ");
  EXPECT_EQ(form.Cancels, 1);
}

TEST_F(ModalContract, AFormThatIsShownCannotBeShownTwice) {
  form.keyOne.Click = [&] {
    try {
      form.ShowModal();
    } catch (const Error&) {
      log += "refused";
    }
  };
  Show([](Hand& hand) {
    hand.Click(u"keyOne");
    Leave(hand);
  });
  EXPECT_EQ(log, "refused");
}

TEST_F(ModalContract, TimersTickUntilTheyAreDisabled) {
  std::atomic<int> ticks = 0;
  std::atomic<int> later = 0;
  ui::Timer other(form, u"tmrOther");
  form.tmrTick.Interval = 20;
  form.tmrTick.Enabled = true;
  form.tmrTick.Tick = [&] {
    if (++ticks == 3) form.tmrTick.Enabled = false;
  };
  other.Interval = 30;
  other.Enabled = true;
  other.Tick = [&] { later += ticks == 3; };
  Show([&](Hand& hand) {
    hand.Await([&] { return later >= 4; });
    Leave(hand);
  });
  EXPECT_EQ(ticks, 3);
}

}  // namespace

}  // namespace krx::test
