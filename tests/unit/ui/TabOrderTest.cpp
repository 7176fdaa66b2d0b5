#include <set>
#include <string>
#include <vector>

#include "support/FormTest.h"

namespace krx::test {

using ::testing::ElementsAre;

class TabOrder : public FormTest {
 protected:
  std::vector<std::string> Order() const {
    std::vector<std::string> names;
    for (const ui::Control* const control : form.TabOrder())
      names.push_back(ToUtf8(control->Name()));
    return names;
  }
};

TEST_F(TabOrder, IsTheOrderOfCreation) {
  EXPECT_THAT(Order(), ElementsAre("lblName", "txtName", "keyOne", "keyTwo", "keyThree"));
  EXPECT_EQ(form.lblName.TabIndex(), 0);
  EXPECT_EQ(form.keyThree.TabIndex(), 4);
}

TEST_F(TabOrder, MovingAControlToTheFrontMovesTheOthersUp) {
  form.keyTwo.TabIndex = 0;
  EXPECT_THAT(Order(), ElementsAre("keyTwo", "lblName", "txtName", "keyOne", "keyThree"));
  EXPECT_EQ(form.keyTwo.TabIndex(), 0);
  EXPECT_EQ(form.lblName.TabIndex(), 1);
}

TEST_F(TabOrder, MovingAControlBackClosesItsGap) {
  form.lblName.TabIndex = 3;
  EXPECT_THAT(Order(), ElementsAre("txtName", "keyOne", "keyTwo", "lblName", "keyThree"));
}

TEST_F(TabOrder, PositionsOutsideAreTheEnds) {
  form.keyTwo.TabIndex = -5;
  form.lblName.TabIndex = 99;
  EXPECT_THAT(Order(), ElementsAre("keyTwo", "txtName", "keyOne", "keyThree", "lblName"));
}

TEST_F(TabOrder, OwnPositionChangesNothing) {
  form.keyOne.TabIndex = form.keyOne.TabIndex();
  EXPECT_THAT(Order(), ElementsAre("lblName", "txtName", "keyOne", "keyTwo", "keyThree"));
}

TEST_F(TabOrder, NoTwoControlsShareAPosition) {
  form.keyThree.TabIndex = 0;
  form.keyTwo.TabIndex = 0;
  form.keyOne.TabIndex = 0;
  EXPECT_THAT(Order(), ElementsAre("keyOne", "keyTwo", "keyThree", "lblName", "txtName"));
  std::set<int> positions;
  for (const ui::Control* const control : form.TabOrder())
    positions.insert(control->TabIndex());
  EXPECT_EQ(positions, (std::set<int>{0, 1, 2, 3, 4}));
}

}  // namespace krx::test
