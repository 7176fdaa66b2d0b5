#include "support/DialogTest.h"
#include "ui/Keyboard.h"

// Figures: 8 points everywhere, so a character is 80 twips wide and a line 192 high, unless a test
// sets other fonts. The icon is 480 square at left 180, and 180 is every margin and gap.
//
// Without tall captions the caption line is max(192 + 30, 285) = 285, the close button
// 285 - 60 = 225 square; icon and message start at 285 + 180 = 465 and are 480 high, so the button
// row starts at 465 + 480 + 1.5 * 180 = 1215. A button is 192 + 180 = 372 high and at least 1215
// wide. The form ends one margin below the row: 1215 + 372 + 180 = 1767.
//
// Widths that the form may need: caption text + 30 + close button + 30 + 2 * 180 = text + 645 with
// the usual close button; message left + message + 180; the row 180 + each button + 180.
namespace krx::test {

class FMessageBoxLayout : public MessageBoxTest {};

TEST_F(FMessageBoxLayout, SingleButtonWithoutIconTakesTheWidthOfTheRow) {
  const auto form = SetUpBox({});
  // Message: 5 * 80 + 30 = 430 wide, at the icon's place. Widths: caption 400 + 645 = 1045, message
  // 180 + 430 + 180 = 790, row 180 + 1215 + 180 = 1575.
  EXPECT_EQ(form->idxMessage.Bounds(), (Rect{180, 465, 430, 480}));
  EXPECT_EQ(form->keyButton[0].Bounds(), (Rect{180, 1215, 1215, 372}));
  EXPECT_EQ(form->idxCaption.Bounds(), (Rect{0, 0, 1575, 285}));
  // 1575 - 30 - 225 = 1320; (285 - 225) / 2 = 30.
  EXPECT_EQ(form->keyClose.Bounds(), (Rect{1320, 30, 225, 225}));
  EXPECT_EQ(form->Width(), 1575);
  EXPECT_EQ(form->Height(), 1767);
}

TEST_F(FMessageBoxLayout, IconMovesTheMessageBehindIt) {
  const auto form = SetUpBox({.Style = kCritical});
  // 180 + 480 + 180 = 840; 840 + 430 + 180 = 1450 is still less than the row's 1575.
  EXPECT_EQ(form->picIcon.Bounds(), (Rect{180, 465, 480, 480}));
  EXPECT_EQ(form->idxMessage.Bounds(), (Rect{840, 465, 430, 480}));
  EXPECT_EQ(form->Width(), 1575);
}

TEST_F(FMessageBoxLayout, BoxWithoutAnyButtonEndsBelowTheMessage) {
  const auto form = SetUpBox({.Style = 6 + kInformation});
  // Widths: caption 1045, message 840 + 430 + 180 = 1450. Height: 465 + 480 + 180 = 1125.
  EXPECT_EQ(form->idxCaption.Bounds(), (Rect{0, 0, 1450, 285}));
  EXPECT_EQ(form->idxMessage.Bounds(), (Rect{840, 465, 430, 480}));
  EXPECT_EQ(form->keyClose.Bounds(), (Rect{1195, 30, 225, 225}));
  EXPECT_EQ(form->Width(), 1450);
  EXPECT_EQ(form->Height(), 1125);
}

TEST_F(FMessageBoxLayout, LongTitleWidensTheFormAndCentresTheRow) {
  const auto form = SetUpBox({.Style = kOKCancel, .Title = String(60, u't')});
  // Caption: 60 * 80 + 645 = 5445. Row: 180 + 2 * 1395 = 2970; shift (5445 - 2970) / 2 = 1237.5.
  EXPECT_EQ(form->idxCaption.Bounds(), (Rect{0, 0, 5445, 285}));
  EXPECT_EQ(form->keyButton[0].Bounds(), (Rect{1417.5f, 1215, 1215, 372}));
  EXPECT_EQ(form->keyButton[1].Bounds(), (Rect{2812.5f, 1215, 1215, 372}));
  EXPECT_EQ(form->keyClose.Bounds(), (Rect{5190, 30, 225, 225}));
  EXPECT_EQ(form->Width(), 5445);
}

TEST_F(FMessageBoxLayout, WideMessageWidensTheFormAndCentresTheRow) {
  const auto form = SetUpBox({.Text = String(50, u'm'), .Style = kExclamation});
  // Message: 50 * 80 + 30 = 4030; form 840 + 4030 + 180 = 5050. Shift (5050 - 1575) / 2 = 1737.5.
  EXPECT_EQ(form->idxMessage.Bounds(), (Rect{840, 465, 4030, 480}));
  EXPECT_EQ(form->keyButton[0].Bounds(), (Rect{1917.5f, 1215, 1215, 372}));
  EXPECT_EQ(form->idxCaption.Width(), 5050);
  EXPECT_EQ(form->Width(), 5050);
  EXPECT_EQ(form->Height(), 1767);
}

TEST_F(FMessageBoxLayout, TallMessagePushesTheRowDown) {
  const auto form = SetUpBox({.Text = u"one\r\ntwo\nthree\rfour", .Style = kQuestion});
  // 4 lines: 4 * 192 + 30 = 798; widest line "three": 5 * 80 + 30 = 430.
  // Row: 465 + 798 + 270 = 1533; form: 1533 + 372 + 180 = 2085.
  EXPECT_EQ(form->picIcon.Bounds(), (Rect{180, 465, 480, 480}));
  EXPECT_EQ(form->idxMessage.Bounds(), (Rect{840, 465, 430, 798}));
  EXPECT_EQ(form->keyButton[0].Bounds(), (Rect{180, 1533, 1215, 372}));
  EXPECT_EQ(form->Height(), 2085);
}

TEST_F(FMessageBoxLayout, MessageWrapsAtSixtyPercentOfTheWorkArea) {
  const auto form = SetUpBox({.Text = String(100, u'a') + u' ' + String(90, u'b')});
  // 0.6 * 15360 = 9216 holds 115 characters, so the blank breaks the 191: 100 * 80 + 30 = 8030
  // wide, 2 * 192 + 30 = 414 high, less than the icon's 480. Form: 180 + 8030 + 180 = 8390.
  EXPECT_EQ(form->idxMessage.Bounds(), (Rect{180, 465, 8030, 480}));
  EXPECT_EQ(form->Width(), 8390);
  EXPECT_EQ(form->Height(), 1767);
}

TEST_F(FMessageBoxLayout, TitleOfTwoLinesMakesTheCaptionLineTaller) {
  const auto form = SetUpBox({.Title = u"first\nsecond"});
  // Caption: 2 * 192 + 30 = 414; close button 414 - 60 = 354. Icon and message: 414 + 180 = 594;
  // row 594 + 480 + 270 = 1344; form 1344 + 372 + 180 = 1896. Width: caption
  // 6 * 80 + 30 + 354 + 30 + 360 = 1254, row 1575.
  EXPECT_EQ(form->idxCaption.Bounds(), (Rect{0, 0, 1575, 414}));
  EXPECT_EQ(form->keyClose.Bounds(), (Rect{1191, 30, 354, 354}));
  EXPECT_EQ(form->picIcon.Top(), 594);
  EXPECT_EQ(form->idxMessage.Bounds(), (Rect{180, 594, 430, 480}));
  EXPECT_EQ(form->keyButton[0].Bounds(), (Rect{180, 1344, 1215, 372}));
  EXPECT_EQ(form->Height(), 1896);
}

TEST_F(FMessageBoxLayout, MinimumCaptionHeightMovesEverythingDown) {
  dialog->Settings().CaptionMinHeight = 500;
  const auto form = SetUpBox({.Style = kInformation});
  // Close button 440; icon 500 + 180 = 680; row 680 + 480 + 270 = 1430; form 1430 + 372 + 180.
  EXPECT_EQ(form->idxCaption.Bounds(), (Rect{0, 0, 1575, 500}));
  EXPECT_EQ(form->keyClose.Bounds(), (Rect{1105, 30, 440, 440}));
  EXPECT_EQ(form->picIcon.Bounds(), (Rect{180, 680, 480, 480}));
  EXPECT_EQ(form->idxMessage.Bounds(), (Rect{840, 680, 430, 480}));
  EXPECT_EQ(form->keyButton[0].Bounds(), (Rect{180, 1430, 1215, 372}));
  EXPECT_EQ(form->Height(), 1982);
}

TEST_F(FMessageBoxLayout, TallerCloseButtonCountsInTheWidthThatTheCaptionNeeds) {
  dialog->Settings().CaptionMinHeight = 660;
  const auto form = SetUpBox({.Title = String(20, u't')});
  // 20 * 80 + 30 + 600 + 30 + 360 = 2620; the close button 2620 - 30 - 600 = 1990. The row shifts
  // by (2620 - 1575) / 2 = 522.5.
  EXPECT_EQ(form->Width(), 2620);
  EXPECT_EQ(form->keyClose.Bounds(), (Rect{1990, 30, 600, 600}));
  EXPECT_EQ(form->keyButton[0].Left(), 702.5f);
}

TEST_F(FMessageBoxLayout, NegativeMinimumHeightsChangeNothing) {
  dialog->Settings().CaptionMinHeight = -1000;
  dialog->Settings().ButtonMinHeight = -1000;
  const auto form = SetUpBox({});
  EXPECT_EQ(form->idxCaption.Height(), 285);
  EXPECT_EQ(form->keyButton[0].Height(), 372);
  EXPECT_EQ(form->Height(), 1767);
}

TEST_F(FMessageBoxLayout, EveryPartIsMeasuredInItsOwnFontClass) {
  runtime.Fonts[u"KRDialogsCaption"] = {u"c", 12};    // 120 a character, 288 a line
  runtime.Fonts[u"KRDialogsText"] = {u"t", 20, 700};  // bold: 220 a character, 480 a line
  runtime.Fonts[u"KRDialogsButton"] = {u"b", 10};     // 100 a character, 240 a line
  const auto form = SetUpBox({.Button1 = String(12, u'b')});
  // Caption: 288 + 30 = 318, close button 258; icon 318 + 180 = 498. Message: 5 * 220 + 30 = 1130
  // wide, 480 + 30 = 510 high. Row: 498 + 510 + 270 = 1278. Button: 1200 + 180 = 1380 wide,
  // 240 + 180 = 420 high. Widths: caption 600 + 30 + 258 + 30 + 360 = 1278, message 1490, row 1740.
  EXPECT_EQ(form->idxCaption.Bounds(), (Rect{0, 0, 1740, 318}));
  EXPECT_EQ(form->keyClose.Bounds(), (Rect{1452, 30, 258, 258}));
  EXPECT_EQ(form->idxMessage.Bounds(), (Rect{180, 498, 1130, 510}));
  EXPECT_EQ(form->keyButton[0].Bounds(), (Rect{180, 1278, 1380, 420}));
  EXPECT_EQ(form->Width(), 1740);
  EXPECT_EQ(form->Height(), 1878);  // 1278 + 420 + 180
}

TEST_F(FMessageBoxLayout, AnotherResolutionChangesTheCrossButNoLength) {
  // The cross of a close button of 225: (225 - 105) / 15 / 8 = 1 step of 8 pixels.
  const auto form = SetUpBox({.Style = kCritical + kOKCancel});
  EXPECT_EQ(form->keyClose.Picture().Pixels, 8);
  platform.PixelSize = 7.5f;  // 192 dots to the inch: 120 / 7.5 / 8 = 2 steps
  const auto fine = SetUpBox({.Style = kCritical + kOKCancel});
  EXPECT_EQ(fine->keyClose.Picture().Pixels, 16);
  for (ui::Component* const component : form->Components()) {
    const auto* const control = dynamic_cast<ui::Control*>(component);
    if (!control || control == &form->lblSize) continue;
    const auto& twin = dynamic_cast<ui::Control&>(*fine->Find(control->Name()));
    EXPECT_EQ(control->Bounds(), twin.Bounds()) << ToUtf8(control->Name());
  }
  EXPECT_EQ(form->Width(), fine->Width());
  EXPECT_EQ(form->Height(), fine->Height());
}

// Work area: 11520 high, less 30 for the edges. Above the message 465, below it 270 + 372 + 180 =
// 822, so there is room for 11520 - 30 - 465 - 822 = 10203: 53 lines and 30 (53 * 192 = 10176 leave
// no room for the padding), so 52 lines, 52 * 192 + 30 = 10014.
String Lines(int count) {
  String text = u"0";
  for (int line = 1; line < count; ++line)
    text += u"\n" + ToString(line);
  return text;
}

TEST_F(FMessageBoxLayout, MessageThatFitsIsNotScrolled) {
  // 52 * 192 + 30 = 10014 is less than 10203.
  const auto form = SetUpBox({.Text = Lines(52)});
  EXPECT_FALSE(form->idxMessage.Scrolls());
  EXPECT_FALSE(form->idxMessage.CanFocus());
  EXPECT_EQ(form->idxMessage.Bounds(), (Rect{180, 465, 190, 10014}));  // 2 * 80 + 30
  // 465 + 10014 + 270 = 10749; 10749 + 372 + 180 = 11301.
  EXPECT_EQ(form->Height(), 11301);
}

TEST_F(FMessageBoxLayout, MessageThatIsTooHighForTheScreenIsScrolled) {
  const auto form = SetUpBox({.Text = Lines(53)});
  EXPECT_TRUE(form->idxMessage.Scrolls());
  // A line less, and 90 + 255 for the scroll bar.
  EXPECT_EQ(form->idxMessage.Bounds(), (Rect{180, 465, 535, 10014}));
  EXPECT_EQ(form->idxMessage.LinesInSight(), 52);
  EXPECT_EQ(form->keyButton[0].Top(), 10749);
  EXPECT_EQ(form->Height(), 11301);
}

TEST_F(FMessageBoxLayout, LongMessageWithTallCaptionAndButtonsStaysInTheWorkArea) {
  dialog->Settings().CaptionMinHeight = 900;
  dialog->Settings().ButtonMinHeight = 900;
  for (const std::int32_t style : {0, 3 + 48, 6}) {
    const auto form = SetUpBox({.Text = String(100'000, u'm'), .Style = style});
    EXPECT_LE(form->Height(), 11520 - 30);
    EXPECT_LE(form->Width(), 15360 - 30);
    EXPECT_GE(form->idxMessage.LinesInSight(), 30);
    form->idxMessage.ScrollTo(1'000'000);
    EXPECT_EQ(form->idxMessage.TopLine(),
              form->idxMessage.LineCount() - form->idxMessage.LinesInSight());
  }
}

TEST_F(FMessageBoxLayout, LongTitleEndsWithAnEllipsisAtTheEdgeOfTheScreen) {
  const auto form = SetUpBox({.Title = String(100'000, u't')});
  // 15360 less the close button's 225 and 450 leave 14685: 183 characters of 80, the ellipsis one
  // of them. Caption: 183 * 80 + 645 = 15285.
  EXPECT_EQ(form->idxCaption.DisplayedText(), String(182, u't') + u'\u2026');
  EXPECT_EQ(form->idxCaption.Bounds(), (Rect{0, 0, 15285, 285}));
  EXPECT_EQ(form->Width(), 15285);
  EXPECT_EQ(form->Caption(), String(100'000, u't'));
}

TEST_F(FMessageBoxLayout, TitleOfManyLinesLeavesRoomForTheRest) {
  const auto form = SetUpBox({.Title = Lines(1'000)});
  // A third of 11520 is 3840: 20 lines of 192.
  EXPECT_EQ(form->idxCaption.Height(), 20 * 192 + 30);
  EXPECT_LE(form->Height(), 11520 - 30);
}

TEST_F(FMessageBoxLayout, LongMessageBeginsAtItsTopAndIsReachedBehindTheButtons) {
  Show({.Text = Lines(200), .Style = kOKCancel}, [](Operator& op) {
    const auto& message = op.Get<ui::KRXIndex>(u"idxMessage");
    EXPECT_EQ(op.Focus(), u"keyButton(0)");
    op.Press(ui::kKeyRight);
    EXPECT_EQ(op.Focus(), u"keyButton(1)");
    op.Press(ui::kKeyPageDown);
    EXPECT_EQ(message.TopLine(), message.LinesInSight());
    op.Press(ui::kKeyTab);
    EXPECT_EQ(op.Focus(), u"idxMessage");
    op.Press(ui::kKeyUp);
    EXPECT_EQ(message.TopLine(), message.LinesInSight() - 1);
    op.Click(u"keyClose");
  });
}

TEST_F(FMessageBoxLayout, EmptyMessageIsOneLineHighAndThirtyWide) {
  const auto form = SetUpBox({.Text = u""});
  EXPECT_EQ(form->idxMessage.Bounds(), (Rect{180, 465, 30, 480}));
  EXPECT_EQ(form->Width(), 1575);
}

}  // namespace krx::test
