#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ports/headless/Operator.h"
#include "support/Errors.h"
#include "ui/DirListBox.h"
#include "ui/DriveListBox.h"
#include "ui/FileListBox.h"

namespace krx::test {
namespace {

using headless::Operator;
using std::chrono::milliseconds;
using ui::RowList;

constexpr std::uint32_t kDeviceUnavailable = 0x800A0000u + 68;
constexpr std::uint32_t kPermissionDenied = 0x800A0000u + 70;
constexpr std::uint32_t kInvalidIndex = 0x800A0000u + 381;

struct ListsForm : ui::Form {
  explicit ListsForm(ui::Platform& platform) : Form(platform, u"Lists") {}

  ui::FolderReadings Readings{*this};
  ui::DriveListBox drvSelect{*this, u"drvSelect"};
  ui::DirListBox dirSelect{*this, u"dirSelect", Readings};
  ui::FileListBox filSelect{*this, u"filSelect", Readings};
};

class ListsTest : public ::testing::Test {
 protected:
  ListsTest() {
    for (const StringView folder : {u"C:\\Data\\Logs\\Old", u"C:\\Data\\Alpha", u"C:\\Other"})
      machine.AddFolder(folder);
    for (const StringView file : {u"C:\\Data\\b.txt", u"C:\\Data\\a.bmp", u"C:\\Data\\c.txt"})
      machine.AddFile(file);
    machine.OnCall = [this](const std::string& call) { calls.push_back(call); };
  }

  void Show(headless::HeadlessPlatform::Script script) {
    platform.Expect(u"Lists", [this, script](Operator& op) {
      script(op);
      form.Hide();
    });
    form.ShowModal();
    EXPECT_THAT(platform.Complaints(), ::testing::IsEmpty());
  }
  static std::vector<std::string> Rows(const RowList& list) {
    std::vector<std::string> rows;
    for (int row = 0; row < list.RowCount(); ++row)
      rows.push_back(ToUtf8(list.Cell(row, 0)));
    return rows;
  }
  bool Busy() const {
    return !platform.Pointers.empty() && platform.Pointers.back() == ui::Pointer::Hourglass;
  }

  using Rows_ = std::vector<std::string>;
  headless::HeadlessPlatform platform;
  headless::SimulatedFiles& machine = platform.Machine;
  std::vector<std::string> calls;
  ListsForm form{platform};
  ui::DirListBox& dirs = form.dirSelect;
  ui::FileListBox& files = form.filSelect;
};

TEST_F(ListsTest, RowsAreTheAncestorsTheOpenDirectoryAndItsSubdirectories) {
  dirs.Path = u"C:\\Data";
  EXPECT_EQ(Rows(dirs), (Rows_{"C:\\", "Data", "Logs", "Alpha"}));
  using Image = RowList::Image;
  const Image images[] = {Image::OpenFolder, Image::OpenFolder, Image::Folder, Image::Folder};
  const int indents[] = {0, 1, 2, 2};
  for (int row = 0; row < 4; ++row) {
    EXPECT_EQ(dirs.RowImage(row), images[row]);
    EXPECT_EQ(dirs.Indent(row), indents[row]);
  }
  EXPECT_EQ(dirs.SelectedRow(), 1);
  EXPECT_EQ(dirs.ListCount(), 2);
}

TEST_F(ListsTest, EntriesCountFromTheOpenDirectory) {
  dirs.Path = u"C:\\Data\\Logs";
  EXPECT_EQ(dirs.ListIndex(), -1);
  EXPECT_EQ(dirs.List(0), u"C:\\Data\\Logs\\Old");
  EXPECT_EQ(dirs.List(-1), u"C:\\Data\\Logs");
  EXPECT_EQ(dirs.List(-2), u"C:\\Data");
  EXPECT_EQ(dirs.List(-3), u"C:\\");
  EXPECT_EQ(dirs.List(-4), u"");
  EXPECT_EQ(dirs.List(1), u"");
  dirs.ListIndex = -3;
  EXPECT_EQ(dirs.SelectedRow(), 0);
  dirs.ListIndex = 0;
  EXPECT_EQ(dirs.ListIndex(), 0);
  EXPECT_EQ(dirs.Path(), u"C:\\Data\\Logs");
  EXPECT_EQ(StatusOf([&] { dirs.ListIndex = 1; }), kInvalidIndex);
}

TEST_F(ListsTest, ANetworkRootIsOneRow) {
  machine.AddFolder(u"\\\\server\\share\\Plant");
  dirs.Path = u"\\\\server\\share\\Plant";
  EXPECT_EQ(Rows(dirs), (Rows_{"\\\\server\\share", "Plant"}));
  dirs.Path = u"\\\\server\\share";
  EXPECT_EQ(Rows(dirs), (Rows_{"\\\\server\\share", "Plant"}));
  EXPECT_EQ(dirs.List(0), u"\\\\server\\share\\Plant");
}

TEST_F(ListsTest, ChangeIsRaisedWhenAnotherDirectoryOpens) {
  int changes = 0;
  dirs.Change = [&] { ++changes; };
  dirs.Path = u"C:\\Data";
  EXPECT_EQ(changes, 1);
  dirs.Path = u"C:\\Data\\";  // the same one; read afresh, as it may have changed
  EXPECT_EQ(changes, 1);
  dirs.ListIndex = 0;
  EXPECT_EQ(changes, 1);
  dirs.Path = u"C:\\";
  EXPECT_EQ(changes, 2);
}

TEST_F(ListsTest, ADirectoryThatCannotBeOpenedLeavesTheOpenOne) {
  machine.AddDrive(u"E:", folders::DriveType::Optical, false);
  machine.Deny(u"C:\\Other");
  dirs.Path = u"C:\\Data";
  dirs.ListIndex = 1;
  dirs.Change = [] { FAIL(); };
  EXPECT_EQ(StatusOf([&] { dirs.Path = u"C:\\Gone"; }), kPathNotFound);
  EXPECT_EQ(StatusOf([&] { dirs.Path = u""; }), kPathNotFound);
  EXPECT_EQ(StatusOf([&] { dirs.Path = u"E:"; }), kDeviceUnavailable);
  EXPECT_EQ(StatusOf([&] { dirs.Path = u"Z:\\Data"; }), kDeviceUnavailable);
  EXPECT_EQ(StatusOf([&] { dirs.Path = u"C:\\Other"; }), kPermissionDenied);
  EXPECT_EQ(dirs.Path(), u"C:\\Data");
  EXPECT_EQ(dirs.ListIndex(), 1);
  EXPECT_EQ(Rows(dirs), (Rows_{"C:\\", "Data", "Logs", "Alpha"}));
}

TEST_F(ListsTest, AListWithoutADirectoryHasNoEntries) {
  EXPECT_EQ(dirs.RowCount(), 0);
  EXPECT_EQ(dirs.ListIndex(), -1);
  EXPECT_EQ(dirs.List(-1), u"");
  EXPECT_EQ(dirs.List(0), u"");
}

TEST_F(ListsTest, ALargeFolderGrowsInTheFileSystemsOrderUnderTheHourglass) {
  machine.Slice = 2;  // of 2 folders and 3 files
  dirs.Path = u"C:\\Data";
  files.Path = u"C:\\Data";
  EXPECT_EQ(dirs.ListCount(), 2);
  EXPECT_EQ(files.RowCount(), 0);
  EXPECT_TRUE(Busy());
  Show([&](Operator& op) {
    op.Wait(milliseconds(9));
    EXPECT_EQ(files.RowCount(), 0);
    op.Wait(milliseconds(1));
    EXPECT_EQ(Rows(files), (Rows_{"b.txt", "a.bmp"}));
    EXPECT_TRUE(Busy());
    op.Wait(milliseconds(10));
    EXPECT_EQ(Rows(files), (Rows_{"b.txt", "a.bmp", "c.txt"}));
    EXPECT_FALSE(Busy());
    EXPECT_EQ(platform.Pointers.size(), 2u);
    EXPECT_FALSE(dynamic_cast<ui::Timer&>(*form.Find(u"tmrReading")).Enabled());
  });
  EXPECT_EQ(calls, Rows_{"ReadFolder(C:\\Data)"});
}

TEST_F(ListsTest, TheListsHearMoreSeldomAsTheReadingGoesOnAndAtOnceOfItsEnd) {
  machine.Slice = 1;
  for (int i = 3; i < 40; ++i)
    machine.AddFile(u"C:\\Other\\" + String(1, static_cast<char16_t>(u'0' + i)));
  files.Path = u"C:\\Other";
  std::vector<int> counts;
  Show([&](Operator& op) {
    for (int elapsed = 10; elapsed <= 370; elapsed += 10) {
      op.Wait(milliseconds(10));
      if (counts.empty() || counts.back() != files.RowCount()) counts.push_back(files.RowCount());
    }
  });
  EXPECT_EQ(counts, (std::vector<int>{2, 4, 8, 16, 32, 37}));
}

TEST_F(ListsTest, AHighlightWaitsUntilTheListShowsItsEntry) {
  machine.Slice = 1;
  for (const StringView folder :
       {u"C:\\Other\\1", u"C:\\Other\\2", u"C:\\Other\\3", u"C:\\Other\\4"})
    machine.AddFolder(folder);
  dirs.Path = u"C:\\Other";
  Show([&](Operator& op) {
    op.Wait(milliseconds(20));  // the third one is known, and not shown yet
    EXPECT_EQ(dirs.ListCount(), 2);
    dirs.Highlight(u"C:\\Other\\3");
    EXPECT_EQ(dirs.ListIndex(), -1);
    op.Wait(milliseconds(10));
    EXPECT_EQ(dirs.ListIndex(), 2);
  });
}

TEST_F(ListsTest, AnotherFolderEndsTheGrowingOfTheFirst) {
  machine.Slice = 1;
  dirs.Path = u"C:\\Data";
  files.Path = u"C:\\Data";
  EXPECT_TRUE(Busy());
  dirs.Path = u"C:\\Data\\Alpha";
  EXPECT_TRUE(Busy()) << "the file list still shows it";
  files.Path = u"C:\\Data\\Alpha";
  Show([&](Operator& op) {
    op.Wait(milliseconds(10));
    EXPECT_FALSE(Busy());
    EXPECT_EQ(files.RowCount(), 0);
    EXPECT_EQ(Rows(dirs), (Rows_{"C:\\", "Data", "Alpha"}));
  });
}

TEST_F(ListsTest, TheFormsEndGivesTheReadingUp) {
  machine.Slice = 1;
  {
    ListsForm other(platform);
    other.dirSelect.Path = u"C:\\Data";
    EXPECT_TRUE(Busy());
  }
  EXPECT_FALSE(Busy());
}

TEST_F(ListsTest, APatternPicksTheRowsOfAGrowingList) {
  machine.Slice = 1;
  files.Pattern = u"*.TXT";
  files.Path = u"C:\\Data";
  Show([&](Operator& op) {
    op.Wait(milliseconds(30));  // two folders and two files are known
    EXPECT_EQ(Rows(files), (Rows_{"b.txt"}));
    op.Wait(milliseconds(10));
    EXPECT_EQ(Rows(files), (Rows_{"b.txt", "c.txt"}));
    files.SelectRow(1);
    files.Pattern = u"*";
    EXPECT_EQ(files.SelectedRow(), RowList::kNoRow);
    EXPECT_EQ(Rows(files), (Rows_{"b.txt", "a.bmp", "c.txt"}));
    files.Pattern = u"*.gif";
    EXPECT_EQ(files.RowCount(), 0);
  });
  EXPECT_EQ(calls, Rows_{"ReadFolder(C:\\Data)"}) << "a pattern reads nothing afresh";
}

TEST_F(ListsTest, AFileListShowsNoFilesOfAFolderThatCannotBeRead) {
  machine.Deny(u"C:\\Other");
  files.Path = u"C:\\Data";
  EXPECT_EQ(StatusOf([&] { files.Path = u"C:\\Other"; }), kPermissionDenied);
  EXPECT_EQ(files.Path(), u"C:\\Other");
  EXPECT_EQ(files.RowCount(), 0);
  EXPECT_EQ(StatusOf([&] { files.Path = u""; }), kPathNotFound);
  EXPECT_EQ(files.Path(), u"C:\\Other");
  files.Path = u"C:\\Data";
  EXPECT_EQ(files.RowCount(), 3);
}

TEST_F(ListsTest, TheFileListTakesADirectorysNewReading) {
  dirs.Path = u"C:\\Data";
  files.Path = u"C:\\Data";
  files.SelectRow(1);
  files.Path = u"C:\\Data";
  EXPECT_EQ(files.SelectedRow(), 1) << "the same reading, the same rows";
  machine.AddFile(u"C:\\Data\\new.txt");
  dirs.Path = u"C:\\Data";
  files.Path = u"C:\\Data";
  EXPECT_EQ(files.RowCount(), 4);
  EXPECT_EQ(calls.size(), 2u);
}

TEST_F(ListsTest, AHighlightWaitsForItsEntry) {
  machine.Slice = 1;
  int arrived = 0;
  dirs.Highlighted = [&] { ++arrived; };
  dirs.Path = u"C:\\Data";  // Logs is known, Alpha is not
  Show([&](Operator& op) {
    dirs.Highlight(u"C:\\Data\\Alpha");
    EXPECT_EQ(dirs.ListIndex(), -1);
    op.Wait(milliseconds(10));
    EXPECT_EQ(dirs.List(dirs.ListIndex()), u"C:\\Data\\Alpha");
    EXPECT_EQ(arrived, 1);
    op.Wait(milliseconds(100));
    EXPECT_EQ(arrived, 1);
  });
}

TEST_F(ListsTest, AHighlightDoesNotWaitOnceTheOperatorHasMovedOn) {
  machine.Slice = 1;
  dirs.Highlighted = [] { FAIL(); };
  dirs.Path = u"C:\\Data";
  Show([&](Operator& op) {
    dirs.Highlight(u"C:\\Data\\Alpha");
    dirs.OperatorSelected(0);
    op.Wait(milliseconds(100));
    EXPECT_EQ(dirs.SelectedRow(), 0);
  });
}

TEST_F(ListsTest, AHighlightOfWhatNeverComesIsForgotten) {
  machine.Slice = 1;
  dirs.Highlighted = [] { FAIL(); };
  dirs.Path = u"C:\\Data";
  Show([&](Operator& op) {
    dirs.Highlight(u"C:\\Data\\Gone");
    dirs.Highlight(u"C:\\Elsewhere\\Alpha");
    op.Wait(milliseconds(100));
    EXPECT_EQ(dirs.ListIndex(), -1);
  });
}

TEST_F(ListsTest, AHighlightIsAtOnceWhereTheEntryIsKnown) {
  dirs.Highlighted = [] { FAIL(); };
  dirs.Path = u"C:\\Data";
  dirs.Highlight(u"C:\\Data\\Alpha");
  EXPECT_EQ(dirs.ListIndex(), 1);
  dirs.Highlight(u"C:\\Data\\ALPHA");  // names are told apart unit by unit
  EXPECT_EQ(dirs.ListIndex(), 1);
}

TEST_F(ListsTest, DrivesShowTheirLabelsAndTheCurrentOneIsChosen) {
  machine.AddDrive(u"D:", folders::DriveType::Fixed, true, u"DATA");
  machine.AddDrive(u"E:", folders::DriveType::Optical, false, u"never seen");
  machine.AddDrive(u"N:", folders::DriveType::Network, true, u"not asked");
  machine.CurrentFolder = u"D:\\Work";
  form.drvSelect.Refresh();
  EXPECT_EQ(form.drvSelect.Items(), (std::vector<String>{u"c:", u"d:", u"e:", u"n:"}));
  EXPECT_EQ(form.drvSelect.Drive(), u"d:");
  EXPECT_EQ(calls, (Rows_{"Drives()", "CurrentDirectory()"})) << "no drive is asked before";
  form.drvSelect.Change = [] { FAIL() << "a label is no choice"; };
  Show([&](Operator& op) {
    op.Wait(milliseconds(10));
    EXPECT_EQ(form.drvSelect.Items(), (std::vector<String>{u"c:", u"d: [DATA]", u"e:", u"n:"}));
    EXPECT_EQ(form.drvSelect.Drive(), u"d:");
    EXPECT_EQ(form.drvSelect.Text(), u"d: [DATA]");
  });
}

TEST_F(ListsTest, ADriveIsChosenByTheStartOfAPath) {
  machine.AddDrive(u"D:");
  form.drvSelect.Refresh();
  int changes = 0;
  form.drvSelect.Change = [&] { ++changes; };
  form.drvSelect.Drive = u"D:\\Some\\Path\\";
  EXPECT_EQ(form.drvSelect.Drive(), u"d:");
  EXPECT_EQ(changes, 1);
  form.drvSelect.Drive = u"d:";
  EXPECT_EQ(changes, 1);
  for (const StringView missing : {u"Z:\\", u"", u"\\\\server\\share", u"\\", u"Data"})
    EXPECT_EQ(StatusOf([&] { form.drvSelect.Drive = missing; }), kDeviceUnavailable);
  EXPECT_EQ(form.drvSelect.Drive(), u"d:");
  EXPECT_EQ(changes, 1);
}

TEST_F(ListsTest, AMachineWithoutDrivesHasAnEmptyList) {
  machine.RemoveDrive(u"C:");
  form.drvSelect.Refresh();
  EXPECT_EQ(form.drvSelect.Drive(), u"");
  EXPECT_EQ(StatusOf([&] { form.drvSelect.Drive = u"C:"; }), kDeviceUnavailable);
}

TEST_F(ListsTest, ALabelThatCannotBeReadIsLeftOut) {
  machine.OnCall = [](const std::string& call) {
    if (call == "AskDrive(c:)") throw RuntimeError(57, u"Device I/O error");
  };
  machine.AddDrive(u"D:", folders::DriveType::Fixed, true, u"DATA");
  form.drvSelect.Refresh();
  Show([&](Operator& op) {
    op.Wait(milliseconds(10));
    EXPECT_EQ(form.drvSelect.Items(), (std::vector<String>{u"c:", u"d: [DATA]"}));
  });
}

}  // namespace
}  // namespace krx::test
