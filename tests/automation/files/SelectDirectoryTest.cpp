// The directory dialog with real mouse and keyboard on real folders.

#include <algorithm>

#include "driver/Input.h"
#include "files/FilesTest.h"

namespace krx::drive {
namespace {

class SelectDirectory : public FilesTest {
 protected:
  Window OpenTree(bool free = true) {
    return Open({L"directory", PathOf(L""), {}, {}, free, L"Where?"});
  }
  // Presses a key in the directory list and waits for the path it leads to.
  static void Press(const Window& form, const wchar_t* key, const std::wstring& path) {
    PressKey(key);
    form.Child(L"txtDirectory").WaitForText(path);
  }
};

TEST_F(SelectDirectory, ShowsTheStartDirectoryAndReturnsIt) {
  const Window form = OpenTree();
  EXPECT_EQ(form.Text(), L"Where?");
  EXPECT_EQ(form.Child(L"txtDirectory").Text(), PathOf(L""));
  const auto rows = List(form, L"dirSelect").Column(0);
  ASSERT_GE(rows.size(), 4u);
  EXPECT_EQ(std::vector<std::wstring>(rows.end() - 3, rows.end()),
            (std::vector<std::wstring>{L"Alpha", L"Logs", L"Zeta"}));
  form.Child(L"keyOK").Click();
  EXPECT_EQ(Result(), PathOf(L""));
}

TEST_F(SelectDirectory, CancelCloseAndEscapeReturnNothing) {
  for (const wchar_t* way : {L"keyCancel", L"keyClose", L"Esc"}) {
    const Window form = OpenTree();
    std::wstring(way) == L"Esc" ? PressKey(L"Esc") : form.Child(way).Click();
    EXPECT_EQ(Result(), L"");
  }
}

TEST_F(SelectDirectory, ATypedPathSurvivesTheWalkToTheButton) {
  const Window form = OpenTree();
  form.Child(L"txtDirectory").Click();
  PressKey(L"Home");
  TypeText(L"nowhere ");
  const std::wstring typed = L"nowhere " + PathOf(L"");
  form.Child(L"txtDirectory").WaitForText(typed);
  for (const wchar_t* next : {L"drvSelect", L"dirSelect", L"keyOK"}) {
    PressKey(L"Tab");
    form.WaitForFocusOn(next);
  }
  PressKey(L"Enter");
  EXPECT_EQ(Result(), typed);
}

TEST_F(SelectDirectory, IsWalkedByArrowKeys) {
  const Window form = OpenTree();
  Press(form, L"Down", PathOf(L"Alpha"));
  Press(form, L"Down", PathOf(L"Logs"));
  PressKey(L"Right");
  Press(form, L"Down", PathOf(L"Logs\\Old"));
  Press(form, L"Left", PathOf(L"Logs"));
  PressKey(L"Left");  // the parent opens, Logs stays highlighted
  Press(form, L"Down", PathOf(L"Zeta"));
  form.Child(L"keyOK").Click();
  EXPECT_EQ(Result(), PathOf(L"Zeta"));
}

TEST_F(SelectDirectory, IsWalkedByClicks) {
  const Window form = OpenTree();
  const List list(form, L"dirSelect");
  list.Click(list.Find(L"Logs"));
  form.Child(L"txtDirectory").WaitForText(PathOf(L"Logs"));
  list.Click(list.Find(L"Old"));
  form.Child(L"txtDirectory").WaitForText(PathOf(L"Logs\\Old"));
  list.Click(list.Find(L"Logs"));  // an ancestor now
  form.Child(L"txtDirectory").WaitForText(PathOf(L"Logs"));
  form.Child(L"keyOK").Click();
  EXPECT_EQ(Result(), PathOf(L"Logs"));
}

TEST_F(SelectDirectory, ADoubleClickOpensOneFolderOnly) {
  const Window form = OpenTree();
  const List list(form, L"dirSelect");
  list.DoubleClick(list.Find(L"Logs"));
  form.Child(L"txtDirectory").WaitForText(PathOf(L"Logs"));
  form.Child(L"keyOK").Click();
  EXPECT_EQ(Result(), PathOf(L"Logs"));
}

// The list scrolls when the first click has opened the folder, so that one of its subfolders comes
// to lie under the second press.
TEST_F(SelectDirectory, ADoubleClickOpensOneFolderThoughTheListScrollsUnderIt) {
  AddFolder(L"Deep");
  for (int i = 0; i < 20; ++i)
    AddFolder(L"Deep\\S" + std::to_wstring(i));
  const Window form = OpenTree();
  const List list(form, L"dirSelect");
  list.DoubleClick(list.Find(L"Deep"));
  form.Child(L"txtDirectory").WaitForText(PathOf(L"Deep"));
  PressKey(L"Down");
  form.Child(L"txtDirectory").WaitForText(PathOf(L"Deep\\S0"));
  form.Child(L"keyOK").Click();
  EXPECT_EQ(Result(), PathOf(L"Deep\\S0"));
}

TEST_F(SelectDirectory, TypedLettersLookFoldersUp) {
  const Window form = OpenTree();
  TypeText(L"ze");
  form.Child(L"txtDirectory").WaitForText(PathOf(L"Zeta"));
  PressKey(L"Esc");
  EXPECT_EQ(Result(), L"");
}

TEST_F(SelectDirectory, ATypedPathIsReturnedAsTyped) {
  const Window form = OpenTree();
  form.Child(L"txtDirectory").Click();
  form.WaitForFocusOn(L"txtDirectory");
  PressKey(L"Home");
  PressKey(L"Shift+End");
  TypeText(L"X:\\not there ");
  form.Child(L"txtDirectory").WaitForText(L"X:\\not there ");
  PressKey(L"Enter");
  EXPECT_EQ(Result(), L"X:\\not there ");
}

TEST_F(SelectDirectory, ConfinedTheOperatorStaysAtTheStartDirectoryAndBelow) {
  const Window form = OpenTree(false);
  EXPECT_FALSE(form.Child(L"drvSelect").Enabled());
  const List list(form, L"dirSelect");
  list.Click(0);  // the drive: the start directory opens again
  EXPECT_TRUE(Within(kPatience, [&] { return list.Selected() == list.Count() - 4; }));
  form.Child(L"txtDirectory").WaitForText(PathOf(L""));
  for (const wchar_t* key : {L"Left", L"Up", L"Home", L"Right"})
    Press(form, key, PathOf(L""));
  Press(form, L"Down", PathOf(L"Alpha"));
  form.Child(L"txtDirectory").Click();
  form.WaitForFocusOn(L"txtDirectory");
  TypeText(L"x");
  form.Child(L"keyOK").Click();
  EXPECT_EQ(Result(), PathOf(L"Alpha"));
}

// The press selects the root; the access key goes down in the list before the focus is set anew.
TEST_F(SelectDirectory, ConfinedAPressThatEndsOnAHeadingLeadsNowhere) {
  const Window form = OpenTree(false);
  PressFirstRowAndLeave(form);
  form.Child(L"keyOK").Click();
  EXPECT_EQ(Result(), PathOf(L""));
}

TEST_F(SelectDirectory, ConfinedAKeyStillHeldLeadsNowhere) {
  const Window form = OpenTree(false);
  HoldKey(VK_HOME);
  HoldKey(VK_RIGHT);
  form.Child(L"keyOK").Click();
  EXPECT_EQ(Result(), PathOf(L""));
  ReleaseKey(VK_RIGHT);
  ReleaseKey(VK_HOME);
}

TEST_F(SelectDirectory, AStartDirectoryIsTakenHoweverItIsWritten) {
  std::wstring slashes = PathOf(L"Logs");
  std::replace(slashes.begin(), slashes.end(), L'\\', L'/');
  for (const std::wstring& start : {slashes, PathOf(L"Zeta\\..\\Logs")}) {
    const Window form = Open({L"directory", start});
    form.Child(L"txtDirectory").WaitForText(PathOf(L"Logs"));
    form.Child(L"keyCancel").Click();
    EXPECT_EQ(Result(), L"");
  }
}

TEST_F(SelectDirectory, ADriveIsChosenFromTheList) {
  const Window form = OpenTree();
  Choose(form, L"drvSelect", L'z');
  form.Child(L"txtDirectory").WaitForText(L"z:");
  form.Child(L"keyOK").Click();
  EXPECT_EQ(Result(), L"z:");
}

// The test environment provides a letter Y without a medium.
TEST_F(SelectDirectory, ADriveWithoutAMediumShowsTheNoticeUntilAnotherIsChosen) {
  const bool listed = (GetLogicalDrives() & (1u << ('Y' - 'A'))) != 0;
  if (!listed || GetFileAttributesW(L"Y:\\") != INVALID_FILE_ATTRIBUTES)
    GTEST_SKIP() << "there is no drive Y without a medium here";
  const Window form = OpenTree();
  Choose(form, L"drvSelect", L'y');
  WaitUntilVisible(form, L"dirSelect", false);
  WaitUntilVisible(form, L"idxFileListBox", true);
  EXPECT_EQ(form.Child(L"idxFileListBox").Text(), Text("DriveNotReady"));
  form.Child(L"txtDirectory").WaitForText(L"y:");
  Choose(form, L"drvSelect", L'c');
  WaitUntilVisible(form, L"dirSelect", true);
  WaitUntilVisible(form, L"idxFileListBox", false);
  form.Child(L"txtDirectory").WaitForText(L"c:");
  PressKey(L"Esc");
  EXPECT_EQ(Result(), L"");
}

TEST_F(SelectDirectory, AStartDirectoryThatIsGoneOpensItsDeepestAncestor) {
  const Window form = Open({L"directory", PathOf(L"Logs\\Gone\\Deeper")});
  EXPECT_EQ(form.Child(L"txtDirectory").Text(), PathOf(L"Logs"));
  PressKey(L"Esc");
  EXPECT_EQ(Result(), L"");
}

TEST_F(SelectDirectory, AFolderThatVanishesIsEnteredQuietly) {
  const Window form = OpenTree();
  Tree->Remove(u"Zeta");
  const List list(form, L"dirSelect");
  list.Click(list.Find(L"Zeta"));
  form.Child(L"txtDirectory").WaitForText(PathOf(L"Zeta"));
  EXPECT_EQ(list.Column(0).back(), L"Zeta") << "the list stays where it was";
  PressKey(L"Esc");
  EXPECT_EQ(Result(), L"");
}

TEST_F(SelectDirectory, PathsOfAnyLengthAndNameComeBackUnitByUnit) {
  std::wstring path = L"\xd83d\xde00 \x4f60\x597d";
  AddFolder(path);
  for (int level = 0; level < 12; ++level)
    AddFolder(path += L"\\level " + std::to_wstring(level) + std::wstring(40, L'x'));
  AddFolder(path + L"\\end. ");
  ASSERT_GT(PathOf(path).size(), 520u);
  const Window form = Open({L"directory", PathOf(path)});
  EXPECT_EQ(form.Child(L"txtDirectory").Text(), PathOf(path));
  Press(form, L"Down", PathOf(path + L"\\end. "));
  form.Child(L"keyOK").Click();
  EXPECT_EQ(Result(), PathOf(path + L"\\end. "));
}

TEST_F(SelectDirectory, ALinkLoopIsFollowedAsDeepAsTheOperatorGoes) {
  if (!Tree->AddLink(u"Alpha\\loop", "..")) GTEST_SKIP() << "no links here";
  const Window form = OpenTree();
  std::wstring path;
  for (int round = 0; round < 3; ++round) {
    const List list(form, L"dirSelect");
    list.Click(list.Count() - 3);  // Alpha, the first of three
    form.Child(L"txtDirectory").WaitForText(PathOf(path += round == 0 ? L"Alpha" : L"\\Alpha"));
    list.Click(list.Count() - 1);
    form.Child(L"txtDirectory").WaitForText(PathOf(path += L"\\loop"));
  }
  form.Child(L"keyOK").Click();
  EXPECT_EQ(Result(), PathOf(L"Alpha\\loop\\Alpha\\loop\\Alpha\\loop"));
}

}  // namespace
}  // namespace krx::drive
