#include "service/DialogForm.h"

#include "support/DialogTest.h"
#include "ui/Keyboard.h"

namespace krx::test {

namespace {

// A dialog that shows what the common part of all dialogs does.
struct PlainDialog : service::DialogForm {
  explicit PlainDialog(service::Apartment& apartment)
      : DialogForm(apartment, u"PlainDialog", host::kUserTexts) {
    keyClose.Click = [this] { Unload(); };
  }
  ui::KRXKey keyOne{*this, u"keyOne"};
  ui::KRXKey keyTwo{*this, u"keyTwo"};

  void CalcPositions() override {}

  using DialogForm::ClassFont;
  using DialogForm::DialogService;
  using DialogForm::LoadFonts;
  using DialogForm::PlaceCaption;
  using DialogForm::SetCaption;
  using DialogForm::SizeCaption;
  using DialogForm::Text;
  using DialogForm::Texts;
};

}  // namespace

class DialogForm : public DialogTest {
 protected:
  void Show(headless::HeadlessPlatform::Script script) {
    platform.Expect(u"PlainDialog", std::move(script));
    form.ShowModal();
  }

  PlainDialog form{apartment};
};

TEST_F(DialogForm, FirstPaintMovesTheFocusAndNoLaterOneDoes) {
  form.FocusControl = &form.keyTwo;
  Show([this](headless::Operator& op) {
    EXPECT_EQ(op.Focus(), u"keyTwo");
    EXPECT_EQ(form.FocusControl, nullptr);
    op.Press(ui::kKeyTab);
    EXPECT_EQ(op.Focus(), u"keyOne");
    op.Uncover();
    EXPECT_EQ(op.Focus(), u"keyOne");
    op.Click(u"keyClose");
  });
}

TEST_F(DialogForm, WithoutAFocusControlTheTabOrderDecides) {
  Show([](headless::Operator& op) {
    EXPECT_EQ(op.Focus(), u"keyOne");
    op.Click(u"keyClose");
  });
}

TEST_F(DialogForm, FocusControlSetWhileShownCountsAtTheNextPaint) {
  Show([this](headless::Operator& op) {
    form.FocusControl = &form.keyTwo;
    EXPECT_EQ(op.Focus(), u"keyOne");
    op.Uncover();
    EXPECT_EQ(op.Focus(), u"keyTwo");
    op.Click(u"keyClose");
  });
}

TEST_F(DialogForm, HiddenFocusControlIsUsedUpAllTheSame) {
  form.FocusControl = &form.keyTwo;
  form.keyTwo.Visible = false;
  Show([this](headless::Operator& op) {
    EXPECT_EQ(op.Focus(), u"keyOne");
    form.keyTwo.Visible = true;
    op.Uncover();
    EXPECT_EQ(op.Focus(), u"keyOne");
    op.Click(u"keyClose");
  });
}

TEST_F(DialogForm, TextsComeFromItsGroupByOneReferenceKeptUntilItIsUnloaded) {
  runtime.Texts[u"lblName"] = u"Name:";
  EXPECT_EQ(runtime.LiveTextServices, 0);
  EXPECT_EQ(form.Text(u"lblName"), u"Name:");
  EXPECT_EQ(form.Text(u"unknown"), u"unknown");
  EXPECT_EQ(form.Texts().ResolveText(u"@ref"), u"ref");
  EXPECT_THAT(log.Entries(), ::testing::ElementsAre("CreateTextService", "GetText lblName -103",
                                                    "GetText unknown -103", "ResolveText @ref"));
  Show([](headless::Operator& op) { op.Click(u"keyClose"); });
  EXPECT_EQ(runtime.LiveTextServices, 0);
}

TEST_F(DialogForm, ServicesAreCreatedAgainAfterAnUnload) {
  form.Text(u"a");
  Show([](headless::Operator& op) { op.Click(u"keyClose"); });
  form.Text(u"b");
  EXPECT_EQ(log.EntriesOf("CreateTextService").size(), 2u);
  form.Load();
  form.Unload();
  EXPECT_EQ(runtime.LiveTextServices, 0);
}

TEST_F(DialogForm, FailedCreationIsTriedAgainAtTheNextUse) {
  log.FailCall(1, false);
  EXPECT_EQ(StatusOf([this] { form.Text(u"a"); }), CallLog::FailureOf(1).Status());
  EXPECT_EQ(form.Text(u"a"), u"a");
  form.Load();
  form.Unload();
}

TEST_F(DialogForm, FontOfAClassIsSelectedAndThenGot) {
  runtime.Fonts[u"Big"] = {u"Arial", 20};
  EXPECT_EQ(form.ClassFont(u"Big"), (Font{u"Arial", 20}));
  form.keyOne.FontClass = u"Big";
  EXPECT_EQ(form.keyOne.Font(), (Font{u"Arial", 20}));
  EXPECT_THAT(log.Entries(), ::testing::ElementsAre("CreateFontService", "SelectFontClass Big",
                                                    "GetFont", "SelectFontClass Big", "GetFont"));
  form.Load();
  form.Unload();
  EXPECT_EQ(runtime.LiveFontServices, 0);
}

TEST_F(DialogForm, AFontClassIsAskedForOnceHoweverManyControlsHaveIt) {
  runtime.Fonts[u"KRDialogsButton"] = {u"Arial", 20};
  ui::KRXKey* const keys[] = {&form.keyOne, &form.keyTwo};
  form.LoadFonts(keys, {}, {});
  EXPECT_THAT(log.Entries(),
              ::testing::ElementsAre("CreateFontService", "SelectFontClass KRDialogsCaption",
                                     "GetFont", "SelectFontClass KRDialogsButton", "GetFont"));
  EXPECT_EQ(form.keyOne.Font(), (Font{u"Arial", 20}));
  EXPECT_EQ(form.keyTwo.Font(), (Font{u"Arial", 20}));
  form.Load();
  form.Unload();
}

TEST_F(DialogForm, AFontClassThatFailsIsNotAskedForAgainAndLeavesItsControlsAsTheyAre) {
  runtime.Fonts[u"KRDialogsButton"] = {u"Arial", 20};
  const Font before = form.keyOne.Font();
  ui::KRXKey* const keys[] = {&form.keyOne, &form.keyTwo};
  log.FailCall(5, true);  // the font of the buttons
  form.LoadFonts(keys, {}, {});
  EXPECT_EQ(log.EntriesOf("SelectFontClass").size(), 2u);
  EXPECT_EQ(form.keyOne.Font(), before);
  EXPECT_EQ(form.keyTwo.Font(), before);
  form.Load();
  form.Unload();
}

TEST_F(DialogForm, FontStaysWhenTheServiceFails) {
  const Font before = form.keyOne.Font();
  log.FailCall(2, true);
  EXPECT_EQ(StatusOf([this] { form.keyOne.FontClass = u"Big"; }), CallLog::FailureOf(2).Status());
  EXPECT_EQ(form.keyOne.Font(), before);
  form.Load();
  form.Unload();
}

TEST_F(DialogForm, CaptionLineSpansTheFormAndTheCloseKeyStandsThirtyFromItsEdge) {
  // idxCaption has the default font here: 8.25 points, 198 a line, so 285 is the larger.
  form.Width = 3000;
  form.SizeCaption(30);
  form.PlaceCaption();
  EXPECT_EQ(form.idxCaption.Bounds(), (Rect{0, 0, 3000, 285}));
  EXPECT_EQ(form.keyClose.Bounds(), (Rect{2745, 30, 225, 225}));  // 3000 - 30 - 225
  EXPECT_EQ(form.keyClose.Picture().Pixels, 8);                   // (225 - 105) / 15 / 8
}

TEST_F(DialogForm, TallCaptionLineHasATallCloseKeyWithALargerCross) {
  dialog->Settings().CaptionMinHeight = 600;
  form.Width = 3000;
  form.SizeCaption(60);
  form.PlaceCaption();
  EXPECT_EQ(form.keyClose.Bounds(), (Rect{2430, 30, 540, 540}));
  EXPECT_EQ(form.keyClose.Picture().Pixels, 32);  // 435 / 120 = 3.6, nearest 4
}

TEST_F(DialogForm, EscapePressesTheCloseKey) {
  Show([](headless::Operator& op) {
    op.Press(ui::kKeyEscape);
    EXPECT_FALSE(op.Form().Visible());
  });
}

TEST_F(DialogForm, SharedDialogServiceIsError91OnceItIsCleared) {
  EXPECT_EQ(&form.DialogService(), dialog.get());
  service::KRXDialog::Create(apartment).reset();
  EXPECT_EQ(StatusOf([this] { form.DialogService(); }), kObjectNotSet);
}

}  // namespace krx::test
