#include "files/SlowAnswersTest.h"

// What the touch dialogs show while the machine keeps an answer back, and when it comes.
namespace krx::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SlowTouchTest : public SlowAnswersTest {
 protected:
  using Box = headless::HeadlessPlatform::Box;

  void Both(const String& start, const Script& script) {
    SelectDirectory(start, script);
    OpenFile({u"plan.bmp", start, {}, true, {}}, script);
  }
  static bool HasFiles(Operator& op) { return op.Form().Find(u"grdFiles") != nullptr; }
  static ui::KRXComboBox& Drives(Operator& op) {
    return op.Get<ui::KRXComboBox>(HasFiles(op) ? u"cboDrivers" : u"cboDrives");
  }
  static String Path(Operator& op) {
    return TextOf(op, HasFiles(op) ? u"txtPath" : u"txtDirectory");
  }
  static std::int32_t Depth(Operator& op) {
    return dynamic_cast<files::TouchForm&>(op.Form()).Depth;
  }
  static void Cancel(Operator& op) { op.Click(u"keyCancel"); }
};

TEST_F(SlowTouchTest, AStartDirectoryThatKeepsItsAnswerIsNamedUntilItComes) {
  // Neither whether it is there, nor what lies next to it.
  for (const char* const question : {"AskFolder(", "ReadFolder(C:\\Data\\)"}) {
    const Script script = [&](Operator& op) {
      Pass(op, Milliseconds(1000));
      EXPECT_EQ(Path(op), u"C:\\Data");
      EXPECT_EQ(Drives(op).Text(), u"C:");
      EXPECT_THAT(Rows(op), IsEmpty());
      LetGo();
      Pass(op, 10 * kMoment);
      EXPECT_THAT(Rows(op), ElementsAre("|..", "|Alpha", " +|Logs", "|Zeta"));
      EXPECT_EQ(Selected(op), u"Logs");
      EXPECT_EQ(Depth(op), 1);
      if (HasFiles(op)) {
        EXPECT_EQ(Selected(op, u"grdFiles"), u"plan.bmp");
      }
      Cancel(op);
      Keep(question);
    };
    Keep(question);
    Both(u"C:\\Data\\Logs", script);
    LetGo();
  }
  EXPECT_THAT(platform.Boxes, IsEmpty());
}

TEST_F(SlowTouchTest, AStartDirectoryThatIsMissingAfterAllLeavesTheRootOfItsDrive) {
  Keep("AskFolder(");
  Both(u"C:\\Data\\Gone", [this](Operator& op) {
    EXPECT_EQ(Path(op), u"C:\\Data");
    LetGo();
    Pass(op, 10 * kMoment);
    EXPECT_EQ(Path(op), u"C:");
    EXPECT_THAT(Rows(op), ElementsAre(" +|Data", "|Windows"));
    EXPECT_EQ(Depth(op), 0);
    Cancel(op);
    Keep("AskFolder(");
  });
}

TEST_F(SlowTouchTest, AStartDirectoryThatWasGivenUpChangesNothingLater) {
  Keep("AskFolder(");
  Both(u"C:\\Data\\Logs", [this](Operator& op) {
    Do("drive", [&] { Drives(op).Select(1); });
    EXPECT_THAT(Rows(op), ElementsAre("|Backup"));
    LetGo();
    Pass(op, Milliseconds(1000));
    EXPECT_EQ(Path(op), u"D:");
    EXPECT_THAT(Rows(op), ElementsAre("|Backup"));
    Cancel(op);
    Keep("AskFolder(");
  });
}

TEST_F(SlowTouchTest, AChosenDriveThatTurnsOutNotReadyIsToldThen) {
  Both(u"C:\\Data\\Logs", [this](Operator& op) {
    Keep("ReadFolder(E:\\)");
    Do("drive", [&] { Drives(op).Select(2); });
    Pass(op, Milliseconds(1000));
    EXPECT_EQ(Path(op), u"E:");
    EXPECT_THAT(Rows(op), IsEmpty());
    EXPECT_TRUE(op.Get(u"grdFolders").Enabled());
    EXPECT_THAT(platform.Boxes, IsEmpty()) << "nobody knows yet";
    LetGo();
    Pass(op, kMoment);
    if (HasFiles(op)) {
      EXPECT_THAT(platform.Boxes, ElementsAre(Box{u"DriveNotReady", 0, u"Information"}));
    } else {
      EXPECT_THAT(Rows(op), ElementsAre(" !|DriveNotReady"));
      EXPECT_FALSE(op.Get(u"grdFolders").Enabled());
      EXPECT_THAT(platform.Boxes, IsEmpty());
    }
    Do("drive", [&] { Drives(op).Select(1); });
    EXPECT_THAT(Rows(op), ElementsAre("|Backup"));
    EXPECT_TRUE(op.Get(u"grdFolders").Enabled());
    Cancel(op);
  });
}

TEST_F(SlowTouchTest, ADriveThatWasGivenUpIsNotToldOf) {
  Both(u"C:\\Data\\Logs", [this](Operator& op) {
    Keep("ReadFolder(E:\\)");
    Do("silent drive", [&] { Drives(op).Select(2); });
    Do("another drive", [&] { Drives(op).Select(1); });
    LetGo();
    Pass(op, Milliseconds(1000));
    EXPECT_THAT(Rows(op), ElementsAre("|Backup"));
    EXPECT_TRUE(op.Get(u"grdFolders").Enabled());
    EXPECT_THAT(platform.Boxes, IsEmpty());
    Cancel(op);
  });
}

// Without the start directory's drive the first one that is fixed and ready counts.
TEST_F(SlowTouchTest, ADefaultDriveIsSelectedAsSoonAsItIsKnown) {
  Keep("AskDrive(C:)");
  Both(u"Z:\\Data", [this](Operator& op) {
    Pass(op, Milliseconds(1000));
    EXPECT_EQ(Drives(op).ListIndex(), -1);
    EXPECT_THAT(Rows(op), IsEmpty());
    LetGo();
    Pass(op, 10 * kMoment);
    EXPECT_EQ(Drives(op).Text(), u"C:");
    EXPECT_THAT(Rows(op), ElementsAre(" +|Data", "|Windows"));
    Cancel(op);
    Keep("AskDrive(C:)");
  });
  Both(u"Z:\\Data", [this](Operator& op) {
    Do("drive", [&] { Drives(op).Select(1); });
    LetGo();
    Pass(op, Milliseconds(1000));
    EXPECT_EQ(Drives(op).Text(), u"D:") << "the operator has chosen";
    EXPECT_THAT(Rows(op), ElementsAre("|Backup"));
    Cancel(op);
    Keep("AskDrive(C:)");
  });
}

TEST_F(SlowTouchTest, ASilentSubfolderDelaysItsOwnMarkerAlone) {
  for (const StringView folder : {u"C:\\Data\\Alpha\\In", u"C:\\Data\\Zeta\\In"})
    machine.AddFolder(folder);
  for (const std::size_t slice : {0u, 1u}) {
    machine.Slice = slice;
    Keep("probe of Logs");
    Both(u"C:\\Data\\Logs", [this](Operator& op) {
      Pass(op, Milliseconds(1000));
      EXPECT_THAT(Rows(op), ElementsAre("|..", " +|Alpha", "|Logs", " +|Zeta"));
      LetGo();
      Pass(op, Milliseconds(1000));
      EXPECT_THAT(Rows(op), ElementsAre("|..", " +|Alpha", " +|Logs", " +|Zeta"));
      Cancel(op);
      Keep("probe of Logs");
    });
    LetGo();
  }
}

TEST_F(SlowTouchTest, TheRowsThatCameStayWhileTheRestIsKept) {
  machine.Slice = 2;
  Keep("rest of ReadFolder(C:\\Data\\)");
  Both(u"C:\\Data\\Zeta", [this](Operator& op) {
    Pass(op, Milliseconds(1000));
    EXPECT_THAT(Rows(op), ElementsAre("|..", "|Alpha", "|Logs"));
    EXPECT_EQ(Selected(op), u"") << "it has not come";
    Touch(op, u"Logs");
    EXPECT_EQ(Path(op), u"C:\\Data\\Logs");
    LetGo();
    Pass(op, Milliseconds(1000));
    EXPECT_THAT(Rows(op), ElementsAre("|..", "|Alpha", " +|Logs", "|Zeta"));
    EXPECT_EQ(Selected(op), u"Logs") << "the operator has chosen";
    Cancel(op);
    Keep("rest of ReadFolder(C:\\Data\\)");
  });
}

// One reading serves both lists: waiting for files also brings folders.
TEST_F(SlowTouchTest, FoldersThatComeWhileFilesAreWaitedForAreShown) {
  for (const StringView folder : {u"D:\\Plant\\In", u"D:\\Recipes"})
    machine.AddFolder(folder);
  machine.Slice = 2;
  Both(u"C:\\Data\\Logs", [this](Operator& op) {
    Pass(op, Milliseconds(1000));
    Do("drive", [&] { Drives(op).Select(1); });
    Pass(op, Milliseconds(1000));
    EXPECT_THAT(Rows(op), ElementsAre("|Backup", " +|Plant", "|Recipes"));
    Cancel(op);
  });
}

TEST_F(SlowTouchTest, AFolderThatAnswersLateIsEnteredThen) {
  Both(u"C:\\Data\\Alpha", [this](Operator& op) {
    Keep("ReadFolder(C:\\Data\\Logs\\)");
    Do("open", [&] { Open(op, u"Logs"); });
    Pass(op, Milliseconds(1000));
    EXPECT_EQ(Path(op), u"C:\\Data\\Logs") << "named";
    EXPECT_EQ(Rows(op).size(), 4u) << "not entered";
    EXPECT_EQ(Depth(op), 1);
    LetGo();
    Pass(op, kMoment);
    EXPECT_THAT(Rows(op), ElementsAre("|..", "|Old"));
    EXPECT_EQ(Depth(op), 2);
    if (HasFiles(op)) {
      EXPECT_THAT(Rows(op, u"grdFiles"), ElementsAre("today.log"));
    }
    Keep("ReadFolder(C:\\Data\\)");
    Do("up", [&] { Open(op, u".."); });
    EXPECT_EQ(Path(op), u"C:\\Data");
    EXPECT_THAT(Rows(op), ElementsAre("|..")) << "the way on";
    LetGo();
    Pass(op, 10 * kMoment);
    EXPECT_THAT(Rows(op), ElementsAre("|..", "|Alpha", " +|Logs", "|Zeta"));
    EXPECT_EQ(Depth(op), 1);
    Cancel(op);
  });
}

TEST_F(SlowTouchTest, LateAnswersOfAFolderThatWasGivenUpChangeNothing) {
  Both(u"C:\\Data\\Alpha", [this](Operator& op) {
    Keep("ReadFolder(C:\\Data\\Logs\\)");
    Do("open", [&] { Open(op, u"Logs"); });
    Do("touch", [&] { Touch(op, u"Zeta"); });
    LetGo();
    Pass(op, Milliseconds(1000));
    EXPECT_EQ(Path(op), u"C:\\Data\\Zeta");
    EXPECT_THAT(Rows(op), ElementsAre("|..", "|Alpha", " +|Logs", "|Zeta"));
    EXPECT_EQ(Depth(op), 1);
    if (HasFiles(op)) {
      EXPECT_THAT(Rows(op, u"grdFiles"), IsEmpty());
    }
    Cancel(op);
  });
}

TEST_F(SlowTouchTest, AFolderThatIsRefusedLaterIsToldByTheFileDialogThen) {
  Both(u"C:\\Data\\Alpha", [this](Operator& op) {
    machine.Remove(u"C:\\Data\\Zeta");
    Keep("ReadFolder(C:\\Data\\Zeta\\)");
    Do("touch", [&] { Touch(op, u"Zeta"); });
    Pass(op, Milliseconds(1000));
    EXPECT_THAT(platform.Boxes, IsEmpty()) << "nobody knows yet";
    LetGo();
    Pass(op, kMoment);
    if (HasFiles(op)) {
      EXPECT_THAT(platform.Boxes, ElementsAre(Box{u"76: Path not found", 0, u"GetFiles"}));
    }
    EXPECT_EQ(Path(op), u"C:\\Data\\Zeta");
    EXPECT_EQ(Rows(op).size(), 4u);
    Cancel(op);
    machine.AddFolder(u"C:\\Data\\Zeta");
  });
}

}  // namespace
}  // namespace krx::test
