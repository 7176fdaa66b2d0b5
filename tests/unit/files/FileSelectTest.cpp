#include "files/FilesTest.h"

namespace krx::test {
namespace {

using FileSelectTest = FilesTest;
using Names = std::vector<std::string>;

service::FileRequest InData(String filter = u"Text|*.txt|All|*.*", String name = {}) {
  return {std::move(name), u"C:\\Data", std::move(filter), true, {}};
}

TEST_F(FileSelectTest, TheFirstFileTypeIsActive) {
  OpenFile(InData(), [](Operator& op) {
    const auto& types = op.Get<ui::ComboBox>(u"cboFileType(0)");
    EXPECT_EQ(types.Items(), (std::vector<String>{u"Text", u"All"}));
    EXPECT_EQ(types.Text(), u"Text");
    EXPECT_EQ(FilesShown(op.Get<ui::FileListBox>(u"filSelect")),
              (Names{"readme.txt", "notes.TXT"}));
    op.Click(u"keyCancel");
  });
}

TEST_F(FileSelectTest, AnotherFileTypeShowsOtherFiles) {
  OpenFile(InData(), [](Operator& op) {
    op.Get<ui::ComboBox>(u"cboFileType(0)").Select(1);
    EXPECT_EQ(FilesShown(op.Get<ui::FileListBox>(u"filSelect")),
              (Names{"readme.txt", "plan.bmp", "notes.TXT"}));
    op.Click(u"keyCancel");
  });
}

TEST_F(FileSelectTest, ADescriptionWithoutPatternSetsNone) {
  OpenFile(InData(u"Text|*.txt|All"), [](Operator& op) {
    auto& types = op.Get<ui::ComboBox>(u"cboFileType(0)");
    EXPECT_EQ(types.Items(), (std::vector<String>{u"Text", u"All"}));
    types.Select(1);
    EXPECT_EQ(op.Get<ui::FileListBox>(u"filSelect").Pattern(), u"*.txt");
    op.Click(u"keyCancel");
  });
}

TEST_F(FileSelectTest, AFilterReferenceIsResolvedAsAWhole) {
  OpenFile(InData(u"@Bilder|*.bmp|Alle|*"), [&](Operator& op) {
    EXPECT_EQ(log.EntriesOf("ResolveText"), Names{"ResolveText @Bilder|*.bmp|Alle|*"});
    EXPECT_EQ(op.Get<ui::ComboBox>(u"cboFileType(0)").Items(),
              (std::vector<String>{u"Bilder", u"Alle"}));
    EXPECT_EQ(FilesShown(op.Get<ui::FileListBox>(u"filSelect")), Names{"plan.bmp"});
    op.Click(u"keyCancel");
  });
}

TEST_F(FileSelectTest, AnEmptyFilterShowsAllFilesUnderOneEmptyType) {
  OpenFile(InData(u""), [](Operator& op) {
    EXPECT_EQ(op.Get<ui::ComboBox>(u"cboFileType(0)").Items(), std::vector<String>{u""});
    EXPECT_EQ(op.Get<ui::ComboBox>(u"cboFileType(1)").Items(), std::vector<String>{});
    EXPECT_EQ(op.Get<ui::FileListBox>(u"filSelect").RowCount(), 3);
    op.Click(u"keyCancel");
  });
}

TEST_F(FileSelectTest, TheTwinOfTheFileTypesIsNeverShown) {
  OpenFile(InData(), [](Operator& op) {
    EXPECT_FALSE(op.Get(u"cboFileType(1)").Visible());
    op.Click(u"keyCancel");
  });
}

TEST_F(FileSelectTest, TextsFollowWhetherItOpensOrSaves) {
  const auto check = [](StringView title, StringView ok) {
    return [=](Operator& op) {
      auto& form = dynamic_cast<files::FFileSelect&>(op.Form());
      EXPECT_EQ(form.idxCaption.Text(), title);
      EXPECT_EQ(form.keyOK.Caption(), ok);
      EXPECT_EQ(form.keyCancel.Caption(), u"Cancel");
      const StringView labels[] = {u"FileName", u"Directories", u"FileType", u"Drive"};
      for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(form.lbl[i].Caption(), labels[i]);
      op.Click(u"keyCancel");
    };
  };
  OpenFile(InData(), check(u"TitleOpen", u"Open"));
  SaveFile(InData(), check(u"TitleSaveAs", u"Save"));
  service::FileRequest titled = InData();
  titled.Title = u"Pick";
  SaveFile(titled, check(u"Pick", u"Save"));
}

TEST_F(FileSelectTest, AnotherKindOfDialogHasNoCaption) {
  files::FFileSelect form(apartment);
  form.SetTexts(u"", u"C:\\", u"", 2);
  EXPECT_EQ(form.idxCaption.Text(), u"");
}

TEST_F(FileSelectTest, OkNeedsAName) {
  EXPECT_EQ(SaveFile(InData(),
                     [](Operator& op) {
                       EXPECT_FALSE(op.Get(u"keyOK").Enabled());
                       EXPECT_EQ(op.Focus(), u"txtFileName");
                       op.Press(ui::kKeyEnter);
                       op.Type(u"a");
                       EXPECT_TRUE(op.Get(u"keyOK").Enabled());
                       op.Get<ui::TextBox>(u"txtFileName").Edited(u"");
                       EXPECT_FALSE(op.Get(u"keyOK").Enabled());
                       op.Get<ui::TextBox>(u"txtFileName").SelStart = 0;
                       op.Type(u"new file");
                       op.Press(ui::kKeyEnter);
                     }),
            u"C:\\Data\\new file");
}

TEST_F(FileSelectTest, TheNamePassedIsOffered) {
  EXPECT_EQ(SaveFile(InData(u"All|*", u"report.txt"), [](Operator& op) { op.Click(u"keyOK"); }),
            u"C:\\Data\\report.txt");
}

TEST_F(FileSelectTest, AFileIsChosenByClickAndOk) {
  EXPECT_EQ(OpenFile(InData(u"All|*"),
                     [](Operator& op) {
                       op.ClickRow(u"filSelect", 1);
                       EXPECT_EQ(TextOf(op, u"txtFileName"), u"plan.bmp");
                       op.Click(u"keyOK");
                     }),
            u"C:\\Data\\plan.bmp");
}

TEST_F(FileSelectTest, AFileIsChosenByDoubleClickOrEnter) {
  EXPECT_EQ(OpenFile(InData(), [](Operator& op) { op.DoubleClickRow(u"filSelect", 1); }),
            u"C:\\Data\\notes.TXT");
  EXPECT_EQ(OpenFile(InData(),
                     [](Operator& op) {
                       op.Get(u"filSelect").SetFocus();
                       op.Press(ui::kKeyEnter);  // no file is selected yet
                       op.Press(ui::kKeyHome);
                       EXPECT_EQ(TextOf(op, u"txtFileName"), u"readme.txt");
                       op.Press(ui::kKeyEnter);
                     }),
            u"C:\\Data\\readme.txt");
}

TEST_F(FileSelectTest, AFileAtARootComesWithADoubledSeparator) {
  service::FileRequest request = InData(u"All|*");
  request.StartDirectory = u"C:\\";
  EXPECT_EQ(OpenFile(request, [](Operator& op) { op.DoubleClickRow(u"filSelect", 0); }),
            u"C:\\\\boot.ini");
}

TEST_F(FileSelectTest, CancelAndCloseReturnNothing) {
  for (const StringView key : {u"keyCancel", u"keyClose"}) {
    EXPECT_EQ(OpenFile(InData(u"", u"name"), [&](Operator& op) { op.Click(key); }), u"");
  }
}

TEST_F(FileSelectTest, TheFileListShowsTheHighlightedDirectory) {
  OpenFile(InData(u"All|*"), [](Operator& op) {
    const auto& files = op.Get<ui::FileListBox>(u"filSelect");
    op.Get(u"dirSelect").SetFocus();
    op.Press(ui::kKeyDown);
    EXPECT_EQ(files.Path(), u"C:\\Data\\Alpha");
    op.Press(ui::kKeyDown);
    EXPECT_EQ(files.Path(), u"C:\\Data\\Logs");
    EXPECT_EQ(FilesShown(files), Names{"today.log"});
    EXPECT_EQ(op.Get<ui::DirListBox>(u"dirSelect").Path(), u"C:\\Data");
    op.Click(u"keyCancel");
  });
}

TEST_F(FileSelectTest, OneFolderIsReadOnceForBothLists) {
  OpenFile(InData(), [&](Operator& op) {
    log.FailNothing();
    ClickDirectory(op, u"C:\\Data\\Logs");
    EXPECT_EQ(log.EntriesOf("ReadFolder"), Names{"ReadFolder(C:\\Data\\Logs)"});
    op.Click(u"keyCancel");
  });
}

TEST_F(FileSelectTest, ADriveChangeIsPassedOnToTheFileList) {
  machine.AddFile(u"D:\\disk.txt");
  OpenFile(InData(), [](Operator& op) {
    op.Get<ui::DriveListBox>(u"drvSelect").Select(1);
    EXPECT_EQ(op.Get<ui::FileListBox>(u"filSelect").Path(), u"D:\\");
    EXPECT_EQ(FilesShown(op.Get<ui::FileListBox>(u"filSelect")), Names{"disk.txt"});
    op.Get<ui::DriveListBox>(u"drvSelect").Select(2);
    EXPECT_FALSE(op.Get(u"dirSelect").Visible());
    EXPECT_TRUE(op.Get(u"idxFileListBox").Visible());
    op.Click(u"keyCancel");
  });
}

// The list keeps its directory, and its path is what is passed on.
TEST_F(FileSelectTest, ADriveThatIsNotReadyShowsTheFilesOfTheOpenDirectoryAgain) {
  OpenFile(InData(u"All|*"), [](Operator& op) {
    const auto& files = op.Get<ui::FileListBox>(u"filSelect");
    op.Get(u"dirSelect").SetFocus();
    op.Press(ui::kKeyDown);
    EXPECT_EQ(files.Path(), u"C:\\Data\\Alpha");
    op.Get<ui::DriveListBox>(u"drvSelect").Select(2);
    EXPECT_EQ(files.Path(), u"C:\\Data");
    op.Click(u"keyCancel");
  });
}

TEST_F(FileSelectTest, AClickOutsideIsTurnedBackWhileConfined) {
  service::FileRequest request = InData(u"All|*");
  request.AllowChangeUp = false;
  OpenFile(request, [](Operator& op) {
    EXPECT_FALSE(op.Get(u"drvSelect").Enabled());
    EXPECT_EQ(op.Get(u"drvSelect").BackColor(), 0x8000000Fu);
    ClickDirectory(op, u"C:\\");
    EXPECT_EQ(op.Get<ui::DirListBox>(u"dirSelect").Path(), u"C:\\Data");
    EXPECT_EQ(op.Get<ui::FileListBox>(u"filSelect").Path(), u"C:\\Data");
    op.Click(u"keyCancel");
  });
}

}  // namespace
}  // namespace krx::test
