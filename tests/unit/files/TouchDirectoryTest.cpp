#include "files/TouchTest.h"

namespace krx::test {

using ::testing::ElementsAre;

class TouchDirectory : public TouchTest {
 protected:
  static String Path(Operator& op) { return TextOf(op, u"txtDirectory"); }
  static std::int32_t Depth(Operator& op) {
    return dynamic_cast<files::FDirectorySelectTouch&>(op.Form()).Depth;
  }
  static void Cancel(Operator& op) { op.Click(u"keyCancel"); }
};

TEST_F(TouchDirectory, StartsAboveTheStartDirectoryAndHighlightsIt) {
  EXPECT_EQ(SelectDirectory(u"C:\\Data\\Logs",
                            [](Operator& op) {
                              auto& drives = op.Get<ui::KRXComboBox>(u"cboDrives");
                              EXPECT_THAT(drives.Items(), ElementsAre(u"C:", u"D:", u"E:"));
                              EXPECT_EQ(drives.Text(), u"C:");
                              EXPECT_THAT(Rows(op),
                                          ElementsAre("|..", "|Alpha", " +|Logs", "|Zeta"));
                              EXPECT_EQ(Selected(op), u"Logs");
                              EXPECT_EQ(op.Get<ui::KRXGrid>(u"grdFolders").RowInView(), 2);
                              EXPECT_EQ(Path(op), u"C:\\Data");
                              EXPECT_EQ(Depth(op), 1);
                              op.Click(u"keyOK");
                            }),
            u"C:\\Data");
}

TEST_F(TouchDirectory, ABareDriveListsItsRootAndSelectsNothing) {
  EXPECT_EQ(SelectDirectory(u"C:",
                            [](Operator& op) {
                              EXPECT_THAT(Rows(op), ElementsAre(" +|Data", "|Windows"));
                              EXPECT_EQ(Selected(op), u"");
                              EXPECT_EQ(Depth(op), 0);
                              Touch(op, u"Data");
                              EXPECT_EQ(Path(op), u"C:\\Data");
                              op.Click(u"keyOK");
                            }),
            u"C:\\Data");
}

TEST_F(TouchDirectory, AStartDirectoryBelowTheRootIsHighlightedInIt) {
  SelectDirectory(u"C:\\Data", [](Operator& op) {
    EXPECT_THAT(Rows(op), ElementsAre(" +|Data", "|Windows")) << "no way up from a root";
    EXPECT_EQ(Selected(op), u"Data");
    EXPECT_EQ(Path(op), u"C:");
    EXPECT_EQ(Depth(op), 0);
    Cancel(op);
  });
}

// Clients write paths as they come to hand; what is shown is a path of the system.
TEST_F(TouchDirectory, AStartDirectoryIsMadeAWholePathBeforeItIsUsed) {
  machine.CurrentFolder = u"C:\\Data\\Logs";
  for (const StringView start : {u"C:/Data/Logs", u".", u"..\\Logs", u"C:.", u"\\Data\\Logs"}) {
    SelectDirectory(String(start), [&](Operator& op) {
      EXPECT_EQ(Path(op), u"C:\\Data") << ToUtf8(start);
      EXPECT_EQ(Selected(op), u"Logs") << ToUtf8(start);
      EXPECT_EQ(Depth(op), 1) << ToUtf8(start);
      EXPECT_EQ(dynamic_cast<files::FDirectorySelectTouch&>(op.Form()).StartDirectory, start);
      Cancel(op);
    });
  }
  EXPECT_THAT(platform.Boxes, ElementsAre());
}

TEST_F(TouchDirectory, ARelativeNameWithoutAnyBackslashIsFound) {
  machine.CurrentFolder = u"C:\\";
  SelectDirectory(u"Data", [](Operator& op) {
    EXPECT_EQ(Path(op), u"C:");
    EXPECT_EQ(Selected(op), u"Data");
    Cancel(op);
  });
}

TEST_F(TouchDirectory, TheRootOfAShareIsARoot) {
  machine.AddFolder(u"\\\\server\\share\\Recipes\\Old");
  machine.AddFolder(u"\\\\server\\share\\Trends");
  EXPECT_EQ(SelectDirectory(u"\\\\server\\share",
                            [](Operator& op) {
                              EXPECT_THAT(Rows(op), ElementsAre(" +|Recipes", "|Trends"));
                              EXPECT_EQ(Path(op), u"\\\\server\\share");
                              EXPECT_EQ(Depth(op), 0);
                              Open(op, u"Recipes");
                              EXPECT_THAT(Rows(op), ElementsAre("|..", "|Old"));
                              EXPECT_EQ(Depth(op), 1);
                              Touch(op, u"Old");
                              EXPECT_EQ(Path(op), u"\\\\server\\share\\Recipes\\Old");
                              Open(op, u"..");
                              EXPECT_EQ(Path(op), u"\\\\server\\share");
                              EXPECT_EQ(Depth(op), 0);
                              EXPECT_THAT(Rows(op), ElementsAre(" +|Recipes", "|Trends"));
                              Touch(op, u"Trends");
                              op.Click(u"keyOK");
                            }),
            u"\\\\server\\share\\Trends");
}

TEST_F(TouchDirectory, AFolderOfAShareIsHighlightedInTheFolderAbove) {
  machine.AddFolder(u"\\\\server\\share\\Recipes\\Old");
  SelectDirectory(u"\\\\server\\share\\Recipes", [](Operator& op) {
    EXPECT_EQ(Path(op), u"\\\\server\\share");
    EXPECT_THAT(Rows(op), ElementsAre(" +|Recipes"));
    EXPECT_EQ(Selected(op), u"Recipes");
    EXPECT_EQ(Depth(op), 0);
    Cancel(op);
  });
  SelectDirectory(u"\\\\server\\share\\Recipes\\Old", [](Operator& op) {
    EXPECT_THAT(Rows(op), ElementsAre("|..", "|Old"));
    EXPECT_EQ(Depth(op), 1);
    Cancel(op);
  });
}

TEST_F(TouchDirectory, ATitleThatIsAReferenceIsResolved) {
  const auto title = [](Operator& op) {
    EXPECT_EQ(op.Get<ui::KRXIndex>(u"idxCaption").Text(), u"Plant");
    Cancel(op);
  };
  SelectDirectory(u"C:", title, u"@Plant");
  OpenFile({{}, u"C:", {}, true, u"@Plant"}, title);
}

TEST_F(TouchDirectory, AStartDirectoryThatDoesNotExistLeavesTheRootOfItsDrive) {
  SelectDirectory(u"D:\\Nothing\\Here", [](Operator& op) {
    EXPECT_EQ(op.Get<ui::KRXComboBox>(u"cboDrives").Text(), u"D:");
    EXPECT_THAT(Rows(op), ElementsAre("|Backup"));
    EXPECT_EQ(Path(op), u"D:");
    Cancel(op);
  });
}

TEST_F(TouchDirectory, WithoutTheStartDriveTheFirstReadyFixedDriveIsSelected) {
  machine.RemoveDrive(u"C:");
  machine.AddDrive(u"F:", folders::DriveType::Fixed, false);
  machine.AddDrive(u"G:", folders::DriveType::Fixed);
  machine.AddDrive(u"H:", folders::DriveType::Fixed);
  for (const String& start : {String(u"X:\\Data"), String(u"d:"), String()}) {
    SelectDirectory(start, [](Operator& op) {
      EXPECT_EQ(op.Get<ui::KRXComboBox>(u"cboDrives").Text(), u"G:");
      Cancel(op);
    });
  }
}

TEST_F(TouchDirectory, WithoutAnyReadyDriveNothingIsSelected) {
  machine.SetReady(u"C:", false);
  SelectDirectory(u"X:\\", [](Operator& op) {
    EXPECT_EQ(op.Get<ui::KRXComboBox>(u"cboDrives").ListIndex(), -1);
    EXPECT_THAT(Rows(op), ElementsAre());
    op.Click(u"keyOK");
  });
}

TEST_F(TouchDirectory, TouchingReplacesTheNamedFolderAndTheWayUpTakesItAway) {
  SelectDirectory(u"C:\\Data\\Logs", [](Operator& op) {
    Touch(op, u"Alpha");
    EXPECT_EQ(Path(op), u"C:\\Data\\Alpha");
    Touch(op, u"Zeta");
    EXPECT_EQ(Path(op), u"C:\\Data\\Zeta");
    Touch(op, u"..");
    EXPECT_EQ(Path(op), u"C:\\Data");
    Touch(op, u"..");
    EXPECT_EQ(Path(op), u"C:\\Data") << "touched once it leads nowhere";
    EXPECT_EQ(Depth(op), 1);
    Cancel(op);
  });
}

TEST_F(TouchDirectory, TouchingTwiceOpensAFolderWithSubfolders) {
  SelectDirectory(u"C:\\Data\\Alpha", [](Operator& op) {
    Open(op, u"Logs");
    EXPECT_EQ(Path(op), u"C:\\Data\\Logs");
    EXPECT_EQ(Depth(op), 2);
    EXPECT_THAT(Rows(op), ElementsAre("|..", "|Old"));
    Open(op, u"..");
    EXPECT_EQ(Path(op), u"C:\\Data");
    EXPECT_EQ(Depth(op), 1);
    Open(op, u"..");
    EXPECT_EQ(Path(op), u"C:");
    EXPECT_EQ(Depth(op), 0);
    EXPECT_THAT(Rows(op), ElementsAre(" +|Data", "|Windows"));
    Cancel(op);
  });
}

TEST_F(TouchDirectory, AFolderWithoutSubfoldersStaysSelectedInThePath) {
  EXPECT_EQ(SelectDirectory(u"C:\\Data\\Logs",
                            [](Operator& op) {
                              Open(op, u"Alpha");
                              EXPECT_EQ(Path(op), u"C:\\Data\\Alpha");
                              EXPECT_EQ(Depth(op), 1);
                              EXPECT_THAT(Rows(op),
                                          ElementsAre("|..", "|Alpha", " +|Logs", "|Zeta"));
                              op.Click(u"keyOK");
                            }),
            u"C:\\Data\\Alpha");
}

TEST_F(TouchDirectory, ChoosingADriveLeadsToItsRoot) {
  SelectDirectory(u"C:\\Data\\Logs", [](Operator& op) {
    auto& drives = op.Get<ui::KRXComboBox>(u"cboDrives");
    drives.Select(1);
    EXPECT_EQ(Path(op), u"D:");
    EXPECT_EQ(Depth(op), 0);
    EXPECT_THAT(Rows(op), ElementsAre("|Backup"));
    drives.Select(0);
    EXPECT_EQ(Path(op), u"C:") << "the start directory counts only at the start";
    EXPECT_THAT(Rows(op), ElementsAre(" +|Data", "|Windows"));
    Cancel(op);
  });
}

TEST_F(TouchDirectory, ADriveThatIsNotReadyShowsOneRowAndDisablesTheGrid) {
  SelectDirectory(u"C:\\Data\\Logs", [this](Operator& op) {
    auto& drives = op.Get<ui::KRXComboBox>(u"cboDrives");
    drives.Select(2);
    EXPECT_THAT(Rows(op), ElementsAre(" !|DriveNotReady"));
    EXPECT_FALSE(op.Get(u"grdFolders").Enabled());
    EXPECT_EQ(Path(op), u"E:");
    EXPECT_THAT(platform.Boxes, ElementsAre());
    drives.Select(1);
    EXPECT_TRUE(op.Get(u"grdFolders").Enabled());
    EXPECT_THAT(Rows(op), ElementsAre("|Backup"));
    Cancel(op);
  });
}

TEST_F(TouchDirectory, AnEmptyDriveEmptiesTheGrid) {
  machine.AddDrive(u"F:");
  SelectDirectory(u"C:", [](Operator& op) {
    op.Get<ui::KRXComboBox>(u"cboDrives").Select(3);
    EXPECT_THAT(Rows(op), ElementsAre());
    Cancel(op);
  });
}

TEST_F(TouchDirectory, CancelReturnsNothingWhateverIsShown) {
  EXPECT_EQ(SelectDirectory(u"C:\\Data\\Logs",
                            [](Operator& op) {
                              Touch(op, u"Zeta");
                              Cancel(op);
                            }),
            u"");
}

TEST_F(TouchDirectory, CloseKeyAndEscDoNothing) {
  SelectDirectory(u"C:", [](Operator& op) {
    op.Click(u"keyClose");
    op.Press(ui::kKeyEscape);
    EXPECT_TRUE(op.Form().Visible());
    Cancel(op);
  });
}

TEST_F(TouchDirectory, CarriesItsTexts) {
  SelectDirectory(u"C:", [](Operator& op) {
    auto& form = dynamic_cast<files::FDirectorySelectTouch&>(op.Form());
    EXPECT_EQ(form.idxCaption.Text(), u"TitleSelectDirectory");
    EXPECT_EQ(form.lbl[0].Caption(), u"SelectedDirectory");
    EXPECT_EQ(form.lbl[1].Caption(), u"Drive");
    EXPECT_EQ(form.lbl[2].Caption(), u"Directories");
    EXPECT_EQ(form.keyOK.Caption(), u"Open");
    EXPECT_EQ(form.keyCancel.Caption(), u"Cancel");
    EXPECT_FALSE(form.AllowChangeUp) << "kept, and without effect";
    Cancel(op);
  });
  SelectDirectory(
      u"C:",
      [](Operator& op) {
        EXPECT_EQ(op.Get<ui::KRXIndex>(u"idxCaption").Text(), u"Choose");
        Cancel(op);
      },
      u"Choose");
}

// Keyboard and screen readers: the arrow keys touch the row that they lead to.
TEST_F(TouchDirectory, KeysTouchRowsAndEnterOpensThem) {
  SelectDirectory(u"C:\\Data\\Alpha", [](Operator& op) {
    EXPECT_EQ(op.Focus(), u"grdFolders");
    op.Press(ui::kKeyDown);
    EXPECT_EQ(Path(op), u"C:\\Data\\Logs");
    op.Press(ui::kKeyEnter);
    EXPECT_THAT(Rows(op), ElementsAre("|..", "|Old"));
    EXPECT_EQ(Depth(op), 2);
    op.Press(ui::kKeyHome);
    op.Press(ui::kKeyEnter);
    EXPECT_EQ(Path(op), u"C:\\Data");
    Cancel(op);
  });
}

TEST_F(TouchDirectory, MarkersFollowWhileTheOperatorWorks) {
  for (int i = 0; i < 30; ++i)
    machine.AddFolder(u"D:\\Backup\\Set" + ToString(i) + u"\\inside");
  machine.Slice = 4;
  SelectDirectory(u"D:\\Backup\\Set0", [this](Operator& op) {
    auto& grid = op.Get<ui::KRXGrid>(u"grdFolders");
    EXPECT_EQ(grid.RowCount(), 9) << "the way up and what has been read, twice by now";
    EXPECT_EQ(platform.Pointers.back(), ui::Pointer::Hourglass);
    for (int waits = 0; grid.RowCount() < 31 && waits < 100; ++waits)
      op.Wait(std::chrono::milliseconds(10));
    ASSERT_EQ(grid.RowCount(), 31) << "all rows are there";
    EXPECT_EQ(grid.Cell(4, 0), u" +") << "the first answers";
    EXPECT_EQ(grid.Cell(5, 0), u"");
    op.Wait(std::chrono::milliseconds(60));
    EXPECT_EQ(grid.Cell(8, 0), u" +");
    EXPECT_EQ(grid.Cell(9, 0), u"");
    Touch(op, u"Set20");
    EXPECT_EQ(Path(op), u"D:\\Backup\\Set20");
    op.Wait(std::chrono::milliseconds(2000));
    EXPECT_EQ(grid.Cell(30, 0), u" +");
    EXPECT_EQ(grid.Cell(0, 0), u"") << "the way up has none";
    EXPECT_EQ(Selected(op), u"Set20");
    EXPECT_EQ(platform.Pointers.back(), ui::Pointer::Default);
    Cancel(op);
  });
}

TEST_F(TouchDirectory, MarkersOfAFolderThatWasLeftAreDropped) {
  for (int i = 0; i < 9; ++i)
    machine.AddFolder(u"D:\\Backup\\Set" + ToString(i) + u"\\inside");
  machine.Slice = 2;
  SelectDirectory(u"D:\\Backup\\Set0", [](Operator& op) {
    op.Get<ui::KRXComboBox>(u"cboDrives").Select(0);
    op.Wait(std::chrono::milliseconds(2000));
    EXPECT_THAT(Rows(op), ElementsAre(" +|Data", "|Windows"));
    Cancel(op);
  });
}

TEST_F(TouchDirectory, FitsASmallPanelWithFingersInMind) {
  platform.Area = {0, 0, 12000, 7200};  // 800 x 480 pixels
  dialog->Settings().ButtonMinHeight = 600;
  dialog->Settings().CaptionMinHeight = 600;
  SelectDirectory(u"C:", [](Operator& op) {
    EXPECT_LE(op.Form().Width(), 12000);
    EXPECT_LE(op.Form().Height(), 7200);
    EXPECT_EQ(op.Get<ui::KRXGrid>(u"grdFolders").RowMinHeight(), 600);
    EXPECT_GE(op.Get(u"cboDrives").Height(), 600);
    EXPECT_EQ(op.Get(u"keyOK").Height(), 600);
    EXPECT_GE(op.Get(u"grdFolders").Height(), 3 * 600);
    EXPECT_EQ(op.Get(u"keyCancel").Left() + op.Get(u"keyCancel").Width(), op.Form().Width() - 120);
    Cancel(op);
  });
}

}  // namespace krx::test
