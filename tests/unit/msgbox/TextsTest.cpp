#include "support/DialogTest.h"

namespace krx::test {

using ::testing::ElementsAre;

class FMessageBoxTexts : public MessageBoxTest {};

TEST_F(FMessageBoxTexts, LineBreaksOfTheMessageAreEncoded) {
  EXPECT_EQ(SetUpBox({.Text = u"a\r\nb\nc\rd"})->idxMessage.Text(), u"a\\nb\\nc\\nd");
}

TEST_F(FMessageBoxTexts, LineBreaksOfTheTitleAreEncoded) {
  const auto form = SetUpBox({.Title = u"a\r\nb\n\rc"});
  EXPECT_EQ(form->idxCaption.Text(), u"a\\nb\\n\\nc");
}

TEST_F(FMessageBoxTexts, CaptionOfTheFormIsTheTitleOnOneLine) {
  EXPECT_EQ(SetUpBox({.Title = u"a\r\nb"})->Caption(), u"a b");
}

TEST_F(FMessageBoxTexts, EmptyTitleShowsTheLibrarysOwnName) {
  EXPECT_EQ(SetUpBox({.Title = u""})->idxCaption.Text(), u"KRXDialogs");
}

TEST_F(FMessageBoxTexts, EmptyTitleShowsTheHostApplicationsNameAsItStands) {
  dialog->SetHostApp(std::make_shared<FakeApplication>(log, u"Panel\r\n5"));
  EXPECT_EQ(SetUpBox({.Title = u""})->idxCaption.Text(), u"Panel\r\n5");
  dialog->SetHostApp(std::make_shared<FakeApplication>(log, u""));
  EXPECT_EQ(SetUpBox({.Title = u""})->idxCaption.Text(), u"");
}

TEST_F(FMessageBoxTexts, HostApplicationIsNotAskedWhenThereIsATitle) {
  dialog->SetHostApp(std::make_shared<FakeApplication>(log, u"Panel"));
  SetUpBox({.Title = u"t"});
  EXPECT_THAT(log.EntriesOf("EXEName"), ElementsAre());
}

TEST_F(FMessageBoxTexts, TitleOfABlankIsATitle) {
  EXPECT_EQ(SetUpBox({.Title = u" "})->idxCaption.Text(), u" ");
}

TEST_F(FMessageBoxTexts, EmptyTitleWithoutAHostApplicationIsError91) {
  dialog->SetHostApp(nullptr);
  EXPECT_EQ(StatusOf([&] { Open({.Title = u""}); }), kObjectNotSet);
  EXPECT_EQ(ResultWhenClosed({.Title = u"t"}), 1);
}

TEST_F(FMessageBoxTexts, ReferencesAreNotResolved) {
  const auto form = SetUpBox({.Text = u"@m", .Title = u"@t"});
  EXPECT_EQ(form->idxMessage.Text(), u"@m");
  EXPECT_EQ(form->idxCaption.Text(), u"@t");
  EXPECT_THAT(log.EntriesOf("ResolveText"), ElementsAre());
}

TEST_F(FMessageBoxTexts, IconsAreTheStockIconsDrawnAtTheUpperLeftCorner) {
  const std::map<std::int32_t, int> icons{{kCritical, ui::kStopIcon},
                                          {kQuestion, ui::kQuestionIcon},
                                          {kExclamation, ui::kExclamationIcon},
                                          {kInformation, ui::kInformationIcon}};
  for (const auto& [style, id] : icons) {
    const auto form = SetUpBox({.Style = style});
    EXPECT_TRUE(form->picIcon.Visible());
    EXPECT_EQ(form->picIcon.Picture(), (ui::PictureBox::Drawing{{id}, 0, 0}));
  }
}

TEST_F(FMessageBoxTexts, OtherIconValuesShowNoIconAndGiveItsPlaceToTheMessage) {
  for (const std::int32_t style : {0, 80, 96, 112}) {
    const auto form = SetUpBox({.Style = style});
    EXPECT_FALSE(form->picIcon.Visible()) << style;
    EXPECT_EQ(form->picIcon.Picture(), std::nullopt) << style;
    EXPECT_EQ(form->idxMessage.Left(), form->picIcon.Left()) << style;
  }
}

TEST_F(FMessageBoxTexts, ServicesAreCreatedOnFirstUseAndCalledInTheFixedOrder) {
  ResultWhenClosed({.Style = kOKCancel, .HelpFile = u"h"});
  EXPECT_THAT(
      log.Entries(),
      ElementsAre("CreateFontService", "SelectFontClass KRDialogsCaption", "GetFont",
                  "SelectFontClass KRDialogsText", "GetFont", "SelectFontClass KRDialogsButton",
                  "GetFont", "SelectFontClass KRDialogsButton", "GetFont",
                  "SelectFontClass KRDialogsButton", "GetFont", "SelectFontClass KRDialogsButton",
                  "GetFont", "CreateTextService", "GetText OK -105", "GetText Cancel -105",
                  "GetText Help -105", "~TextService", "~FontService"));
}

TEST_F(FMessageBoxTexts, ServicesAreLetGoWhenTheFormIsUnloaded) {
  Show({}, [this](Operator& op) {
    EXPECT_EQ(runtime.LiveTextServices, 1);
    EXPECT_EQ(runtime.LiveFontServices, 1);
    op.Click(u"keyButton(0)");
    EXPECT_EQ(runtime.LiveTextServices, 0);
    EXPECT_EQ(runtime.LiveFontServices, 0);
  });
}

TEST_F(FMessageBoxTexts, FontClassesAreThoseOfTheSharedSettings) {
  dialog->Settings().FontClassCaption = u"c";
  dialog->Settings().FontClassText = u"";
  dialog->Settings().FontClassButton = u"b";
  const auto form = SetUpBox({.HelpFile = u"h"});
  EXPECT_EQ(form->idxCaption.Font().Name, u"c");
  EXPECT_EQ(form->idxMessage.Font().Name, u"");
  for (const ui::KRXKey& key : form->keyButton)
    EXPECT_EQ(key.Font().Name, u"b");
  EXPECT_EQ(form->keyHelp.Font().Name, u"b");
}

TEST_F(FMessageBoxTexts, CloseButtonKeepsItsDesignFontAndShowsOnlyItsCross) {
  msgbox::FMessageBox form(apartment);
  const Font design = form.keyClose.Font();
  form.SetFonts();
  form.SetTexts(u"m", 0, u"t", u"", 0);
  EXPECT_EQ(form.keyClose.Font(), design);
  EXPECT_EQ(form.keyClose.Caption(), u"");
}

TEST_F(FMessageBoxTexts, FreshFormWaitsWithItsTimerOffAndItsLabelHidden) {
  msgbox::FMessageBox form(apartment);
  EXPECT_EQ(form.tmrAutoActivation.Interval(), 1000);
  EXPECT_FALSE(form.tmrAutoActivation.Enabled());
  EXPECT_FALSE(form.lblSize.Visible());
  EXPECT_EQ(form.Result, 0);
  EXPECT_EQ(form.Name(), u"FMessageBox");
}

TEST_F(FMessageBoxTexts, SimpleMethodShowsTheSameBoxWithoutFreeButtons) {
  platform.Expect(u"FMessageBox", [](Operator& op) {
    EXPECT_EQ(op.Get<ui::KRXIndex>(u"idxMessage").Text(), u"text");
    EXPECT_EQ(op.Get<ui::KRXIndex>(u"idxCaption").Text(), u"KRXDialogs");
    EXPECT_EQ(op.Get<ui::KRXKey>(u"keyButton(0)").Caption(), u"OK");
    EXPECT_FALSE(op.Get(u"keyHelp").Visible());
    op.Click(u"keyButton(0)");
  });
  EXPECT_EQ(dialog->KRMsgBox(u"text"), 1);
}

}  // namespace krx::test
