// The file dialog with real mouse and keyboard on real folders.

#include "files/FilesTest.h"

namespace krx::drive {
namespace {

using Rows = std::vector<std::wstring>;

class OpenFile : public FilesTest {
 protected:
  Window OpenTree(std::wstring filter = L"All|*.*", bool free = true, std::wstring name = {}) {
    return Open({L"open", PathOf(L""), std::move(filter), std::move(name), free});
  }
};

TEST_F(OpenFile, ShowsTheFilesOfTheFirstType) {
  const Window form = OpenTree(L"Text|*.txt|Pictures|*.bmp;*.gif|All");
  EXPECT_EQ(form.Text(), Text("TitleOpen"));
  ExpectRows(form, L"filSelect", {L"notes.txt", L"readme.txt"});
  EXPECT_EQ(form.Child(L"cboFileType(0)").Text(), L"Text");
  Choose(form, L"cboFileType(0)", L'P');
  ExpectRows(form, L"filSelect", {L"plan.bmp"});
  Choose(form, L"cboFileType(0)", L'A');
  form.Child(L"cboFileType(0)").WaitForText(L"All");
  ExpectRows(form, L"filSelect", {L"plan.bmp"});
  PressKey(L"Esc");
  EXPECT_EQ(Result(), L"");
}

TEST_F(OpenFile, AFileIsChosenByClickAndOk) {
  const Window form = OpenTree();
  EXPECT_FALSE(form.Child(L"keyOK").Enabled());
  const List files(form, L"filSelect");
  files.Click(files.Find(L"plan.bmp"));
  form.Child(L"txtFileName").WaitForText(L"plan.bmp");
  form.Child(L"keyOK").Click();
  EXPECT_EQ(Result(), PathOf(L"plan.bmp"));
}

TEST_F(OpenFile, AFileIsChosenByDoubleClick) {
  const Window form = OpenTree();
  const List files(form, L"filSelect");
  files.DoubleClick(files.Find(L"readme.txt"));
  EXPECT_EQ(Result(), PathOf(L"readme.txt"));
}

TEST_F(OpenFile, AFileIsChosenByLettersAndEnter) {
  const Window form = OpenTree();
  PressKey(L"Tab");
  form.WaitForFocusOn(L"filSelect");
  TypeText(L"re");
  form.Child(L"txtFileName").WaitForText(L"readme.txt");
  PressKey(L"Enter");
  EXPECT_EQ(Result(), PathOf(L"readme.txt"));
}

TEST_F(OpenFile, ANameIsTypedToSaveUnder) {
  const Window form = Open({L"save", PathOf(L""), L"All|*", L"old name"});
  EXPECT_EQ(form.Text(), Text("TitleSaveAs"));
  PressKey(L"Home");
  PressKey(L"Shift+End");
  TypeText(L"new & old.txt");
  form.Child(L"txtFileName").WaitForText(L"new & old.txt");
  PressKey(L"Enter");
  EXPECT_EQ(Result(), PathOf(L"new & old.txt"));
}

TEST_F(OpenFile, FilesFollowTheHighlightedFolder) {
  const Window form = OpenTree();
  const List folders(form, L"dirSelect");
  folders.Click(folders.Find(L"Logs"));
  ExpectRows(form, L"filSelect", {L"today.log"});
  PressKey(L"Down");
  ExpectRows(form, L"filSelect", {});
  PressKey(L"Left");
  ExpectRows(form, L"filSelect", {L"today.log"});
  const List files(form, L"filSelect");
  files.DoubleClick(0);
  EXPECT_EQ(Result(), PathOf(L"Logs\\today.log"));
}

TEST_F(OpenFile, ConfinedNoFilesOutsideAreShown) {
  const Window form = OpenTree(L"All|*.*", false);
  EXPECT_FALSE(form.Child(L"drvSelect").Enabled());
  const Rows all{L"notes.txt", L"plan.bmp", L"readme.txt"};
  const List folders(form, L"dirSelect");
  folders.Click(0);
  ExpectRows(form, L"filSelect", all);
  PressKey(L"Home");
  ExpectRows(form, L"filSelect", all);
  PressKey(L"Esc");
  EXPECT_EQ(Result(), L"");
}

TEST_F(OpenFile, AtARootTheSeparatorIsDoubled) {
  const Window form = Open({L"save", L"C:\\", L"All|*.*", L"name.txt"});
  form.Child(L"keyOK").Click();
  EXPECT_EQ(Result(), L"C:\\\\name.txt");
}

TEST_F(OpenFile, NamesComeBackUnitByUnit) {
  const std::wstring name = L"\xd83d\xde00 &% \x4f60.txt. ";
  AddFile(L"Zeta\\" + name);
  Open({L"open", PathOf(L"Zeta"), L"All|*"});
  const Window form = WaitForForm(L"FFileSelect");
  const List files(form, L"filSelect");
  files.DoubleClick(files.Find(name));
  EXPECT_EQ(Result(), PathOf(L"Zeta\\" + name));
}

// A folder of 100,000 files: the dialog is there with its first rows at once, the operator can go
// before the rest has come, and in the end all of it is there.
class LargeFolder : public FilesTest {
 protected:
  static constexpr int kFiles = 100000;

  static void SetUpTestSuite() {
    large_.emplace();
    large_->AddFiles(u"", kFiles);
  }
  static void TearDownTestSuite() { large_.reset(); }
  static std::wstring Large() { return large_->WidePath(); }

  static inline std::optional<test::FolderTree> large_;
};

TEST_F(LargeFolder, GrowsUntilEveryFileIsThere) {
  const Window form = Open({L"open", Large(), L"All|*"});
  const List files(form, L"filSelect");
  files.WaitForCount(kFiles);
  PressKey(L"Tab");
  form.WaitForFocusOn(L"filSelect");
  PressKey(L"End");
  files.WaitForSelected(kFiles - 1);
  const std::wstring last = files.Cell(kFiles - 1, 0);
  form.Child(L"txtFileName").WaitForText(last);
  PressKey(L"Enter");
  EXPECT_EQ(Result(), Large() + L'\\' + last);
}

// A fast machine may have read the folder before anybody clicks, so several attempts are made.
TEST_F(LargeFolder, CanBeLeftWhileItIsRead) {
  constexpr int kAttempts = 20;
  bool left = false;
  for (int i = 0; i < kAttempts && !left; ++i) {
    const Window form = Open({L"open", Large(), L"All|*"});
    const List files(form, L"filSelect");
    const Window cancel = form.Child(L"keyCancel");
    left = files.Count() < kFiles;
    cancel.Click();
    form.WaitUntilGone();
    EXPECT_EQ(Result(), L"");
  }
  EXPECT_TRUE(left) << "no dialog was there before all of its files";
}

TEST_F(OpenFile, ConfinedNoFileOutsideComesIntoReach) {
  const Window form =
      Open({.Method = L"open", .Start = PathOf(L"Logs"), .Filter = L"All|*.*", .Free = false});
  PressFirstRowAndLeave(form);
  form.Child(L"txtFileName").Click();
  form.WaitForFocusOn(L"txtFileName");
  TypeText(L"name");
  form.Child(L"keyOK").Click();
  EXPECT_EQ(Result(), PathOf(L"Logs\\name"));
}

}  // namespace
}  // namespace krx::drive
