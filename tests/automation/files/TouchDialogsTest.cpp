// The touch selection dialogs with real input: taps, drags and keys.

#include <windows.h>

#include <algorithm>

#include "RealDisk.h"
#include "driver/List.h"
#include "files/SampleTree.h"
#include "support/DialogTest.h"

namespace krx::drive {
namespace {

constexpr const wchar_t* kDirectoryForm = L"FDirectorySelectTouch";
constexpr const wchar_t* kFileForm = L"FFileSelectTouch";
constexpr int kTwipsPerPixel = 15;  // at 96 dpi

class TouchDialogs : public DialogTest {
 protected:
  std::wstring PathOf(const std::wstring& name) const { return tree_.WidePath(name); }
  static Window Await(const wchar_t* name) {
    const Window form = WaitForForm(name);
    form.WaitUntilActive();
    form.WaitForFocusOn(L"grdFolders");
    return form;
  }
  Window OpenDirectory(const std::wstring& start, const std::string& settings = {}) {
    RunScript(settings + "WScript.Echo \"[\" & Dialogs.KRSelectDirectoryTouch(\"" + Narrow(start) +
              "\") & \"]\"\r\n");
    return Await(kDirectoryForm);
  }
  Window OpenFile(const std::wstring& start, const std::string& name = {},
                  const std::string& filter = {}) {
    RunScript("WScript.Echo \"[\" & Dialogs.KROpenFileTouch(\"" + name + "\", \"" + Narrow(start) +
              "\", \"" + filter + "\") & \"]\"\r\n");
    return Await(kFileForm);
  }
  void ExpectResult(const std::wstring& path) {
    std::string line(1, '[');
    line += Narrow(path);
    line += ']';
    EXPECT_EQ(Printed(), Lines{line});
  }

  static List Folders(const Window& form) { return List(form, L"grdFolders"); }
  static List Files(const Window& form) { return List(form, L"grdFiles"); }
  static void Touch(const List& rows, const std::wstring& name, int column = 1) {
    rows.Click(rows.Find(name, column));
  }
  static void OpenRow(const List& rows, const std::wstring& name) {
    rows.DoubleClick(rows.Find(name, 1));
  }
  static int HeightOf(const RECT& bounds) { return bounds.bottom - bounds.top; }

  const test::SampleTree tree_;
};

TEST_F(TouchDialogs, AShareIsBrowsedFromItsRoot) {
  const test::LocalShare share(tree_.Path());
  if (!share.Made()) GTEST_SKIP() << "no share can be made here";
  const std::wstring root(test::LocalShare::kPath.begin(), test::LocalShare::kPath.end());
  const Window form = OpenDirectory(root);
  const List folders = Folders(form);
  form.Child(L"txtDirectory").WaitForText(root);
  EXPECT_EQ(folders.Column(1), (std::vector<std::wstring>{L"Alpha", L"Logs", L"Zeta"}));
  OpenRow(folders, L"Logs");
  folders.WaitForCount(2);
  EXPECT_EQ(folders.Column(1), (std::vector<std::wstring>{L"..", L"Old"}));
  OpenRow(folders, L"..");
  folders.WaitForCount(3);
  form.Child(L"txtDirectory").WaitForText(root);
  Touch(folders, L"Zeta");
  form.Child(L"txtDirectory").WaitForText(root + L"\\Zeta");
  form.Child(L"keyOK").Click();
  ExpectResult(root + L"\\Zeta");
}

TEST_F(TouchDialogs, ASlashedStartDirectoryIsHighlighted) {
  std::wstring start = PathOf(L"Logs");
  std::replace(start.begin(), start.end(), L'\\', L'/');
  const Window form = OpenDirectory(start);
  form.Child(L"txtDirectory").WaitForText(PathOf(L""));
  EXPECT_EQ(Folders(form).Selected(), 2);
  form.Child(L"keyCancel").Click();
  ExpectResult(L"");
}

TEST_F(TouchDialogs, ATouchNamesAFolderAndASecondOneOpensIt) {
  const Window form = OpenDirectory(PathOf(L"Logs"));
  const List folders = Folders(form);
  form.Child(L"txtDirectory").WaitForText(PathOf(L""));
  EXPECT_EQ(folders.Column(1), (std::vector<std::wstring>{L"..", L"Alpha", L"Logs", L"Zeta"}));
  EXPECT_EQ(folders.Cell(2, 0), L" +");
  EXPECT_EQ(folders.Selected(), 2);
  Touch(folders, L"Zeta");
  form.Child(L"txtDirectory").WaitForText(PathOf(L"Zeta"));
  OpenRow(folders, L"Logs");
  form.Child(L"txtDirectory").WaitForText(PathOf(L"Logs"));
  folders.Find(L"Old", 1);
  OpenRow(folders, L"..");
  form.Child(L"txtDirectory").WaitForText(PathOf(L""));
  OpenRow(folders, L"Alpha");  // without folders of its own
  form.Child(L"txtDirectory").WaitForText(PathOf(L"Alpha"));
  EXPECT_EQ(folders.Count(), 4);
  form.Child(L"keyOK").Click();
  ExpectResult(PathOf(L"Alpha"));
}

TEST_F(TouchDialogs, CloseKeyEscAndAltF4DoNothingAndCancelGivesUp) {
  const Window form = OpenDirectory(PathOf(L"Logs"));
  form.Child(L"keyClose").Click();
  PressKey(L"Esc");
  PressKey(VK_F4, VK_MENU);
  Touch(Folders(form), L"Zeta");
  form.Child(L"txtDirectory").WaitForText(PathOf(L"Zeta"));
  form.Child(L"keyCancel").Click();
  ExpectResult(L"");
}

TEST_F(TouchDialogs, ArrowsTouchRowsAndEnterOpensThem) {
  const Window form = OpenDirectory(PathOf(L"Alpha"));
  PressKey(L"Down");
  form.Child(L"txtDirectory").WaitForText(PathOf(L"Logs"));
  PressKey(L"Enter");
  Folders(form).Find(L"Old", 1);
  PressKey(L"Home");
  PressKey(L"Enter");
  form.Child(L"txtDirectory").WaitForText(PathOf(L""));
  form.Child(L"keyOK").Click();
  ExpectResult(PathOf(L""));
}

TEST_F(TouchDialogs, AFileIsHighlightedTouchedAndReturned) {
  const Window form = OpenFile(PathOf(L"Logs"), "plan.bmp", "Text|*.txt|All|*.*");
  const List files = Files(form);
  EXPECT_EQ(files.Column(0), (std::vector<std::wstring>{L"notes.txt", L"readme.txt"}));
  EXPECT_EQ(files.Selected(), -1);
  Touch(files, L"readme.txt", 0);
  form.Child(L"txtFullPath").WaitForText(PathOf(L"readme.txt"));
  form.Child(L"keyOK").Click();
  ExpectResult(PathOf(L"readme.txt"));
}

TEST_F(TouchDialogs, TheStartFileIsHighlightedAndNotChosen) {
  const Window form = OpenFile(PathOf(L"Logs"), "plan.bmp");
  const List files = Files(form);
  files.WaitForSelected(files.Find(L"plan.bmp"));
  Touch(Folders(form), L"Logs");
  files.Find(L"today.log");
  form.Child(L"keyOK").Click();
  ExpectResult(L"");
}

TEST_F(TouchDialogs, AnotherTypeIsChosenFromTheCombo) {
  const Window form = OpenFile(PathOf(L"Logs"), "", "Text|*.txt|Pictures|*.bmp");
  form.Child(L"cboExtention").Click();
  const Window list = WaitForList(form);
  PressKey(L"Down");
  PressKey(L"Enter");
  list.WaitUntilGone();
  Files(form).Find(L"plan.bmp");
  EXPECT_EQ(Files(form).Count(), 1);
  form.Child(L"keyCancel").Click();
  ExpectResult(L"");
}

TEST_F(TouchDialogs, DraggingScrollsAndTouchesNothing) {
  tree_.AddFolder(u"many");
  tree_.AddFolders(u"many", 60);
  const Window form = OpenDirectory(PathOf(L"many\\folder00001"));
  const List folders = Folders(form);
  folders.WaitForCount(61);
  const RECT area = form.Child(L"grdFolders").Bounds();
  const int x = (area.left + area.right) / 2;
  DragMouse(MouseButton::Left, {x, area.bottom - 30}, {x, area.top + 30});
  EXPECT_TRUE(Within(kPatience, [&] { return folders.Top() > 0; }));
  EXPECT_EQ(form.Child(L"txtDirectory").Text(), PathOf(L"many"));
  form.Child(L"keyCancel").Click();
  ExpectResult(L"");
}

TEST_F(TouchDialogs, TenThousandFoldersComeWhileTheDialogIsShownAndTheirMarkersFollow) {
  tree_.AddFolder(u"many");
  tree_.AddFolders(u"many", 10000);
  const Window form = OpenDirectory(PathOf(L"many\\folder00001"));
  const List folders = Folders(form);
  EXPECT_TRUE(Within(Milliseconds(30000), [&] { return folders.Count() == 10001; }));
  EXPECT_TRUE(Within(Milliseconds(30000), [&] { return folders.Cell(9997, 0) == L" +"; }));
  EXPECT_EQ(folders.Cell(9998, 0), L"");  // every third has a folder in it
  EXPECT_EQ(folders.Cell(0, 0), L"");
  form.Child(L"keyCancel").Click();
  ExpectResult(L"");
}

TEST_F(TouchDialogs, CancelWorksWhileMarkersAreStillComing) {
  tree_.AddFolder(u"many");
  tree_.AddFolders(u"many", 10000);
  const Window form = OpenDirectory(PathOf(L"many\\folder00001"));
  form.Child(L"keyCancel").Click();
  ExpectResult(L"");
}

// A drive without a medium: the letter Y, where the test environment provides it so.
class EmptyDrive : public TouchDialogs {
 protected:
  void SetUp() override {
    TouchDialogs::SetUp();
    const bool listed = (GetLogicalDrives() & (1u << ('Y' - 'A'))) != 0;
    if (!listed || GetFileAttributesW(L"Y:\\") != INVALID_FILE_ATTRIBUTES)
      GTEST_SKIP() << "there is no drive Y without a medium here";
  }
  static void ChooseDrive(const Window& form, const wchar_t* combo) {
    form.Child(combo).Click();
    const Window list = WaitForList(form);
    PressKey(L"End");  // Wine's own drive Z
    PressKey(L"Up");
    PressKey(L"Enter");
    list.WaitUntilGone();
  }
};

TEST_F(EmptyDrive, ShowsItsRowInTheDirectoryDialog) {
  const Window form = OpenDirectory(PathOf(L"Logs"));
  ChooseDrive(form, L"cboDrives");
  const List folders = Folders(form);
  const int row = folders.Find(Text("DriveNotReady"), 1);
  EXPECT_EQ(row, 0);
  EXPECT_EQ(folders.Count(), 1);
  EXPECT_EQ(folders.Cell(0, 0), L" !");
  EXPECT_FALSE(form.Child(L"grdFolders").Enabled());
  form.Child(L"keyCancel").Click();
  ExpectResult(L"");
}

TEST_F(EmptyDrive, IsToldInTheFileDialog) {
  const Window form = OpenFile(PathOf(L"Logs"));
  ChooseDrive(form, L"cboDrivers");
  const Window box = WaitForTitle(L"Information");
  PressKey(L"Enter");
  box.WaitUntilGone();
  EXPECT_EQ(Folders(form).Count(), 0);
  EXPECT_EQ(Files(form).Count(), 0);
  form.Child(L"keyCancel").Click();
  ExpectResult(L"");
}

TEST_F(TouchDialogs, TargetsAreAsHighAsAFingerWhereThePanelAsksForIt) {
  constexpr int kFinger = 510;       // twips; 9 millimetres
  constexpr int kSmallestRow = 397;  // twips; 7 millimetres
  const Window desktop = OpenDirectory(PathOf(L"Logs"));
  EXPECT_GE(HeightOf(Folders(desktop).RowBounds(0)) * kTwipsPerPixel, kSmallestRow);
  desktop.Child(L"keyCancel").Click();
  ExpectResult(L"");
  const Window form = OpenDirectory(PathOf(L"Logs"), "Dialogs.ButtonMinHeight = 600\r\n");
  EXPECT_GE(HeightOf(Folders(form).RowBounds(0)) * kTwipsPerPixel, kFinger);
  for (const wchar_t* control : {L"keyOK", L"keyCancel", L"cboDrives"})
    EXPECT_GE(HeightOf(form.Child(control).Bounds()) * kTwipsPerPixel, kFinger) << Narrow(control);
  form.Child(L"keyCancel").Click();
  ExpectResult(L"");
}

}  // namespace
}  // namespace krx::drive
