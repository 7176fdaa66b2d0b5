#include "ui/Spoken.h"

#include "support/FormTest.h"

// What screen readers say of controls.
namespace krx::test {

struct SpokenForm : SampleForm {
  using SampleForm::SampleForm;

  ui::TextBox txtShown{*this, u"txtShown"};
  ui::Frame fraRows{*this, u"fraRows"};
  ui::KRXGrid grdRows{*this, u"grdRows"};
  ui::KRXIndex idxText{*this, u"idxText"};
};

class Spoken : public FormTest {
 protected:
  Spoken() {
    spoken.Caption = u"Sample";
    spoken.lblName.Caption = u"&Name of it";
    spoken.fraRows.Visible = false;
  }

  SpokenForm spoken{platform};
};

TEST_F(Spoken, NamesAnInputByTheLabelBeforeIt) {
  EXPECT_EQ(ui::SpokenName(spoken.txtName), u"Name of it");
  EXPECT_EQ(ui::SpokenKey(spoken.txtName), u'N');
}

TEST_F(Spoken, NamesFurtherInputsByTheSameLabelButItsKeyLeadsToTheFirst) {
  EXPECT_EQ(ui::SpokenName(spoken.txtShown), u"Name of it");
  EXPECT_EQ(ui::SpokenKey(spoken.txtShown), u'\0');
  spoken.txtName.Visible = false;
  EXPECT_EQ(ui::SpokenKey(spoken.txtShown), u'N');
}

TEST_F(Spoken, NamesAnInputWithoutAnyLabelByItsForm) {
  spoken.lblName.Visible = false;
  EXPECT_EQ(ui::SpokenName(spoken.txtName), u"Sample");
  EXPECT_EQ(ui::SpokenKey(spoken.txtName), u'\0');
}

TEST_F(Spoken, NamesAListByTheFrameBeforeIt) {
  spoken.fraRows.Visible = true;
  spoken.fraRows.Caption = u"&Rows";
  EXPECT_EQ(ui::SpokenName(spoken.grdRows), u"Rows");
  EXPECT_EQ(ui::SpokenKey(spoken.grdRows), u'R');
}

TEST_F(Spoken, PassesAFrameWithoutACaption) {
  spoken.fraRows.Visible = true;
  EXPECT_EQ(ui::SpokenName(spoken.grdRows), u"Name of it");
}

TEST_F(Spoken, NamesAGridByItsOnlyHeading) {
  spoken.grdRows.Columns = {{.Title = {}}, {.Title = u"Folders"}};
  EXPECT_EQ(ui::SpokenName(spoken.grdRows), u"Folders");
  spoken.grdRows.Columns = {{.Title = u"State"}, {.Title = u"Folders"}};
  EXPECT_EQ(ui::SpokenName(spoken.grdRows), u"Name of it");
}

TEST_F(Spoken, SaysTheWordsOfAButtonInOneLine) {
  spoken.keyOne.Caption = u"&Switch\r\non && off";
  EXPECT_EQ(ui::SpokenName(spoken.keyOne), u"Switch on & off");
  EXPECT_EQ(ui::SpokenKey(spoken.keyOne), u'S');
}

TEST_F(Spoken, SaysATextInTheLinesThatWereGiven) {
  String line;
  for (int i = 0; i < 200; ++i)
    line += u"word ";
  spoken.idxText.Text = line + u"\\nend";
  EXPECT_NE(spoken.idxText.DisplayedText(), line + u"\nend") << "it is shown in shorter lines";
  EXPECT_EQ(ui::SpokenName(spoken.idxText), line + u"\nend");
}

TEST_F(Spoken, SaysARowByItsMainCellAndTheOthersBehindTheirTitles) {
  spoken.grdRows.Columns = {
      {.Title = {}}, {.Title = u"State"}, {.Title = u"Note"}, {.Title = u"Name"}};
  spoken.grdRows.AddRow({u" +", u"locked", u" ", u"Eva"});
  EXPECT_EQ(ui::SpokenRow(spoken.grdRows, 0), u"Eva");
  EXPECT_EQ(ui::SpokenDetails(spoken.grdRows, 0), u"+; State: locked");
}

}  // namespace krx::test
