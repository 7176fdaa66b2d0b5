#include "files/TouchTest.h"

namespace krx::test {
namespace {

// Pictures take the place of the markers, which scripts and screen readers go on reading.
class FolderGridTest : public TouchTest {
 protected:
  using Image = ui::RowList::Image;

  static const ui::KRXGrid& Grid(Operator& op) { return op.Get<ui::KRXGrid>(u"grdFolders"); }
};

TEST_F(FolderGridTest, FoldersHavePicturesAndAMarkWhereThereIsMoreBelow) {
  SelectDirectory(u"C:\\Data\\Logs", [](Operator& op) {
    EXPECT_THAT(Rows(op), ::testing::ElementsAre("|..", "|Alpha", " +|Logs", "|Zeta"));
    const Image images[] = {Image::Parent, Image::Folder, Image::Folder, Image::Folder};
    for (int row = 0; row < 4; ++row) {
      EXPECT_EQ(Grid(op).RowImage(row), images[row]) << row;
      EXPECT_EQ(Grid(op).LeadsOn(row), row == 2) << row;
      EXPECT_EQ(Grid(op).ShownCell(row, 0), u"") << row;
      EXPECT_EQ(Grid(op).ShownCell(row, 1), Grid(op).Cell(row, 1)) << row;
    }
    op.Click(u"keyCancel");
  });
}

TEST_F(FolderGridTest, ANoticeIsNoFolderAndKeepsItsMarker) {
  SelectDirectory(u"C:\\Data\\Logs", [](Operator& op) {
    op.Get<ui::KRXComboBox>(u"cboDrives").Select(2);
    EXPECT_THAT(Rows(op), ::testing::ElementsAre(" !|DriveNotReady"));
    EXPECT_EQ(Grid(op).RowImage(0), Image::None);
    EXPECT_FALSE(Grid(op).LeadsOn(0));
    EXPECT_EQ(Grid(op).ShownCell(0, 0), u" !");
    EXPECT_EQ(Grid(op).ShownCell(0, 1), u"DriveNotReady");
    op.Click(u"keyCancel");
  });
}

}  // namespace
}  // namespace krx::test
