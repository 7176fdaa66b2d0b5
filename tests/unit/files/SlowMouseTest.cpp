#include "files/SlowAnswersTest.h"

// What the dialogs for the mouse show while the machine keeps an answer back, and when it comes.
namespace krx::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SlowMouseTest : public SlowAnswersTest {
 protected:
  static constexpr bool kEverybody[] = {true, false};  // who may change up, and who is confined

  // Both dialogs at a start directory.
  void Both(const String& start, bool allow, const Script& script) {
    FilesTest::SelectDirectory({start, allow, {}}, script);
    FilesTest::OpenFile({u"name", start, {}, allow, {}}, script);
  }
  static ui::DirListBox& List(Operator& op) { return op.Get<ui::DirListBox>(u"dirSelect"); }
  static ui::DriveListBox& Drives(Operator& op) { return op.Get<ui::DriveListBox>(u"drvSelect"); }
  static bool Notice(Operator& op) { return op.Get(u"idxFileListBox").Visible(); }
  // What the operator sees to be at: the path field, or whose files are shown.
  static String Place(Operator& op) {
    return op.Form().Find(u"filSelect") ? op.Get<ui::FileListBox>(u"filSelect").Path()
                                        : TextOf(op, u"txtDirectory");
  }
  bool Busy() const {
    return !platform.Pointers.empty() && platform.Pointers.back() == ui::Pointer::Hourglass;
  }
  static void Cancel(Operator& op) { op.Click(u"keyCancel"); }
};

TEST_F(SlowMouseTest, AStartDirectoryThatKeepsItsAnswerCountsAsOpen) {
  for (const bool allow : kEverybody) {
    Both(u"C:\\Data\\Logs", allow, [this](Operator& op) {
      EXPECT_FALSE(Busy());
      Cancel(op);
    });
    Keep("ReadFolder(C:\\Data\\Logs|");
    Both(u"C:\\Data\\Logs", allow, [this](Operator& op) {
      Pass(op, Milliseconds(1000));
      EXPECT_EQ(List(op).Path(), u"C:\\Data\\Logs");
      EXPECT_EQ(Place(op), u"C:\\Data\\Logs");
      EXPECT_EQ(List(op).RowCount(), 3) << "it and its ancestors";
      EXPECT_TRUE(List(op).Visible());
      EXPECT_FALSE(Notice(op));
      EXPECT_TRUE(Busy());
      LetGo();
      Pass(op, kMoment);
      EXPECT_EQ(List(op).RowCount(), 4) << "and what is in it";
      EXPECT_EQ(Place(op), u"C:\\Data\\Logs");
      EXPECT_FALSE(Busy());
      Cancel(op);
      Keep("ReadFolder(C:\\Data\\Logs|");
    });
    LetGo();
  }
}

TEST_F(SlowMouseTest, AStartDirectoryThatIsRefusedLaterGivesWayToTheDeepestThatOpens) {
  for (const bool allow : kEverybody) {
    const Script script = [this](Operator& op) {
      EXPECT_EQ(List(op).Path(), u"C:\\Data\\Gone\\Deeper");
      EXPECT_EQ(Place(op), u"C:\\Data\\Gone\\Deeper");
      LetGo();
      Pass(op, kMoment);
      EXPECT_EQ(List(op).Path(), u"C:\\Data");
      EXPECT_EQ(Place(op), u"C:\\Data");
      EXPECT_EQ(List(op).ListCount(), 3);
      EXPECT_FALSE(Busy());
      op.Click(u"keyOK");
    };
    Keep("ReadFolder(");
    EXPECT_EQ(FilesTest::SelectDirectory({u"C:\\Data\\Gone\\Deeper", allow, {}}, script),
              u"C:\\Data");
    Keep("ReadFolder(");
    EXPECT_EQ(FilesTest::OpenFile({u"name", u"C:\\Data\\Gone\\Deeper", {}, allow, {}}, script),
              u"C:\\Data\\name");
  }
}

TEST_F(SlowMouseTest, AStartDriveThatTurnsOutNotReadyLeavesTheNotice) {
  for (const bool allow : kEverybody) {
    const Script script = [this](Operator& op) {
      EXPECT_EQ(Drives(op).Drive(), u"e:");
      EXPECT_EQ(Place(op), u"E:\\Data");
      EXPECT_FALSE(Notice(op)) << "nobody knows yet";
      LetGo();
      Pass(op, kMoment);
      EXPECT_EQ(Drives(op).Drive(), u"e:");
      EXPECT_EQ(Place(op), u"C:\\Windows") << "the current directory";
      EXPECT_TRUE(Notice(op));
      EXPECT_EQ(op.Get<ui::KRXIndex>(u"idxFileListBox").Text(), u"DriveNotReady");
      EXPECT_FALSE(List(op).Visible());
      Cancel(op);
      Keep("ReadFolder(");
    };
    Keep("ReadFolder(");
    Both(u"E:\\Data", allow, script);
    LetGo();
  }
}

// Not even the current directory can be opened.
TEST_F(SlowMouseTest, WhereNothingOpensInTheEndTheListIsEmpty) {
  machine.CurrentFolder = u"E:\\Work";
  for (const bool allow : kEverybody) {
    Keep("ReadFolder(");
    Both(u"E:\\Data", allow, [this](Operator& op) {
      EXPECT_EQ(List(op).Path(), u"E:\\Data");
      LetGo();
      Pass(op, kMoment);
      EXPECT_EQ(List(op).RowCount(), 0);
      EXPECT_FALSE(Busy());
      for (const int key : {ui::kKeyLeft, ui::kKeyRight, ui::kKeyDown}) {
        Do("key", [&] {
          if (List(op).Visible()) List(op).SetFocus();
          op.Press(key);
        });
      }
      Cancel(op);
      Keep("ReadFolder(");
    });
    LetGo();
  }
}

TEST_F(SlowMouseTest, AChosenDriveThatTurnsOutNotReadyLeavesTheNotice) {
  Both(u"C:\\Data", true, [this](Operator& op) {
    Keep("ReadFolder(E:\\)");
    Do("drive", [&] { Drives(op).Select(2); });
    Pass(op, Milliseconds(1000));
    EXPECT_EQ(List(op).Path(), u"E:\\") << "it counts as ready";
    EXPECT_TRUE(List(op).Visible());
    EXPECT_FALSE(Notice(op));
    LetGo();
    Pass(op, kMoment);
    EXPECT_TRUE(Notice(op));
    EXPECT_FALSE(List(op).Visible());
    EXPECT_EQ(List(op).Path(), u"C:\\Data") << "what was open before";
    Do("drive", [&] { Drives(op).Select(1); });
    EXPECT_FALSE(Notice(op));
    EXPECT_EQ(List(op).Path(), u"D:\\");
    Cancel(op);
  });
}

TEST_F(SlowMouseTest, AChosenDriveThatAnswersLateShowsItsFolders) {
  Both(u"C:\\Data", true, [this](Operator& op) {
    Keep("ReadFolder(D:\\)");
    Do("drive", [&] { Drives(op).Select(1); });
    EXPECT_EQ(List(op).RowCount(), 1) << "the root";
    LetGo();
    Pass(op, kMoment);
    EXPECT_EQ(List(op).Path(), u"D:\\");
    EXPECT_EQ(List(op).RowCount(), 2);
    EXPECT_FALSE(Notice(op));
    Cancel(op);
  });
}

// Whoever chooses another drive meanwhile hears no more of the silent one.
TEST_F(SlowMouseTest, ADriveThatWasGivenUpLeavesNoNotice) {
  Both(u"C:\\Data", true, [this](Operator& op) {
    Keep("ReadFolder(E:\\)");
    Do("silent drive", [&] { Drives(op).Select(2); });
    Do("another drive", [&] { Drives(op).Select(1); });
    LetGo();
    Pass(op, Milliseconds(1000));
    EXPECT_EQ(List(op).Path(), u"D:\\");
    EXPECT_TRUE(List(op).Visible());
    EXPECT_FALSE(Notice(op));
    EXPECT_FALSE(Busy());
    Cancel(op);
  });
}

TEST_F(SlowMouseTest, LabelsFollowAndASilentDriveDelaysNoOther) {
  machine.AddDrive(u"F:", folders::DriveType::Fixed, true, u"DATA");
  machine.AddDrive(u"G:", folders::DriveType::Fixed, true, u"PLANT");
  Both(u"C:\\Data", true, [this](Operator& op) {
    Keep("AskDrive(f:)");
    EXPECT_THAT(Drives(op).Items(), ElementsAre(u"c:", u"d:", u"e:", u"f:", u"g:"));
    Pass(op, Milliseconds(1000));
    EXPECT_THAT(Drives(op).Items(),
                ElementsAre(u"c: [SYSTEM]", u"d:", u"e:", u"f:", u"g: [PLANT]"));
    Do("drive", [&] { Drives(op).Select(3); });
    LetGo();
    Pass(op, kMoment);
    EXPECT_EQ(Drives(op).Items()[3], u"f: [DATA]");
    EXPECT_EQ(Drives(op).Drive(), u"f:") << "it stays chosen";
    EXPECT_EQ(List(op).Path(), u"F:\\") << "a label opens nothing";
    Cancel(op);
  });
}

TEST_F(SlowMouseTest, ADirectoryThatIsRefusedLaterGivesWayToTheOneBefore) {
  for (const bool allow : kEverybody) {
    machine.AddFolder(u"C:\\Data\\Alpha");
    FilesTest::SelectDirectory({u"C:\\Data", allow, {}}, [this](Operator& op) {
      machine.Remove(u"C:\\Data\\Alpha");
      Keep("ReadFolder(C:\\Data\\Alpha)");
      Do("click", [&] { ClickDirectory(op, u"C:\\Data\\Alpha"); });
      EXPECT_EQ(Place(op), u"C:\\Data\\Alpha");
      EXPECT_EQ(List(op).Path(), u"C:\\Data\\Alpha");
      LetGo();
      Pass(op, kMoment);
      EXPECT_EQ(List(op).Path(), u"C:\\Data");
      EXPECT_EQ(Place(op), u"C:\\Data");
      EXPECT_EQ(List(op).ListCount(), 3) << "as it was read";
      Cancel(op);
    });
  }
}

TEST_F(SlowMouseTest, LateAnswersOfADirectoryThatWasGivenUpChangeNothing) {
  for (const bool allow : kEverybody) {
    Both(u"C:\\Data", allow, [this](Operator& op) {
      Keep("ReadFolder(C:\\Data\\Logs)");
      Do("silent one", [&] { ClickDirectory(op, u"C:\\Data\\Logs"); });
      EXPECT_EQ(Place(op), u"C:\\Data\\Logs");
      Do("the one above", [&] { ClickDirectory(op, u"C:\\Data"); });
      Do("another one", [&] { ClickDirectory(op, u"C:\\Data\\Zeta"); });
      LetGo();
      Pass(op, Milliseconds(1000));
      EXPECT_EQ(List(op).Path(), u"C:\\Data\\Zeta");
      EXPECT_EQ(Place(op), u"C:\\Data\\Zeta");
      EXPECT_EQ(List(op).ListCount(), 0);
      EXPECT_FALSE(Busy());
      Cancel(op);
    });
  }
}

// What has come of a folder can be worked with, whether or not the rest ever comes.
TEST_F(SlowMouseTest, TheRowsThatCameStayWhileTheRestIsKept) {
  machine.Slice = 1;  // a second one comes when the dialog appears
  for (const bool allow : kEverybody) {
    Both(u"C:\\Data", allow, [this](Operator& op) {
      Keep("rest of ReadFolder(C:\\Data|");
      Pass(op, Milliseconds(1000));
      EXPECT_EQ(List(op).ListCount(), 2);
      Do("arrow", [&] {
        List(op).SetFocus();
        op.Press(ui::kKeyDown);
      });
      EXPECT_EQ(List(op).List(List(op).ListIndex()), u"C:\\Data\\Alpha");
      LetGo();
      Pass(op, Milliseconds(1000));
      EXPECT_EQ(List(op).ListCount(), 3);
      EXPECT_EQ(List(op).List(List(op).ListIndex()), u"C:\\Data\\Alpha");
      Cancel(op);
    });
  }
}

// The windows of the dialog are made meanwhile, and what has come by then is shown with it.
TEST_F(SlowMouseTest, AnOpenedStartDirectoryIsNotWaitedForBeforeTheDialogAppears) {
  machine.Slice = 1;
  Keep("rest of ReadFolder(C:\\Data|");
  for (const bool allow : kEverybody) {
    waited_ = Milliseconds(0);
    Both(u"C:\\Data", allow, [this](Operator& op) {
      EXPECT_LE(waited_.count(), 1);
      EXPECT_EQ(List(op).ListCount(), 1);
      Cancel(op);
      waited_ = Milliseconds(0);
    });
  }
}

// Where he came from is highlighted as soon as it is known.
TEST_F(SlowMouseTest, GoingUpToASilentDirectoryHighlightsWhenItAnswers) {
  Both(u"C:\\Data\\Logs", true, [this](Operator& op) {
    Keep("ReadFolder(C:\\Data)");
    List(op).SetFocus();
    Do("left", [&] { op.Press(ui::kKeyLeft); });
    EXPECT_EQ(List(op).Path(), u"C:\\Data");
    EXPECT_EQ(Place(op), u"C:\\Data");
    LetGo();
    Pass(op, kMoment);
    EXPECT_EQ(List(op).List(List(op).ListIndex()), u"C:\\Data\\Logs");
    EXPECT_EQ(Place(op), u"C:\\Data\\Logs");
    Cancel(op);
  });
}

TEST_F(SlowMouseTest, FilesOfADirectoryThatAnswersLateFollow) {
  FilesTest::OpenFile({u"name", u"C:\\Data\\Logs", {}, true, {}}, [this](Operator& op) {
    Keep("ReadFolder(C:\\Data)");
    Do("click", [&] { ClickDirectory(op, u"C:\\Data"); });
    const auto& list = op.Get<ui::FileListBox>(u"filSelect");
    EXPECT_THAT(FilesShown(list), IsEmpty());
    LetGo();
    Pass(op, kMoment);
    EXPECT_THAT(FilesShown(list), ElementsAre("readme.txt", "plan.bmp", "notes.TXT"));
    Cancel(op);
  });
}

}  // namespace
}  // namespace krx::test
