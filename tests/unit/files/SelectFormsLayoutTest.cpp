#include "files/FilesTest.h"

// Figures for fonts of 8 points: a character is 80 twips wide, a line 192 high, an input box 282.
namespace krx::test {
namespace {

class SelectFormsLayoutTest : public FilesTest {
 protected:
  std::unique_ptr<files::FSelectDirectory> Directory() {
    auto form = std::make_unique<files::FSelectDirectory>(apartment);
    form->SetFonts();
    form->SetTexts(u"C:\\Data", u"");
    form->CalcPositions();
    return form;
  }
  std::unique_ptr<files::FFileSelect> File() {
    auto form = std::make_unique<files::FFileSelect>(apartment);
    form->SetFonts();
    form->SetTexts(u"", u"C:\\Data", u"", 0);
    form->SetFilter(u"All|*");
    form->CalcPositions();
    return form;
  }
  // A panel of 800 x 480 pixels of 15 twips.
  void UsePanel() {
    auto& settings = dialog->Settings();
    settings.ButtonMinHeight = settings.CaptionMinHeight = 600;
    runtime.Fonts[settings.FontClassText] = {u"Tahoma", 14};
    runtime.Fonts[settings.FontClassInput] = {u"Tahoma", 14};
    runtime.Fonts[settings.FontClassCaption] = {u"Tahoma", 14, 700};
    runtime.Fonts[settings.FontClassButton] = {u"Tahoma", 16};
  }
};

TEST_F(SelectFormsLayoutTest, TheDirectoryDialogStacksItsControls) {
  const auto form = Directory();
  const Twips width = 5160;  // 5400 less a margin of 120 on either side
  EXPECT_EQ(form->Width(), 5400);
  EXPECT_EQ(form->idxCaption.Bounds(), (Rect{0, 0, 5400, 285}));
  EXPECT_EQ(form->keyClose.Height(), 225);
  EXPECT_EQ(form->lbl[0].Bounds(), (Rect{120, 285 + 60, width, 192}));
  EXPECT_EQ(form->txtDirectory.Bounds(), (Rect{120, 345 + 192 + 30, width, 282}));
  EXPECT_EQ(form->lbl[1].Bounds(), (Rect{120, 567 + 282 + 60, width, 192}));
  EXPECT_EQ(form->drvSelect.Bounds(), (Rect{120, 909 + 192 + 30, width, 282}));
  EXPECT_EQ(form->lbl[2].Bounds(), (Rect{120, 1131 + 282 + 60, width, 192}));
  EXPECT_EQ(form->dirSelect.Bounds(), (Rect{120, 1473 + 192 + 30, width, 8 * 282}));
  EXPECT_EQ(form->idxFileListBox.Bounds(), form->dirSelect.Bounds());
  // A button is 192 + 180 high and 3.5 times that wide, more than "Cancel" needs (480 + 180).
  const Twips top = 1695 + 2256 + 120;
  EXPECT_EQ(form->keyCancel.Bounds(), (Rect{120 + width - 1302, top, 1302, 372}));
  EXPECT_EQ(form->keyOK.Bounds(), (Rect{120 + width - 1302 - 60 - 1302, top, 1302, 372}));
  EXPECT_EQ(form->Height(), top + 372 + 120);
}

TEST_F(SelectFormsLayoutTest, MinimumHeightsAndLongTextsWidenTheDialog) {
  dialog->Settings().CaptionMinHeight = 500;
  dialog->Settings().ButtonMinHeight = 900;
  auto form = Directory();
  EXPECT_EQ(form->idxCaption.Height(), 500);
  EXPECT_EQ(form->keyClose.Height(), 440);
  EXPECT_EQ(form->lbl[0].Top(), 560);
  EXPECT_EQ(form->keyOK.Height(), 900);
  EXPECT_EQ(form->keyOK.Width(), 3150);
  EXPECT_EQ(form->Width(), 120 + 3150 + 60 + 3150 + 120);

  dialog->Settings().ButtonMinHeight = 0;
  runtime.Texts[u"Cancel"] = String(20, u'x');  // 1600 + 180 is more than 1302
  form = Directory();
  EXPECT_EQ(form->keyOK.Width(), 1780);
  EXPECT_EQ(form->keyCancel.Width(), 1780);

  runtime.Texts[u"Drive"] = String(70, u'x');
  form = Directory();
  EXPECT_EQ(form->Width(), 120 + 5600 + 120);
}

TEST_F(SelectFormsLayoutTest, TheFileDialogSetsNamesBesidePlaces) {
  const auto form = File();
  const Twips column = 3600;
  const Twips right = 120 + column + 120;
  EXPECT_EQ(form->Width(), right + column + 120);
  EXPECT_EQ(form->lbl[0].Bounds(), (Rect{120, 345, column, 192}));
  EXPECT_EQ(form->txtFileName.Bounds(), (Rect{120, 567, column, 282}));
  EXPECT_EQ(form->lbl[1].Bounds(), (Rect{right, 345, column, 192}));
  EXPECT_EQ(form->dirSelect.Bounds(), (Rect{right, 567, column, 8 * 282}));
  EXPECT_EQ(form->idxFileListBox.Bounds(), form->dirSelect.Bounds());
  // The file list fills the column down to where the directory list ends, at 2823.
  EXPECT_EQ(form->filSelect.Bounds(), (Rect{120, 849 + 30, column, 2823 - 879}));
  EXPECT_EQ(form->lbl[2].Bounds(), (Rect{120, 2883, column, 192}));
  EXPECT_EQ(form->cboFileType[0].Bounds(), (Rect{120, 3105, column, 282}));
  EXPECT_EQ(form->lbl[3].Bounds(), (Rect{right, 2883, column, 192}));
  EXPECT_EQ(form->drvSelect.Bounds(), (Rect{right, 3105, column, 282}));
  EXPECT_EQ(form->keyOK.Top(), 3387 + 120);
  EXPECT_EQ(form->keyCancel.Left() + form->keyCancel.Width(), right + column);
  EXPECT_EQ(form->Height(), 3507 + 372 + 120);
}

TEST_F(SelectFormsLayoutTest, BothDialogsFitAPanel) {
  UsePanel();
  const auto directory = Directory();
  EXPECT_LE(directory->Width(), 12000);
  EXPECT_LE(directory->Height(), 7200);
  EXPECT_EQ(directory->dirSelect.Height(), 8 * directory->drvSelect.Height());
  const auto file = File();
  EXPECT_LE(file->Width(), 12000);
  EXPECT_LE(file->Height(), 7200);
}

TEST_F(SelectFormsLayoutTest, FontClassesGoToTheirControls) {
  const auto directory = Directory();
  EXPECT_EQ(directory->idxCaption.Font().Name, u"KRDialogsCaption");
  for (const ui::KRXKey* key : {&directory->keyOK, &directory->keyCancel})
    EXPECT_EQ(key->Font().Name, u"KRDialogsButton");
  for (const ui::Control* control : std::initializer_list<const ui::Control*>{
           &directory->idxFileListBox, &directory->lbl[0], &directory->lbl[1], &directory->lbl[2],
           &directory->dirSelect, &directory->drvSelect, &directory->txtDirectory}) {
    EXPECT_EQ(control->Font().Name, u"KRDialogsText") << ToUtf8(control->Name());
  }
  const auto file = File();
  EXPECT_EQ(file->txtFileName.Font().Name, u"KRDialogsInput");
  for (const ui::Control* control : std::initializer_list<const ui::Control*>{
           &file->filSelect, &file->cboFileType[0], &file->lbl[3]}) {
    EXPECT_EQ(control->Font().Name, u"KRDialogsText") << ToUtf8(control->Name());
  }
}

TEST_F(SelectFormsLayoutTest, TabWalksFromHeadingToHeading) {
  const auto order = [](const ui::Form& form) {
    std::vector<std::string> names;
    for (const ui::Control* control : form.TabOrder()) {
      if (control->CanFocus()) names.push_back(ToUtf8(control->Name()));
    }
    return names;
  };
  EXPECT_EQ(order(*Directory()), (std::vector<std::string>{"txtDirectory", "drvSelect", "dirSelect",
                                                           "keyOK", "keyCancel"}));
  const auto file = File();
  file->txtFileName.Text = u"name";
  EXPECT_EQ(order(*file),
            (std::vector<std::string>{"txtFileName", "filSelect", "dirSelect", "cboFileType(0)",
                                      "drvSelect", "keyOK", "keyCancel"}));
}

TEST_F(SelectFormsLayoutTest, AccessKeysLeadToTheFieldBelowTheirHeading) {
  runtime.Texts[u"Directories"] = u"&Folders";
  runtime.Texts[u"Drive"] = u"&Letter";
  SelectDirectory({u"C:\\Data", true, {}}, [](Operator& op) {
    op.AccessKey(u'l');
    EXPECT_EQ(op.Focus(), u"drvSelect");
    op.AccessKey(u'f');
    EXPECT_EQ(op.Focus(), u"dirSelect");
    op.Click(u"keyCancel");
  });
}

}  // namespace
}  // namespace krx::test
