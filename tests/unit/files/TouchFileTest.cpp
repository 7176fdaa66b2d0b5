#include "files/TouchTest.h"

namespace krx::test {

using ::testing::ElementsAre;

class TouchFile : public TouchTest {
 protected:
  static files::FFileSelectTouch& Form(Operator& op) {
    return dynamic_cast<files::FFileSelectTouch&>(op.Form());
  }
  static std::vector<std::string> Files(Operator& op) { return Rows(op, u"grdFiles"); }
  static void Cancel(Operator& op) { op.Click(u"keyCancel"); }
  // The dialog on C:\Data, whose files are readme.txt, plan.bmp and notes.TXT.
  static service::FileRequest InData(const String& filter = {}, const String& file = {}) {
    return {file, u"C:\\Data\\Logs", filter, true, {}};
  }
};

TEST_F(TouchFile, StartsWithTheFileHighlighted) {
  EXPECT_EQ(OpenFile(InData({}, u"plan.bmp"),
                     [](Operator& op) {
                       EXPECT_THAT(Rows(op), ElementsAre("|..", "|Alpha", " +|Logs", "|Zeta"));
                       EXPECT_EQ(Selected(op), u"Logs");
                       EXPECT_THAT(Files(op), ElementsAre("readme.txt", "plan.bmp", "notes.TXT"));
                       EXPECT_EQ(Selected(op, u"grdFiles"), u"plan.bmp");
                       EXPECT_EQ(Form(op).txtPath.Text(), u"C:\\Data");
                       EXPECT_TRUE(Form(op).txtPath.Visible());
                       EXPECT_FALSE(Form(op).txtFullPath.Visible());
                       EXPECT_EQ(Form(op).lblPathName.Caption(), u"SelectedDirectory");
                       op.Click(u"keyOK");
                     }),
            u"")
      << "a file that is only highlighted is not chosen";
}

TEST_F(TouchFile, ATouchedFileIsShownAndReturned) {
  EXPECT_EQ(OpenFile(InData(),
                     [](Operator& op) {
                       op.ClickRow(u"grdFiles", 0);
                       EXPECT_EQ(Form(op).txtFullPath.Text(), u"C:\\Data\\readme.txt");
                       EXPECT_TRUE(Form(op).txtFullPath.Visible());
                       EXPECT_FALSE(Form(op).txtPath.Visible());
                       EXPECT_EQ(Form(op).lblPathName.Caption(), u"FileName");
                       op.Click(u"keyOK");
                     }),
            u"C:\\Data\\readme.txt");
}

TEST_F(TouchFile, TouchingAFileTwiceChoosesIt) {
  EXPECT_EQ(OpenFile(InData(), [](Operator& op) { op.DoubleClickRow(u"grdFiles", 1); }),
            u"C:\\Data\\plan.bmp");
}

TEST_F(TouchFile, CancelReturnsNothingAndTheCloseKeyDoesNothing) {
  EXPECT_EQ(OpenFile(InData(),
                     [](Operator& op) {
                       op.ClickRow(u"grdFiles", 0);
                       op.Click(u"keyClose");
                       op.Press(ui::kKeyEscape);
                       EXPECT_TRUE(op.Form().Visible());
                       Cancel(op);
                     }),
            u"");
}

TEST_F(TouchFile, FilesOfATouchedFolderAreListed) {
  OpenFile(InData(), [](Operator& op) {
    op.ClickRow(u"grdFiles", 0);
    Touch(op, u"Logs");
    EXPECT_EQ(Form(op).txtPath.Text(), u"C:\\Data\\Logs");
    EXPECT_TRUE(Form(op).txtPath.Visible()) << "the file of the other folder is gone";
    EXPECT_THAT(Files(op), ElementsAre("today.log"));
    Touch(op, u"..");
    EXPECT_THAT(Files(op), ElementsAre("readme.txt", "plan.bmp", "notes.TXT"));
    Open(op, u"Logs");
    EXPECT_THAT(Rows(op), ElementsAre("|..", "|Old"));
    EXPECT_THAT(Files(op), ElementsAre("today.log"));
    Open(op, u"..");
    Open(op, u"..");
    EXPECT_THAT(Files(op), ElementsAre("boot.ini"));
    op.ClickRow(u"grdFiles", 0);
    EXPECT_EQ(Form(op).txtFullPath.Text(), u"C:\\boot.ini");
    Cancel(op);
  });
}

TEST_F(TouchFile, ChoosingADriveListsItsRoot) {
  OpenFile(InData(), [](Operator& op) {
    op.ClickRow(u"grdFiles", 0);
    Form(op).cboDrivers.Select(1);
    EXPECT_EQ(Form(op).txtPath.Text(), u"D:");
    EXPECT_FALSE(Form(op).txtFullPath.Visible());
    EXPECT_THAT(Rows(op), ElementsAre("|Backup"));
    EXPECT_THAT(Files(op), ElementsAre());
    Cancel(op);
  });
}

TEST_F(TouchFile, ADriveThatIsNotReadyIsToldOncePerChange) {
  OpenFile(InData(), [this](Operator& op) {
    for (std::size_t changes = 1; changes <= 2; ++changes) {
      Form(op).cboDrivers.Select(2);
      EXPECT_THAT(Rows(op), ElementsAre());
      EXPECT_THAT(Files(op), ElementsAre());
      ASSERT_EQ(platform.Boxes.size(), changes);
      EXPECT_EQ(platform.Boxes.back(),
                (headless::HeadlessPlatform::Box{u"DriveNotReady", 0, u"Information"}));
      Form(op).cboDrivers.Select(0);
    }
    Cancel(op);
  });
}

struct Filter {
  String Text;
  std::vector<String> Entries;
  std::vector<std::string> Files;  // of the first entry
};

TEST_F(TouchFile, TheFilterMakesTypesAndTheFirstOneIsActive) {
  const Filter filters[] = {
      {u"", {u"Alle Dateien     *.*"}, {"readme.txt", "plan.bmp", "notes.TXT"}},
      {u"Bilder|*.BMP;*.gif", {u"Bilder     *.BMP;*.gif"}, {"plan.bmp"}},
      {u"@Text|*.txt|All|*.*", {u"Text     *.txt", u"All     *.*"}, {"readme.txt", "notes.TXT"}},
      {u"Text|*.txt|All", {u"Text     *.txt"}, {"readme.txt", "notes.TXT"}},
      {u"Data|data*.txt", {u"Data     data*.txt"}, {"readme.txt", "notes.TXT"}},
      {u"None|*.xyz", {u"None     *.xyz"}, {}},
      {u"No pair", {}, {}},
      {u"Empty|", {u"Empty     "}, {}},
  };
  for (const Filter& filter : filters) {
    OpenFile(InData(filter.Text), [&](Operator& op) {
      EXPECT_EQ(Form(op).cboExtention.Items(), filter.Entries) << ToUtf8(filter.Text);
      EXPECT_EQ(Files(op), filter.Files) << ToUtf8(filter.Text);
      Cancel(op);
    });
  }
}

TEST_F(TouchFile, AnotherTypeListsTheFilesAnew) {
  OpenFile(InData(u"Text|*.txt|Bilder|*.bmp"), [](Operator& op) {
    Form(op).cboExtention.Select(1);
    EXPECT_THAT(Files(op), ElementsAre("plan.bmp"));
    Form(op).cboExtention.Select(0);
    EXPECT_THAT(Files(op), ElementsAre("readme.txt", "notes.TXT"));
    Cancel(op);
  });
}

TEST_F(TouchFile, ANameWithoutADotIsItsOwnExtension) {
  for (const StringView name :
       {u"C:\\Data\\TXT", u"C:\\Data\\.txt", u"C:\\Data\\a.b.txt.", u"C:\\Data\\a.b.txt"})
    machine.AddFile(name);
  OpenFile(InData(u"Text|*.txt"), [](Operator& op) {
    EXPECT_THAT(Files(op), ElementsAre("readme.txt", "notes.TXT", "TXT", ".txt", "a.b.txt"));
    Cancel(op);
  });
}

TEST_F(TouchFile, CarriesItsTextsAndTitlesWithoutMarks) {
  runtime.Texts = {{u"Directories", u"&Dir&ectories"}, {u"FileName", u"&File"}};
  OpenFile(InData(), [](Operator& op) {
    EXPECT_EQ(Form(op).idxCaption.Text(), u"TitleOpen");
    EXPECT_EQ(Form(op).grdFolders.Columns()[1].Title, u"Directories");
    EXPECT_EQ(Form(op).grdFiles.Columns()[0].Title, u"File");
    EXPECT_EQ(Form(op).lblDrivers.Caption(), u"Drive");
    EXPECT_EQ(Form(op).lblExtention.Caption(), u"FileType");
    EXPECT_EQ(Form(op).keyOK.Caption(), u"Open");
    EXPECT_EQ(Form(op).keyCancel.Caption(), u"Cancel");
    EXPECT_EQ(Form(op).idxFileListBox.Text(), u"DriveNotReady");
    EXPECT_FALSE(Form(op).idxFileListBox.Visible());
    Cancel(op);
  });
}

TEST_F(TouchFile, TheKindOfDialogChoosesTitleAndButton) {
  files::FFileSelectTouch form(apartment);
  form.SetTexts({}, {}, {}, 1);
  EXPECT_EQ(form.idxCaption.Text(), u"TitleSaveAs");
  EXPECT_EQ(form.keyOK.Caption(), u"Save");
  form.SetTexts({}, {}, u"Mine", 0);
  EXPECT_EQ(form.idxCaption.Text(), u"Mine");
}

TEST_F(TouchFile, FitsASmallPanel) {
  platform.Area = {0, 0, 12000, 7200};
  dialog->Settings().ButtonMinHeight = 600;
  dialog->Settings().CaptionMinHeight = 600;
  OpenFile(InData(), [](Operator& op) {
    EXPECT_LE(op.Form().Width(), 12000);
    EXPECT_LE(op.Form().Height(), 7200);
    for (const StringView control : {u"cboDrivers", u"cboExtention", u"keyOK", u"keyCancel"})
      EXPECT_GE(op.Get(control).Height(), 600) << ToUtf8(control);
    EXPECT_EQ(Form(op).grdFiles.Left() + Form(op).grdFiles.Width(), op.Form().Width() - 120);
    EXPECT_EQ(Form(op).grdFiles.Top(), Form(op).grdFolders.Top());
    Cancel(op);
  });
}

}  // namespace krx::test
