#include "files/FilesTest.h"

// How far confinement reaches where the rules about it leave room: it goes by the start directory's
// text, and a key counts once it is released.
namespace krx::test {
namespace {

using ui::kKeyDown;
using ui::kKeyHome;
using ui::kKeyLeft;
using ui::kKeyRight;
using ui::kKeyUp;

class ConfinementTest : public FilesTest {
 protected:
  // Opens the directory dialog confined to a start directory.
  String Confined(String start, Script script) {
    return SelectDirectory({std::move(start), false, {}}, std::move(script));
  }
  static ui::DirListBox& List(Operator& op) {
    auto& list = op.Get<ui::DirListBox>(u"dirSelect");
    list.SetFocus();
    return list;
  }
  static String Entry(const ui::DirListBox& list) { return list.List(list.ListIndex()); }
};

TEST_F(ConfinementTest, AnEmptyStartDirectoryConfinesToTheCurrentOne) {
  machine.CurrentFolder = u"C:\\Data";
  Confined(u"", [](Operator& op) {
    const auto& list = List(op);
    EXPECT_EQ(list.Path(), u"C:\\Data");
    op.Press(kKeyLeft);
    EXPECT_EQ(list.Path(), u"C:\\Data");
    ClickDirectory(op, u"C:\\");
    EXPECT_EQ(list.Path(), u"C:\\Data");
    op.Click(u"keyCancel");
  });
}

TEST_F(ConfinementTest, SubdirectoriesCanBeEnteredAndLeft) {
  EXPECT_EQ(Confined(u"C:\\Data",
                     [](Operator& op) {
                       const auto& list = List(op);
                       ClickDirectory(op, u"C:\\Data\\Logs");
                       ClickDirectory(op, u"C:\\Data\\Logs\\Old");
                       op.Press(kKeyLeft);
                       EXPECT_EQ(list.Path(), u"C:\\Data\\Logs");
                       EXPECT_EQ(Entry(list), u"C:\\Data\\Logs\\Old");
                       op.Press(kKeyLeft);
                       op.Press(kKeyLeft);
                       EXPECT_EQ(list.Path(), u"C:\\Data");
                       EXPECT_EQ(Entry(list), u"C:\\Data\\Logs");
                       op.Click(u"keyOK");
                     }),
            u"C:\\Data\\Logs");
}

// No entry equals the text with its separator, so Up is not stopped; but no entry above contains it
// either, so the key's release turns the operator back.
TEST_F(ConfinementTest, ASeparatorAtTheEndTurnsBackInsteadOfStopping) {
  Confined(u"C:\\Data\\", [](Operator& op) {
    const auto& list = List(op);
    int up = kKeyUp;
    op.Get(u"dirSelect").KeyDown(up, 0);
    EXPECT_EQ(up, kKeyUp) << "left to the list";
    op.Press(kKeyUp);
    EXPECT_EQ(list.Path(), u"C:\\Data");
    EXPECT_EQ(Entry(list), u"C:\\Data");
    op.Press(kKeyDown);
    EXPECT_EQ(Entry(list), u"C:\\Data\\Alpha");
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data\\Alpha");
    op.Click(u"keyCancel");
  });
}

// The parent stays open until the key is released.
TEST_F(ConfinementTest, ASeparatorAtTheEndLetsLeftOpenTheParentUntilItsRelease) {
  Confined(u"C:\\Data\\", [](Operator& op) {
    const auto& list = List(op);
    int left = kKeyLeft;
    op.Get(u"dirSelect").KeyDown(left, 0);
    EXPECT_EQ(list.Path(), u"C:\\");
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data");
    op.Get(u"dirSelect").KeyUp(left, 0);
    EXPECT_EQ(list.Path(), u"C:\\Data");
    op.Click(u"keyCancel");
  });
}

TEST_F(ConfinementTest, AClickOutsideTakesTheStartDirectoryAsItIsWritten) {
  EXPECT_EQ(Confined(u"C:\\Data\\",
                     [](Operator& op) {
                       ClickDirectory(op, u"C:\\");
                       EXPECT_EQ(List(op).Path(), u"C:\\Data");
                       op.Click(u"keyOK");
                     }),
            u"C:\\Data\\");
}

// While keys are down their entry may lie outside, until one of them is released.
TEST_F(ConfinementTest, TheReleaseOfAKeyTurnsBackWhatTheKeysBeforeItOpened) {
  Confined(u"C:\\Data", [](Operator& op) {
    const auto& list = List(op);
    op.KeyDown(kKeyHome);
    op.KeyDown(kKeyRight);
    EXPECT_EQ(list.Path(), u"C:\\");
    op.KeyUp(kKeyRight);
    EXPECT_EQ(list.Path(), u"C:\\Data");
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data");
    op.Click(u"keyCancel");
  });
}

// Whoever presses OK without releasing the key gets the start directory all the same, also where
// nothing takes the focus from the list.
TEST_F(ConfinementTest, OKReturnsNothingThatAKeyStillDownHasOpened) {
  const Script open_root = [](Operator& op) {
    List(op);
    op.KeyDown(kKeyHome);
    op.KeyDown(kKeyRight);
  };
  EXPECT_EQ(Confined(u"C:\\Data",
                     [&](Operator& op) {
                       open_root(op);
                       op.Click(u"keyOK");
                     }),
            u"C:\\Data");
  EXPECT_EQ(Confined(u"C:\\Data",
                     [&](Operator& op) {
                       open_root(op);
                       op.Get<ui::KRXKey>(u"keyOK").Click();
                     }),
            u"C:\\Data");
}

// A press selects the row under it. Released on a heading it is no click, and the access key that
// follows goes down in the list before the focus has moved.
TEST_F(ConfinementTest, APressThatEndsElsewhereIsTurnedBack) {
  EXPECT_EQ(Confined(u"C:\\Data",
                     [](Operator& op) {
                       const auto& list = List(op);
                       op.PressRow(u"dirSelect", RowOf(list, u"C:\\"));
                       EXPECT_EQ(Entry(list), u"C:\\");
                       op.ReleaseElsewhere(u"dirSelect");
                       EXPECT_EQ(Entry(list), u"C:\\Data");
                       op.Click(u"keyOK");
                     }),
            u"C:\\Data");
}

TEST_F(ConfinementTest, APressWithoutReleaseIsTurnedBackAfterAnAccessKey) {
  constexpr int kKeyAlt = 18;
  EXPECT_EQ(Confined(u"C:\\Data",
                     [](Operator& op) {
                       auto& list = List(op);
                       op.PressRow(u"dirSelect", RowOf(list, u"C:\\"));
                       op.KeyDown(kKeyAlt, ui::kAlt);
                       op.Get<ui::KRXKey>(u"keyOK").Click();
                     }),
            u"C:\\Data");
}

// The field shows what a key has opened, and any entry contains the root's text; but the rule is
// about what the field showed when the operator was inside.
TEST_F(ConfinementTest, AClickWhileAKeyIsDownDoesNotGoByWhatTheKeyShowed) {
  Confined(u"C:\\Data", [](Operator& op) {
    const auto& list = List(op);
    op.KeyDown(kKeyHome);
    op.KeyDown(kKeyRight);
    ClickDirectory(op, u"C:\\Windows");
    EXPECT_EQ(list.Path(), u"C:\\Data");
    op.PressRow(u"dirSelect", RowOf(list, u"C:\\"));
    op.KeyDown(kKeyDown);
    op.Get<ui::RowList>(u"dirSelect").OperatorClicked(RowOf(list, u"C:\\"));
    EXPECT_EQ(list.Path(), u"C:\\Data");
    op.Click(u"keyCancel");
  });
}

TEST_F(ConfinementTest, LeavingTheListTurnsBackBeforeAFileCanBeChosen) {
  OpenFile({{}, u"C:\\Data", u"All|*", false, {}}, [](Operator& op) {
    const auto& files = op.Get<ui::FileListBox>(u"filSelect");
    List(op);
    op.KeyDown(kKeyHome);
    op.KeyDown(kKeyRight);
    EXPECT_EQ(FilesShown(files), std::vector<std::string>{"boot.ini"});
    op.ClickRow(u"filSelect", 0);
    EXPECT_EQ(files.Path(), u"C:\\Data");
    EXPECT_EQ(files.SelectedRow(), ui::RowList::kNoRow) << "the file pressed on is gone";
    op.Click(u"keyCancel");
  });
}

// A relative start directory is a text that may occur in any path, and it equals no entry.
TEST_F(ConfinementTest, ARelativeStartDirectoryConfinesToPathsThatContainItsText) {
  machine.AddFolder(u"C:\\MyData");
  EXPECT_EQ(Confined(u"Data",
                     [](Operator& op) {
                       const auto& list = List(op);
                       EXPECT_EQ(list.Path(), u"C:\\Data");
                       op.Press(kKeyLeft);
                       EXPECT_EQ(list.Path(), u"C:\\") << "C:\\Data, highlighted, contains Data";
                       ClickDirectory(op, u"C:\\MyData");
                       EXPECT_EQ(list.Path(), u"C:\\MyData") << "so does this one";
                       op.Click(u"keyOK");
                     }),
            u"C:\\MyData");
}

// What is confined to a directory that does not exist is turned back to where its path ends.
TEST_F(ConfinementTest, AMissingStartDirectoryConfinesToItsDeepestAncestor) {
  Confined(u"C:\\Data\\Gone", [](Operator& op) {
    const auto& list = List(op);
    EXPECT_EQ(list.Path(), u"C:\\Data");
    op.Press(kKeyHome);
    EXPECT_EQ(list.Path(), u"C:\\Data");
    EXPECT_EQ(Entry(list), u"C:\\Data");
    ClickDirectory(op, u"C:\\");
    EXPECT_EQ(list.Path(), u"C:\\Data");
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data");
    // The path field's text counts as well, and it is the ancestor's.
    ClickDirectory(op, u"C:\\Data\\Logs");
    EXPECT_EQ(list.Path(), u"C:\\Data\\Logs");
    op.Click(u"keyCancel");
  });
}

// When the start directory vanishes there is nothing left to be turned back to.
TEST_F(ConfinementTest, WithAVanishedStartDirectoryTheOperatorStaysWhereHeIs) {
  Confined(u"C:\\Data\\Logs", [&](Operator& op) {
    const auto& list = List(op);
    machine.Remove(u"C:\\Data\\Logs");
    op.Press(kKeyRight);
    EXPECT_EQ(list.Path(), u"C:\\Data\\Logs");
    op.Press(kKeyHome);
    EXPECT_EQ(list.Path(), u"C:\\Data\\Logs");
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data\\Logs");
    op.Click(u"keyCancel");
  });
}

TEST_F(ConfinementTest, TheStartDirectoryIsComparedWithCase) {
  Confined(u"c:\\data", [](Operator& op) {
    const auto& list = List(op);
    EXPECT_EQ(list.Path(), u"c:\\data") << "kept as it is written";
    op.Press(kKeyUp);
    EXPECT_EQ(Entry(list), u"c:\\data");
    ClickDirectory(op, u"c:\\data\\Logs");
    EXPECT_EQ(list.Path(), u"c:\\data\\Logs");
    op.Press(kKeyDown);
    EXPECT_EQ(Entry(list), u"c:\\data\\Logs\\Old");
    op.Click(u"keyCancel");
  });
}

// The path field lets a click pass that the start directory's text alone would turn back.
TEST_F(ConfinementTest, OnlyTheDirectoryDialogGoesByItsPathField) {
  Confined(u"C:\\DATA\\..\\Data", [](Operator& op) {
    ClickDirectory(op, u"C:\\Data\\Logs");
    EXPECT_EQ(List(op).Path(), u"C:\\Data\\Logs");
    op.Click(u"keyCancel");
  });
  OpenFile({{}, u"C:\\DATA\\..\\Data", u"All|*", false, {}}, [](Operator& op) {
    ClickDirectory(op, u"C:\\Data\\Logs");
    EXPECT_EQ(List(op).Path(), u"C:\\Data");
    EXPECT_EQ(op.Get<ui::FileListBox>(u"filSelect").Path(), u"C:\\Data");
    op.Click(u"keyCancel");
  });
}

TEST_F(ConfinementTest, ALinkIntoItselfIsFollowedLevelByLevel) {
  machine.AddLink(u"C:\\Data\\Loop", u"C:\\Data");
  EXPECT_EQ(Confined(u"C:\\Data",
                     [](Operator& op) {
                       String path = u"C:\\Data";
                       for (int level = 0; level < 50; ++level)
                         ClickDirectory(op, path += u"\\Loop");
                       op.Click(u"keyOK");
                     })
                .size(),
            7u + 50 * 5);
}

// The file list shows files of the start directory and below, whatever is highlighted meanwhile.
TEST_F(ConfinementTest, NoFileOutsideIsShownOnceAKeyIsReleased) {
  OpenFile({{}, u"C:\\Data\\Logs", u"All|*", false, {}}, [](Operator& op) {
    const auto& files = op.Get<ui::FileListBox>(u"filSelect");
    List(op);
    for (const int key : {kKeyHome, kKeyLeft, kKeyUp, kKeyRight, kKeyHome}) {
      op.Press(key);
      EXPECT_EQ(files.Path(), u"C:\\Data\\Logs");
      EXPECT_EQ(FilesShown(files), std::vector<std::string>{"today.log"});
    }
    op.Click(u"keyCancel");
  });
}

}  // namespace
}  // namespace krx::test
