#include "ui/ComboBox.h"

#include <string>

#include "support/FormTest.h"

namespace krx::test {

class ComboBoxes : public FormTest {
 protected:
  ComboBoxes() {
    for (const auto* const item : {u"C:", u"D:", u"E:"})
      box.AddItem(item, ui::ComboBox::kAtEnd);
    box.Change = [this] { events += "C"; };
    box.SelectionChanged = [this] { events += "S"; };
  }

  ui::ComboBox box{form, u"cbo"};
  std::string events;
};

TEST_F(ComboBoxes, SelectingGivesTheEntrysTextOnce) {
  box.Select(1);
  EXPECT_EQ(box.Text(), u"D:");
  EXPECT_EQ(box.ListIndex(), 1);
  EXPECT_EQ(events, "CS");
}

TEST_F(ComboBoxes, ClearingTakesTheEntriesAndTheSelectionButNotTheText) {
  box.Select(1);
  events.clear();
  box.Clear();
  EXPECT_TRUE(box.Items().empty());
  EXPECT_EQ(box.ListIndex(), -1);
  EXPECT_EQ(box.Text(), u"D:");
  EXPECT_EQ(events, "");
  EXPECT_EQ(StatusOf([&] { box.Select(0); }), 0x800A0000u + 381);
}

TEST_F(ComboBoxes, ClearedOnesAreFilledAndChosenFromAgain) {
  box.Select(2);
  box.Clear();
  box.AddItem(u"E:", ui::ComboBox::kAtEnd);
  EXPECT_EQ(box.ListIndex(), -1);
  events.clear();
  box.Select(0);
  EXPECT_EQ(box.ListIndex(), 0);
  EXPECT_EQ(events, "S");  // the text is the same
  box.Text = u"other";
  EXPECT_EQ(box.ListIndex(), -1);
  EXPECT_EQ(events, "SC");
}

TEST_F(ComboBoxes, EntriesInFrontMoveTheSelection) {
  box.Select(1);
  box.AddItem(u"A:", 0);
  EXPECT_EQ(box.ListIndex(), 2);
  box.AddItem(u"Z:", 4);
  EXPECT_EQ(box.ListIndex(), 2);
  EXPECT_EQ(box.Items().back(), u"Z:");
  EXPECT_EQ(box.Text(), u"D:");
}

TEST_F(ComboBoxes, OnlyTheTouchOneIsForFingers) {
  const ui::KRXComboBox touch(form, u"cboTouch");
  EXPECT_TRUE(touch.ForFingers());
  EXPECT_FALSE(box.ForFingers());
}

TEST_F(ComboBoxes, AnOpenListUsesEnterAndEsc) {
  EXPECT_FALSE(box.UsesKey(ui::kKeyEnter));
  box.DroppedDown = true;
  EXPECT_TRUE(box.UsesKey(ui::kKeyEnter));
  EXPECT_TRUE(box.UsesKey(ui::kKeyEscape));
  EXPECT_FALSE(box.UsesKey(ui::kKeyTab));
}

}  // namespace krx::test
