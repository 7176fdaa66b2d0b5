#include "ui/RowList.h"

#include <array>
#include <random>
#include <string>
#include <vector>

#include "support/FormTest.h"

// Headless metrics: s points give 10 s twips a character, so 8 points give 80.
namespace krx::test {

namespace {

// Hears what a list tells its port.
class ListeningPort : public headless::HeadlessPlatform {
 public:
  std::vector<ui::Aspect> Heard;

  std::unique_ptr<ui::Peer> CreatePeer(ui::Component& component) override {
    if (component.Kind() != ui::Kind::RowList) return HeadlessPlatform::CreatePeer(component);
    return std::make_unique<Listener>(Heard);
  }

 private:
  struct Listener : ui::Peer {
    explicit Listener(std::vector<ui::Aspect>& to) : heard(to) {}
    void Update(ui::Aspect aspect) override { heard.push_back(aspect); }
    std::vector<ui::Aspect>& heard;
  };
};

class RowLists : public FormTest {
 protected:
  RowLists() {
    list.Font = krx::Font{u"x", 8};
    list.SetRows({{u"Anna"}, {u"ben"}, {u"Benno"}, {u"Ärger"}, {u"zoe"}});
    list.SelectionChanged = [this] { Note("S", list.SelectedRow()); };
    list.RowClick = [this](int row) { Note("C", row); };
    list.RowDoubleClick = [this](int row) { Note("D", row); };
  }
  void Note(const char* what, int row) {
    events += what;
    events += std::to_string(row);
    events += ' ';
  }

  ui::ListView list{form, u"lvw"};
  std::string events;
};

TEST_F(RowLists, TakeTheFocusAndTheCharacters) {
  EXPECT_TRUE(list.CanFocus());
  EXPECT_TRUE(list.TakesText());
  EXPECT_EQ(list.BackColor(), ui::kWindowBackground);
  EXPECT_EQ(list.ForeColor(), ui::kWindowText);
}

TEST_F(RowLists, SelectingTellsOnceAndOnlyWhatIsNew) {
  EXPECT_EQ(list.SelectedRow(), ui::RowList::kNoRow);
  list.SelectRow(2);
  list.SelectRow(2);
  list.SelectRow(ui::RowList::kNoRow);
  list.SelectRow(ui::RowList::kNoRow);
  EXPECT_EQ(events, "S2 S-1 ");
}

TEST_F(RowLists, RowsThatDoNotExistCannotBeSelectedOrBroughtIntoSight) {
  constexpr std::uint32_t kInvalidRow = 0x800A0000u + 381;
  for (const int row : {-2, 5, 100})
    EXPECT_EQ(StatusOf([&] { list.SelectRow(row); }), kInvalidRow);
  for (const int row : {-1, 5})
    EXPECT_EQ(StatusOf([&] { list.EnsureVisible(row); }), kInvalidRow);
  EXPECT_EQ(list.SelectedRow(), ui::RowList::kNoRow);
  EXPECT_EQ(list.RowInView(), ui::RowList::kNoRow);
  EXPECT_EQ(events, "");
}

TEST_F(RowLists, WhatTheOperatorSelectsIsToldOnce) {
  list.OperatorSelected(3);
  list.OperatorSelected(3);
  list.OperatorSelected(-1);
  list.OperatorSelected(5);  // gone by the time that the port reports it
  EXPECT_EQ(events, "S3 S-1 ");
}

TEST_F(RowLists, AClickSelectsItsRowFirst) {
  list.OperatorClicked(1);
  list.OperatorClicked(1);
  list.OperatorDoubleClicked(1);
  EXPECT_EQ(events, "S1 C1 C1 D1 ");
}

TEST_F(RowLists, ClicksBesideTheRowsAreNone) {
  for (const int row : {-1, 5}) {
    list.OperatorClicked(row);
    list.OperatorDoubleClicked(row);
  }
  EXPECT_EQ(events, "");
}

TEST_F(RowLists, AddedAndChangedRowsKeepTheSelection) {
  list.SelectRow(4);
  list.AddRow({u"new"});
  list.SetCell(4, 0, u"other");
  EXPECT_EQ(list.SelectedRow(), 4);
  EXPECT_EQ(list.RowCount(), 6);
  EXPECT_EQ(events, "S4 ");
}

TEST_F(RowLists, OtherRowsDropTheSelectionAndTellIt) {
  list.SelectRow(4);
  list.EnsureVisible(4);
  list.SetRows({{u"a"}, {u"b"}});
  EXPECT_EQ(list.SelectedRow(), ui::RowList::kNoRow);
  EXPECT_EQ(list.RowInView(), ui::RowList::kNoRow);
  list.Clear();
  EXPECT_EQ(list.RowCount(), 0);
  EXPECT_EQ(events, "S4 S-1 ");
}

TEST_F(RowLists, MissingCellsAreEmptyAndCellsBeyondTheColumnsAreKept) {
  EXPECT_EQ(list.Cell(0, 3), u"");
  list.SetCell(0, 3, u"far");
  EXPECT_EQ(list.Cell(0, 3), u"far");
  EXPECT_EQ(list.Cell(0, 1), u"");
  EXPECT_EQ(list.Cell(0, 0), u"Anna");
  EXPECT_NE(StatusOf([&] { list.SetCell(5, 0, u"x"); }), 0u);
  EXPECT_NE(StatusOf([&] { list.SetCell(-1, 0, u"x"); }), 0u);
}

struct Search {
  const char16_t* Beginning;
  int Start;
  int Found;
};

TEST_F(RowLists, BeginningsAreFoundInAnyCaseAndAroundTheEnd) {
  for (const Search& search : std::vector<Search>{{u"BEN", 0, 1},
                                                  {u"ben", 1, 1},
                                                  {u"ben", 2, 2},
                                                  {u"ben", 3, 1},
                                                  {u"benn", 0, 2},
                                                  {u"ä", 0, 3},
                                                  {u"Z", 0, 4},
                                                  {u"a", 5, 0},
                                                  {u"a", -1, 0},
                                                  {u"bb", 1, 2},  // the next one with a b
                                                  {u"bbb", 2, 1},
                                                  {u"ab", 0, -1},
                                                  {u"yy", 0, -1},
                                                  {u"Anna and more", 0, -1}}) {
    EXPECT_EQ(list.FindRow(search.Beginning, search.Start), search.Found)
        << ToUtf8(search.Beginning) << " from " << search.Start;
  }
}

TEST_F(RowLists, BeginningsAreFoundByLettersOfTwoUnitsInAnyCaseAndByHalvesAsTheyAre) {
  list.SetRows({{u"\U00010428x"}, {u"y\U00010428"}, {u"\xD801"}, {u"\xDC28"}, {u"Y\U00010429"}});
  for (const Search& search : std::vector<Search>{{u"\U00010400X", 0, 0},
                                                  {u"Y\U00010400", 0, 1},
                                                  {u"y\U00010401", 0, 4},
                                                  {u"y\U00010402", 0, -1},
                                                  {u"\xD801", 0, 0},
                                                  {u"\xD801", 1, 2},
                                                  {u"y\xD801", 2, 4},
                                                  {u"\xDC28", 0, 3},
                                                  {u"\xDC00", 0, -1}}) {
    EXPECT_EQ(list.FindRow(search.Beginning, search.Start), search.Found)
        << ToUtf8(search.Beginning) << " from " << search.Start;
  }
}

TEST_F(RowLists, BeginningsAreFoundAsIfEachTextWereFoldedAsAWhole) {
  constexpr std::array<char16_t, 10> kUnits{u'a',   u'A',   u'\u00c4', u'\u00e4', 0xD801,
                                            0xDC00, 0xDC28, u'\u03c3', u'\u03c2', u'\u0130'};
  std::mt19937 random(1);
  const auto text = [&](std::size_t longest) {
    String made(std::uniform_int_distribution<std::size_t>(0, longest)(random), u' ');
    for (char16_t& unit : made)
      unit = kUnits[std::uniform_int_distribution<std::size_t>(0, kUnits.size() - 1)(random)];
    return made;
  };
  int found = 0;
  for (int i = 0; i < 20000; ++i) {
    const String cell = text(5);
    const String beginning = text(3);
    list.SetRows({{cell}});
    const CaseFolding& folding = platform.Folding();
    const bool begins = folding(StringView(cell).substr(0, beginning.size())) == folding(beginning);
    // One letter again and again looks for that letter alone, too.
    const bool repeated =
        beginning == String(beginning.size(), beginning.empty() ? u' ' : beginning[0]);
    if (!begins && repeated) continue;
    EXPECT_EQ(list.FindRow(beginning, 0), begins ? 0 : -1) << ToUtf8(cell) << ToUtf8(beginning);
    found += begins ? 1 : 0;
  }
  EXPECT_GT(found, 1000);
}

TEST_F(RowLists, ABeginningThatAllRowsShareIsToldApartAtItsEnd) {
  list.SetRows({{u"same beginning 1"}, {u"Same Beginning 2"}, {u"SAME BEGINNING"}});
  EXPECT_EQ(list.FindRow(u"same beginning 2", 0), 1);
  EXPECT_EQ(list.FindRow(u"sAME bEGINNING", 2), 2);
  EXPECT_EQ(list.FindRow(u"same beginning 3", 0), -1);
}

TEST_F(RowLists, NothingIsFoundInAnEmptyList) {
  list.Clear();
  EXPECT_EQ(list.FindRow(u"a", 0), ui::RowList::kNoRow);
  EXPECT_EQ(list.FindRow(u"aa", 0), ui::RowList::kNoRow);
}

TEST_F(RowLists, ColumnsAreAsWideAsTheirTitleOrTheirWidestCellWithRoomBesideIt) {
  list.Columns = {{u"Title"}, {u""}};
  EXPECT_EQ(list.TitleWidth(0), 5 * 80 + 240);
  EXPECT_EQ(list.TitleWidth(1), 240);
  EXPECT_EQ(list.ContentWidth(0), 5 * 80 + 180);  // "Benno"
  EXPECT_EQ(list.ContentWidth(1), 180);
  list.SetColumnWidth(1, 700);
  EXPECT_EQ(list.Columns()[1].Width, 700);
  EXPECT_EQ(list.Columns()[0].Width, 0);
  EXPECT_EQ(list.Columns()[0].Title, u"Title");
  EXPECT_THROW(list.SetColumnWidth(2, 1), std::out_of_range);
}

TEST_F(RowLists, GridsHaveFingerRowsAndGoByTheirLastColumn) {
  ui::KRXGrid grid(form, u"grd");
  EXPECT_GE(grid.RowMinHeight(), 397);  // 7 millimetres
  EXPECT_TRUE(grid.DragScrolls);
  EXPECT_FALSE(list.DragScrolls);
  grid.Columns = {{u"", 600}, {u"Name"}};
  grid.SetRows({{u" +", u"alpha"}, {u"", u"beta"}});
  EXPECT_EQ(grid.MainColumn(), 1);
  EXPECT_EQ(grid.FindRow(u"b", 0), 1);
}

class SuspendedLists : public ::testing::Test {
 protected:
  using Heard = std::vector<ui::Aspect>;
  // What the port hears of the act while the form is shown.
  Heard During(const std::function<void()>& act) {
    port.Expect(u"Sample", [&](headless::Operator&) {
      port.Heard.clear();
      act();
      form.Hide();
    });
    form.ShowModal();
    return port.Heard;
  }

  ListeningPort port;
  SampleForm form{port};
  ui::ListView list{form, u"lvw"};
};

TEST_F(SuspendedLists, HearOfEveryRowOtherwise) {
  EXPECT_EQ(During([&] {
              list.AddRow({u"a"});
              list.AddRow({u"b"});
              list.SelectRow(1);
            }),
            (Heard{ui::Aspect::MoreItems, ui::Aspect::MoreItems, ui::Aspect::Selection}));
}

TEST_F(SuspendedLists, HearOfTheRowsOnceAndOfTheRestBehindThem) {
  EXPECT_EQ(
      During([&] {
        list.SuspendDrawing();
        list.Clear();
        for (int i = 0; i < 100; ++i)
          list.AddRow({u"row"});
        list.EnsureVisible(60);
        list.TopRow = 50;
        list.SelectRow(60);
        EXPECT_EQ(port.Heard, Heard{});
        list.ResumeDrawing();
      }),
      (Heard{ui::Aspect::Items, ui::Aspect::Selection, ui::Aspect::Scroll, ui::Aspect::RowInView}));
}

TEST_F(SuspendedLists, HearWhetherRowsCameOrChanged) {
  EXPECT_EQ(During([&] {
              list.AddRow({u"a"});
              list.SetCell(0, 0, u"b");
              list.Clear();
            }),
            (Heard{ui::Aspect::MoreItems, ui::Aspect::Items, ui::Aspect::Items}));
}

TEST_F(SuspendedLists, HearOfNothingWhenNothingChanged) {
  EXPECT_EQ(During([&] {
              list.SuspendDrawing();
              list.ResumeDrawing();
            }),
            Heard{});
}

TEST_F(SuspendedLists, GoOnWaitingUntilEverybodyHasResumed) {
  EXPECT_EQ(During([&] {
              list.SuspendDrawing();
              list.SuspendDrawing();
              list.AddRow({u"a"});
              list.ResumeDrawing();
              EXPECT_EQ(port.Heard, Heard{});
              list.ResumeDrawing();
              list.AddRow({u"b"});
            }),
            (Heard{ui::Aspect::MoreItems, ui::Aspect::MoreItems}));
}

TEST_F(SuspendedLists, HearOfLookAndColumnsAtOnce) {
  EXPECT_EQ(During([&] {
              list.SuspendDrawing();
              list.Columns = {{u"Title"}};
              list.Enabled = false;
            }),
            (Heard{ui::Aspect::Columns, ui::Aspect::Enabled}));
}

}  // namespace

}  // namespace krx::test
