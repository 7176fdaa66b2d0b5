#include <string>

#include "ContractTest.h"
#include "ui/RowList.h"

namespace krx::test {

namespace {

using What = TouchAct::What;

constexpr Twips kRowOfGrid = 600;  // whole pixels, and more than the font needs

// A touch grid of a hundred rows, about ten of them in sight; Esc hides the form.
class GridOfRows : public ui::Form {
 public:
  explicit GridOfRows(ui::Platform& platform) : Form(platform, u"FTouch") {
    Width = 6000;
    Height = 7200;
    grd.Place({180, 180, 5400, 10 * kRowOfGrid + 90});
    grd.RowMinHeight = kRowOfGrid;
    keyClose.Place({180, 6500, 1200, 375});
    keyClose.Caption = u"&Close";
    CancelKey = &keyClose;
    keyClose.Click = [this] { Hide(); };
    std::vector<std::vector<String>> rows;
    for (int i = 0; i < 100; ++i)
      rows.push_back({u"row " + ToString(i)});
    grd.SetRows(rows);
  }

  ui::KRXGrid grd{*this, u"grd"};
  ui::KRXKey keyClose{*this, u"keyClose"};
};

// Every touch as a pointer and as the mouse tells it.
class TouchContract : public testing::TestWithParam<ToldAs> {
 protected:
  TouchContract() {
    form.grd.SelectionChanged = [this] { Note("S", form.grd.SelectedRow()); };
    form.grd.RowClick = [this](int row) { Note("C", row); };
    form.grd.RowDoubleClick = [this](int row) { Note("D", row); };
  }
  void Note(const char* what, int row) { log += what + std::to_string(row); }
  // Plays the touches one after the other; then time passes.
  void Play(const std::vector<Touching>& touches, double then = 0) {
    port->Show(form, [&](Hand& hand) {
      hand.AwaitFocus(u"grd");
      for (const Touching& acts : touches)
        hand.Touch(u"grd", GetParam(), acts);
      const int before = form.grd.TopRow();
      hand.PassTime(then);
      if (then > 0) hand.Await([&] { return form.grd.TopRow() != before; });
      hand.Press(ui::kKeyEscape);
    });
  }
  static Touching Tap(double after, double rows, double held = 80) {
    return {{What::Down, after, rows}, {What::Up, held, rows}};
  }
  // One push: four rows in 40 milliseconds, let go in motion.
  static Touching Push() {
    return {{What::Down, 10, 8.5}, {What::Move, 10, 7.5}, {What::Move, 10, 6.5},
            {What::Move, 10, 5.5}, {What::Move, 10, 4.5}, {What::Up, 0, 4.5}};
  }

  const std::unique_ptr<Port> port = MakePort();
  GridOfRows form{port->Platform()};
  std::string log;
};

TEST_P(TouchContract, AShortTouchIsAClickOfItsRow) {
  Play({Tap(10, 2.5)});
  EXPECT_EQ(log, "S2C2");
}

TEST_P(TouchContract, ALongTouchIsAClickAsWell) {
  Play({Tap(10, 2.5, 5000)});
  EXPECT_EQ(log, "S2C2");
}

TEST_P(TouchContract, AFingerThatTremblesClicks) {
  Play({{{What::Down, 10, 2.5},
         {What::Move, 40, 2.6},
         {What::Move, 40, 2.45},
         {What::Up, 40, 2.5}}});
  EXPECT_EQ(log, "S2C2");
  EXPECT_EQ(form.grd.TopRow(), 0);
}

TEST_P(TouchContract, AnywhereInTheRowTheSecondTouchIsADoubleOne) {
  Play({Tap(10, 2.05), Tap(400, 2.95)});  // begins 480 milliseconds after the first
  EXPECT_EQ(log, "S2C2D2");
}

TEST_P(TouchContract, TwoTouchesAreTwoClicksOnceHalfASecondIsOver) {
  Play({Tap(10, 2.05), Tap(421, 2.95)});  // begins 501 milliseconds after the first
  EXPECT_EQ(log, "S2C2C2");
}

TEST_P(TouchContract, TouchesOfTwoRowsAreTwoClicksHoweverCloseTheyAre) {
  Play({Tap(10, 2.95), Tap(200, 3.05)});
  EXPECT_EQ(log, "S2C2S3C3");
}

TEST_P(TouchContract, AThirdTouchBeginsAnew) {
  Play({Tap(10, 2.5), Tap(100, 2.5), Tap(100, 2.5), Tap(100, 2.5)});
  EXPECT_EQ(log, "S2C2D2C2D2");
}

TEST_P(TouchContract, APanMovesTheRowsWithTheFingerAndEndsWithoutAClick) {
  Touching pan{{What::Down, 10, 5.5}};
  for (int step = 1; step <= 6; ++step)
    pan.push_back({What::Move, 40, 5.5 - 0.5 * step});
  pan.push_back({What::Up, 200, 2.5});  // at rest by then
  Play({pan});
  EXPECT_EQ(form.grd.TopRow(), 3);
  EXPECT_EQ(log, "");
}

TEST_P(TouchContract, APanBackToWhereItBeganIsNoClickEither) {
  Play({{{What::Down, 10, 5.5},
         {What::Move, 50, 4.5},
         {What::Move, 50, 5.5},
         {What::Up, 200, 5.5}}});
  EXPECT_EQ(log, "");
  EXPECT_EQ(form.grd.TopRow(), 0);
}

// The fastest speed is 30 twips a millisecond and falls to 37 % in 325: after the four rows with
// the finger 30 * 325 = 9750 twips more, which is 16 rows of 600.
TEST_P(TouchContract, LetGoInMotionTheRowsGlideOn) {
  Play({Push()}, 5000);
  EXPECT_EQ(form.grd.TopRow(), 4 + 16);
  EXPECT_EQ(log, "");
}

TEST_P(TouchContract, ATouchStopsRowsThatGlideAndIsNoClick) {
  Play({Push(), Tap(0, 5.5), Tap(600, 1.5)});
  EXPECT_EQ(form.grd.TopRow(), 4);
  EXPECT_EQ(log, "S5C5") << "only the touch after it is one";
}

TEST_P(TouchContract, ATouchThatTheSystemTakesAwayDoesNothing) {
  Play({{{What::Down, 10, 2.5}, {What::Cancel, 50, 2.5}}, {{What::Up, 50, 2.5}}});
  EXPECT_EQ(log, "");
}

INSTANTIATE_TEST_SUITE_P(Told, TouchContract, testing::Values(ToldAs::Pointer, ToldAs::Mouse),
                         [](const auto& told) {
                           return told.param == ToldAs::Pointer ? "AsAPointer" : "AsTheMouse";
                         });

}  // namespace

}  // namespace krx::test
