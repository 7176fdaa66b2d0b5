#include "ContractTest.h"
#include "panel/ScreenKeyboard.h"

// The keyboard on the screen, on a layout of the contract's own (Port.h).
namespace krx::test {

namespace {

class BoardContract : public ContractTest {
 protected:
  BoardContract() { PutKeyboardBeside(form); }

  static void PutKeyboardBeside(ui::Form& beside) {
    beside.Panel.Keyboard = KeyboardUse::Always;
    beside.Beside = std::make_unique<panel::ScreenKeyboard>(
        beside, panel::ScreenKeyboard::Source{[] { return String(u"contract"); },
                                              [] { return krx::Font(); }});
  }
  static void TapAll(Hand& hand, StringView text) {
    for (const char16_t unit : text)
      hand.Tap(StringView(&unit, 1));
  }
  // The form with everything in its lower half, as high as the screen, but for so much.
  void FillScreen(Twips but) {
    form.Height = platform.WorkArea().Height - panel::kEdges - but;
    const Twips half = platform.WorkArea().Height / 2;
    form.lblName.Top = half;
    form.txtName.Top = half;
    form.txtPassword.Top = half + 600;
    for (ui::KRXKey* const key : {&form.keyOne, &form.keyTwo, &form.keyClose})
      key->Top = half + 1200;
  }
  void AwaitText(Hand& hand, StringView text) {
    hand.Await([&] { return form.txtName.Text() == text; });
  }
};

TEST_F(BoardContract, TypesLikeAnyKeyboard) {
  form.txtName.KeyPress = [&](char16_t& character) {
    if (character != ui::kKeyBack) log += "P" + std::to_string(character) + " ";
  };
  form.txtName.Change = [&] { log += "change "; };
  Show([&](Hand& hand) {
    hand.AwaitBoard(true);
    TapAll(hand, u"ab");
    AwaitText(hand, u"ab");
    hand.Tap(u"left");
    hand.Tap(u"backspace");
    AwaitText(hand, u"b");
    hand.Tap(u"enter");
    hand.Await([&] { return log.ends_with("P13 "); });
    Leave(hand);
  });
  EXPECT_EQ(log, "P97 change P98 change change P13 ");
  EXPECT_EQ(form.txtName.Text(), u"b") << "Enter types nothing";
}

TEST_F(BoardContract, HasShiftCapsLockAndPages) {
  Show([&](Hand& hand) {
    hand.AwaitBoard(true);
    hand.Tap(u"shift");
    TapAll(hand, u"Ab");
    hand.Tap(u"capslock");
    TapAll(hand, u"CD");
    hand.Tap(u"capslock");
    hand.Tap(u"123");
    TapAll(hand, u"1");
    hand.Tap(u"space");
    hand.Tap(u"ABC");
    TapAll(hand, u"a");
    AwaitText(hand, u"AbCD1 a");
    Leave(hand);
  });
  EXPECT_EQ(form.txtName.Text(), u"AbCD1 a");
}

TEST_F(BoardContract, OffersAccentsWhenAKeyIsHeld) {
  Show([&](Hand& hand) {
    hand.AwaitBoard(true);
    hand.HoldFor(u"e", u"\u00e8");
    AwaitText(hand, u"\u00e8");
    Leave(hand);
  });
  EXPECT_EQ(form.txtName.Text(), u"\u00e8");
}

TEST_F(BoardContract, ReachesPasswords) {
  Show([&](Hand& hand) {
    hand.AwaitBoard(true);
    hand.Press(ui::kKeyTab);
    hand.AwaitFocus(u"txtPassword");
    TapAll(hand, u"abc");
    hand.Await([&] { return form.txtPassword.Text().Length() == 3; });
    Leave(hand);
  });
  EXPECT_EQ(form.txtPassword.Text().View(), u"abc");
}

TEST_F(BoardContract, IsNoStopOfTheTabOrderAndNeverHasTheFocus) {
  Show([](Hand& hand) {
    hand.AwaitFocus(u"txtName");
    hand.AwaitBoard(true);
    hand.Tap(u"a");
    hand.AwaitFocus(u"txtName");
    for (const auto* const next : {u"txtPassword", u"keyOne", u"keyTwo", u"keyClose", u"txtName"}) {
      hand.Press(ui::kKeyTab);
      hand.AwaitFocus(next);
      hand.AwaitBoard(StringView(next).starts_with(u"txt"));
    }
    Leave(hand);
  });
}

TEST_F(BoardContract, ComesByTouchAloneWhereThePlantWantsThat) {
  form.Panel.Keyboard = KeyboardUse::Touch;
  Show([&](Hand& hand) {
    hand.AwaitFocus(u"txtName");
    hand.Type(u"a");
    AwaitText(hand, u"a");
    hand.AwaitBoard(false);
    hand.TouchField(u"txtPassword");
    hand.AwaitBoard(true);
    hand.Tap(u"hide");
    hand.AwaitBoard(false);
    hand.TouchField(u"txtPassword");
    hand.AwaitBoard(true);
    Leave(hand);
  });
}

TEST_F(BoardContract, BelongsToTheFormInUse) {
  ContractForm inner(platform, u"FInner");
  PutKeyboardBeside(inner);
  form.keyOne.Click = [&] { inner.ShowModal(); };
  Show([&](Hand& hand) {
    hand.AwaitBoard(true);
    hand.Open(u"keyOne", u"FInner", [&](Hand& inside) {
      inside.AwaitBoard(true);
      inside.Tap(u"b");
      inside.Await([&] { return inner.txtName.Text() == u"b"; });
      Leave(inside);
    });
    hand.Press(ui::kKeyTab, ui::kShift);
    hand.AwaitFocus(u"txtPassword");
    hand.AwaitBoard(true);
    hand.Tap(u"a");
    hand.Await([&] { return form.txtPassword.Text().Length() == 1; });
    Leave(hand);
  });
  EXPECT_EQ(form.txtName.Text(), u"") << "the outer form heard nothing";
}

TEST_F(BoardContract, MovesTheFormUpAndBack) {
  const Rect area = platform.WorkArea();
  const Twips home = area.Top + area.Height - form.Height() - panel::kEdges;
  form.Appear = [&] { form.Move(form.Left(), home); };
  Show([&](Hand& hand) {
    hand.AwaitBoard(true);
    hand.Await([&] {
      return form.Top() < home && form.Top() + form.Height() + panel::kEdges <= hand.Board().Top;
    });
    EXPECT_FLOAT_EQ(hand.Board().Top + hand.Board().Height, area.Top + area.Height);
    hand.Tap(u"hide");
    hand.Await([&] { return form.Top() == home; });
    Leave(hand);
  });
}

TEST_F(BoardContract, StandsAtTheTopWhereTheFormCanStayForThat) {
  FillScreen(600);
  const Rect area = platform.WorkArea();
  Twips before = 0;
  form.Appear = [&] {
    form.Move(form.Left(), area.Top + 600);
    before = form.Top();
  };
  Show([&](Hand& hand) {
    hand.AwaitBoard(true);
    const Rect board = hand.Board();
    EXPECT_FLOAT_EQ(board.Top, area.Top);
    EXPECT_LE(board.Top + board.Height, form.Top() + form.txtName.Top());
    hand.Tap(u"a");
    AwaitText(hand, u"a");
    EXPECT_FLOAT_EQ(form.Top(), before);
    Leave(hand);
  });
  EXPECT_EQ(form.txtName.Text(), u"a");
}

}  // namespace

}  // namespace krx::test
