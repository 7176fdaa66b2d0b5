#include "files/FilesTest.h"

namespace krx::test {
namespace {

using ui::kKeyDown;
using ui::kKeyHome;
using ui::kKeyLeft;
using ui::kKeyRight;
using ui::kKeyUp;

using SelectDirectoryTest = FilesTest;

TEST_F(SelectDirectoryTest, OkReturnsTheStartDirectory) {
  EXPECT_EQ(SelectDirectory({u"C:\\Data", true, {}}, [](Operator& op) { op.Click(u"keyOK"); }),
            u"C:\\Data");
}

TEST_F(SelectDirectoryTest, CancelAndCloseReturnNothing) {
  for (const StringView key : {u"keyCancel", u"keyClose"}) {
    EXPECT_EQ(SelectDirectory({u"C:\\Data", true, {}}, [&](Operator& op) { op.Click(key); }), u"");
  }
}

TEST_F(SelectDirectoryTest, EscapeReturnsNothing) {
  EXPECT_EQ(
      SelectDirectory({u"C:\\Data", true, {}}, [](Operator& op) { op.Press(ui::kKeyEscape); }),
      u"");
}

TEST_F(SelectDirectoryTest, TextsAreThoseOfTheRuntimeAndTheTitleIsTheCallers) {
  runtime.Texts[u"SelectedDirectory"] = u"Gewählt";
  SelectDirectory({u"", true, u"Wohin?"}, [](Operator& op) {
    auto& form = dynamic_cast<files::FSelectDirectory&>(op.Form());
    EXPECT_EQ(form.idxCaption.Text(), u"Wohin?");
    EXPECT_EQ(form.idxFileListBox.Text(), u"DriveNotReady");
    EXPECT_EQ(form.lbl[0].Caption(), u"Gewählt");
    EXPECT_EQ(form.lbl[1].Caption(), u"Drive");
    EXPECT_EQ(form.lbl[2].Caption(), u"Directories");
    EXPECT_EQ(form.keyOK.Caption(), u"OK");
    EXPECT_EQ(form.keyCancel.Caption(), u"Cancel");
    op.Click(u"keyCancel");
  });
  SelectDirectory({}, [](Operator& op) {
    EXPECT_EQ(op.Get<ui::KRXIndex>(u"idxCaption").Text(), u"TitleSelectDirectory");
    op.Click(u"keyCancel");
  });
}

TEST_F(SelectDirectoryTest, ConfinementGreysAndLocksPathAndDrive) {
  for (const bool allow : {true, false}) {
    SelectDirectory({u"C:\\Data", allow, {}}, [allow](Operator& op) {
      const ui::Color color = allow ? 0x80000005u : 0x8000000Fu;
      EXPECT_EQ(op.Get<ui::TextBox>(u"txtDirectory").Locked(), !allow);
      EXPECT_EQ(op.Get<ui::TextBox>(u"txtDirectory").BackColor(), color);
      EXPECT_EQ(op.Get(u"drvSelect").Enabled(), allow);
      EXPECT_EQ(op.Get(u"drvSelect").BackColor(), color);
      op.Click(u"keyCancel");
    });
  }
}

// Where a start directory leads: what is open then, what OK returns, and the directories of which
// the first one that can be opened is read.
struct Start {
  String Directory;
  String Opened;
  std::string Tried;
};

class StartDirectoryTest : public FilesTest, public ::testing::WithParamInterface<Start> {};

TEST_P(StartDirectoryTest, IsOpenedAsDeepAsThereIsOneByOneReading) {
  machine.CurrentFolder = u"C:\\Windows";
  machine.AddFolder(u"\\\\server\\share\\Plant\\One");
  const String result = SelectDirectory({GetParam().Directory, true, {}}, [&](Operator& op) {
    EXPECT_EQ(op.Get<ui::DirListBox>(u"dirSelect").Path(), GetParam().Opened);
    op.Click(u"keyOK");
  });
  EXPECT_EQ(result, GetParam().Opened);
  EXPECT_EQ(log.EntriesOf("ReadFolder"),
            std::vector<std::string>{"ReadFolder(" + GetParam().Tried + ")"});
}

INSTANTIATE_TEST_SUITE_P(
    Beginnings, StartDirectoryTest,
    ::testing::Values(Start{u"C:\\Data\\Logs", u"C:\\Data\\Logs",
                            R"(C:\Data\Logs|C:\Data|C:\|C:\Windows)"},
                      Start{u"", u"C:\\Windows", R"(C:\Windows|C:\|C:\Windows)"},
                      Start{u"C:\\Data\\Gone\\Deeper", u"C:\\Data",
                            R"(C:\Data\Gone\Deeper|C:\Data\Gone|C:\Data|C:\|C:\Windows)"},
                      // The separator at the end names the same directory once more.
                      Start{u"C:\\Data\\", u"C:\\Data", R"(C:\Data|C:\|C:\Windows)"},
                      // "\" is the root of the current drive, "\\server" no folder at all.
                      Start{u"\\\\server\\share\\Plant", u"\\\\server\\share\\Plant",
                            R"(\\server\share\Plant|\\server\share|C:\|C:\Windows)"},
                      Start{u"D:", u"D:\\", R"(D:\|C:\Windows)"},
                      Start{u"D:\\", u"D:\\", R"(D:\|C:\Windows)"},
                      Start{u"Z:\\Data", u"C:\\Windows", R"(Z:\Data|Z:\|C:\Windows)"},
                      // Drive E: is not ready.
                      Start{u"E:\\Data", u"C:\\Windows", R"(E:\Data|E:\|C:\Windows)"}));

TEST_F(SelectDirectoryTest, AMissingStartDriveLeavesTheDriveListOnItsDefault) {
  SelectDirectory({u"Z:\\Data", true, {}}, [](Operator& op) {
    EXPECT_EQ(op.Get<ui::DriveListBox>(u"drvSelect").Drive(), u"c:");
    EXPECT_TRUE(op.Get(u"dirSelect").Visible());
    op.Click(u"keyCancel");
  });
}

TEST_F(SelectDirectoryTest, ADriveChangeShowsTheTwoCharacterDriveUntilTheListIsUsed) {
  const auto choose_d = [](Operator& op) {
    op.Get<ui::DriveListBox>(u"drvSelect").Select(1);
    EXPECT_EQ(op.Get<ui::DirListBox>(u"dirSelect").Path(), u"D:\\");
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"d:");
  };
  EXPECT_EQ(SelectDirectory({u"C:\\Data", true, {}},
                            [&](Operator& op) {
                              choose_d(op);
                              op.Click(u"keyOK");
                            }),
            u"d:");
  EXPECT_EQ(SelectDirectory({u"C:\\Data", true, {}},
                            [&](Operator& op) {
                              choose_d(op);
                              ClickDirectory(op, u"D:\\Backup");
                              op.Click(u"keyOK");
                            }),
            u"D:\\Backup");
}

TEST_F(SelectDirectoryTest, ADriveThatIsNotReadyUncoversTheNoticeUntilAnotherIsChosen) {
  SelectDirectory({u"C:\\Data", true, {}}, [](Operator& op) {
    auto& drives = op.Get<ui::DriveListBox>(u"drvSelect");
    drives.Select(2);
    EXPECT_FALSE(op.Get(u"dirSelect").Visible());
    EXPECT_TRUE(op.Get(u"idxFileListBox").Visible());
    EXPECT_EQ(op.Get(u"idxFileListBox").Bounds(), op.Get(u"dirSelect").Bounds());
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"e:");
    drives.Select(0);
    EXPECT_TRUE(op.Get(u"dirSelect").Visible());
    EXPECT_FALSE(op.Get(u"idxFileListBox").Visible());
    EXPECT_EQ(op.Get<ui::DirListBox>(u"dirSelect").Path(), u"C:\\");
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"c:");
    op.Click(u"keyCancel");
  });
}

TEST_F(SelectDirectoryTest, ATypedPathIsReturnedAsTyped) {
  EXPECT_EQ(SelectDirectory({u"C:\\Data", true, {}},
                            [](Operator& op) {
                              auto& box = op.Get<ui::TextBox>(u"txtDirectory");
                              box.SetFocus();
                              box.SelLength = static_cast<int>(box.TextLength());
                              op.Type(u"nowhere\\ ..");
                              // Walking through the directory list to the button changes nothing.
                              op.Press(ui::kKeyTab);
                              op.Press(ui::kKeyTab);
                              EXPECT_EQ(op.Focus(), u"dirSelect");
                              op.Press(ui::kKeyTab);
                              op.Click(u"keyOK");
                            }),
            u"nowhere\\ ..");
}

TEST_F(SelectDirectoryTest, EnterInThePathFieldPressesOk) {
  EXPECT_EQ(SelectDirectory({u"C:\\Data", true, {}},
                            [](Operator& op) {
                              op.Get(u"txtDirectory").SetFocus();
                              op.Press(ui::kKeyEnter);
                            }),
            u"C:\\Data");
}

TEST_F(SelectDirectoryTest, RightOpensTheHighlightedEntry) {
  SelectDirectory({u"C:\\Data", true, {}}, [](Operator& op) {
    auto& list = op.Get<ui::DirListBox>(u"dirSelect");
    list.SetFocus();
    op.Press(kKeyDown);
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data\\Alpha");
    EXPECT_EQ(list.Path(), u"C:\\Data");
    op.Press(kKeyDown);
    op.Press(kKeyRight);
    EXPECT_EQ(list.Path(), u"C:\\Data\\Logs");
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data\\Logs");
    op.Click(u"keyCancel");
  });
}

TEST_F(SelectDirectoryTest, LeftLeadsFromSubdirectoryToDirectoryToParent) {
  SelectDirectory({u"C:\\Data\\Logs", true, {}}, [](Operator& op) {
    auto& list = op.Get<ui::DirListBox>(u"dirSelect");
    list.SetFocus();
    op.Press(kKeyDown);
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data\\Logs\\Old");
    op.Press(kKeyLeft);
    EXPECT_EQ(list.Path(), u"C:\\Data\\Logs");
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data\\Logs");
    op.Press(kKeyLeft);
    EXPECT_EQ(list.Path(), u"C:\\Data");
    EXPECT_EQ(list.List(list.ListIndex()), u"C:\\Data\\Logs");
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data\\Logs");
    op.Press(kKeyHome);
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\");
    op.Press(kKeyLeft);  // an ancestor is opened
    EXPECT_EQ(list.Path(), u"C:\\");
    EXPECT_EQ(list.ListIndex(), -1);
    op.Press(kKeyLeft);  // nothing lies above a root
    EXPECT_EQ(list.Path(), u"C:\\");
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\");
    op.Click(u"keyCancel");
  });
}

TEST_F(SelectDirectoryTest, UpLeavesTheStartDirectoryOfAFreeOperator) {
  SelectDirectory({u"C:\\Data", true, {}}, [](Operator& op) {
    op.Get(u"dirSelect").SetFocus();
    op.Press(kKeyUp);
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\");
    op.Click(u"keyCancel");
  });
}

TEST_F(SelectDirectoryTest, CancelWorksWhileALargeFolderIsRead) {
  machine.Slice = 1;
  EXPECT_EQ(SelectDirectory({u"C:\\Data", true, {}},
                            [&](Operator& op) {
                              EXPECT_EQ(platform.Pointers.back(), ui::Pointer::Hourglass);
                              op.Wait(std::chrono::milliseconds(10));
                              op.Click(u"keyCancel");
                            }),
            u"");
  EXPECT_EQ(platform.Pointers.back(), ui::Pointer::Default);
}

TEST_F(SelectDirectoryTest, TheTextFollowsAHighlightThatComesLate) {
  machine.Slice = 1;
  SelectDirectory({u"C:\\Data\\Zeta", true, {}}, [](Operator& op) {
    op.Get(u"dirSelect").SetFocus();
    op.Press(kKeyLeft);
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data");
    op.Wait(std::chrono::milliseconds(100));
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data\\Zeta");
    op.Click(u"keyCancel");
  });
}

TEST_F(SelectDirectoryTest, ARowOfSeparatorsIsWalkedOnce) {
  log.FailNothing();
  SelectDirectory({u"C:\\Data" + String(10000, u'\\'), true, {}}, [](Operator& op) {
    EXPECT_EQ(op.Get<ui::DirListBox>(u"dirSelect").Path(), u"C:\\Data");
    op.Click(u"keyCancel");
  });
  EXPECT_LT(log.EntriesOf("ReadFolder").size(), 10u);
}

TEST_F(SelectDirectoryTest, AClickOpensADirectory) {
  EXPECT_EQ(SelectDirectory({u"C:\\Data", true, {}},
                            [](Operator& op) {
                              ClickDirectory(op, u"C:\\Data\\Logs");
                              EXPECT_EQ(op.Get<ui::DirListBox>(u"dirSelect").Path(),
                                        u"C:\\Data\\Logs");
                              ClickDirectory(op, u"C:\\");
                              op.Click(u"keyOK");
                            }),
            u"C:\\");
}

TEST_F(SelectDirectoryTest, TheSecondClickOfADoubleClickOpensNothingMore) {
  EXPECT_EQ(SelectDirectory({u"C:\\", true, {}},
                            [](Operator& op) {
                              const auto& list = op.Get<ui::DirListBox>(u"dirSelect");
                              // C:\Data opens; the pointer then lies on C:\Data itself.
                              op.DoubleClickRow(u"dirSelect", RowOf(list, u"C:\\Data"));
                              EXPECT_EQ(list.Path(), u"C:\\Data");
                              op.Click(u"keyOK");
                            }),
            u"C:\\Data");
}

TEST_F(SelectDirectoryTest, UpStopsAtTheStartDirectoryWhileConfined) {
  SelectDirectory({u"C:\\Data", false, {}}, [](Operator& op) {
    auto& list = op.Get<ui::DirListBox>(u"dirSelect");
    list.SetFocus();
    op.Press(kKeyDown);
    op.Press(kKeyUp);
    EXPECT_EQ(list.ListIndex(), -1);
    op.Press(kKeyUp);
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data");
    op.Click(u"keyCancel");
  });
}

TEST_F(SelectDirectoryTest, LeftAtTheStartDirectoryOpensTheParentForAnInstant) {
  SelectDirectory({u"C:\\Data", false, {}}, [&](Operator& op) {
    auto& list = op.Get<ui::DirListBox>(u"dirSelect");
    list.SetFocus();
    log.FailNothing();
    op.Press(kKeyLeft);
    EXPECT_EQ(log.EntriesOf("ReadFolder"),
              (std::vector<std::string>{"ReadFolder(C:\\)", "ReadFolder(C:\\Data)"}));
    EXPECT_EQ(list.Path(), u"C:\\Data");
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data");
    op.Click(u"keyCancel");
  });
}

TEST_F(SelectDirectoryTest, AClickOnAnAncestorReturnsToTheStartDirectoryWhileConfined) {
  SelectDirectory({u"C:\\Data", false, {}}, [&](Operator& op) {
    const auto& list = op.Get<ui::DirListBox>(u"dirSelect");
    log.FailNothing();
    ClickDirectory(op, u"C:\\");
    EXPECT_EQ(log.EntriesOf("ReadFolder"),
              (std::vector<std::string>{"ReadFolder(C:\\)", "ReadFolder(C:\\Data)"}));
    EXPECT_EQ(list.Path(), u"C:\\Data");
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data");
    op.Click(u"keyCancel");
  });
}

TEST_F(SelectDirectoryTest, AKeyThatLeavesTheStartDirectoryIsTurnedBackAtItsRelease) {
  SelectDirectory({u"C:\\Data", false, {}}, [](Operator& op) {
    auto& list = op.Get<ui::DirListBox>(u"dirSelect");
    list.SetFocus();
    op.Press(kKeyHome);
    EXPECT_EQ(list.Path(), u"C:\\Data");
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data");
    op.Click(u"keyCancel");
  });
}

TEST_F(SelectDirectoryTest, EveryKeyDownShowsTheHighlightedEntryAfterPendingEvents) {
  SelectDirectory({u"C:\\Data", true, {}}, [&](Operator& op) {
    auto& list = op.Get<ui::DirListBox>(u"dirSelect");
    list.SetFocus();
    for (int key : {int{kKeyRight}, int{kKeyLeft}, int{kKeyUp}, int{ui::kKeyInsert}}) {
      op.Get<ui::TextBox>(u"txtDirectory").Text = u"typed";
      const int before = platform.EventsProcessed;
      list.KeyDown(key, 0);
      EXPECT_EQ(platform.EventsProcessed, before + 1);
      EXPECT_EQ(TextOf(op, u"txtDirectory"), list.List(list.ListIndex()));
    }
    op.Click(u"keyCancel");
  });
}

TEST_F(SelectDirectoryTest, ADirectoryWithoutAccessStaysClosedWithoutAWord) {
  machine.AddFolder(u"C:\\Data\\Secret");
  machine.Deny(u"C:\\Data\\Secret");
  SelectDirectory({u"C:\\Data", true, {}}, [](Operator& op) {
    const auto& list = op.Get<ui::DirListBox>(u"dirSelect");
    ClickDirectory(op, u"C:\\Data\\Secret");
    EXPECT_EQ(list.Path(), u"C:\\Data");
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data\\Secret");
    op.Press(kKeyRight);
    EXPECT_EQ(list.Path(), u"C:\\Data");
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data\\Secret");
    op.DoubleClickRow(u"dirSelect", RowOf(list, u"C:\\Data\\Secret"));
    EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data\\Secret");
    op.Click(u"keyCancel");
  });
}

}  // namespace
}  // namespace krx::test
