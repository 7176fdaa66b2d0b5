#include "support/FormTest.h"
#include "ui/RowList.h"

// A form that has just come up takes no answer for as long as its plant asks for.
namespace krx::test {

class Answers : public FormTest {
 protected:
  Answers() {
    form.keyOne.Caption = u"&One";
    form.keyOne.Click = [this] { log += "one "; };
    form.keyThree.Click = [this] { log += "cancel "; };
    form.CancelKey = &form.keyThree;
    form.txtName.KeyPress = [this](char16_t& key) {
      if (key == ui::kKeyEnter) log += "enter ";
    };
  }
  // Everything that answers, one after the other.
  void AnswerByAllMeans(Operator& op) {
    op.Press(ui::kKeyEnter);
    op.Press(ui::kKeyEscape);
    op.AccessKey(u'o');
    op.Click(u"keyOne");
    op.Press(ui::kKeyEnter);
    op.Press(ui::kKeySpace);
    form.txtName.SetFocus();
  }

  std::string log;
};

TEST_F(Answers, CountAtOnceWhereNoDelayIsAskedFor) {
  Show(form, [this](Operator& op) { AnswerByAllMeans(op); });
  EXPECT_EQ(log, "enter cancel one one one one ");
}

TEST_F(Answers, OfNoKindCountBeforeTheDelayIsOver) {
  form.Panel.FirstAnswerDelay = 0.5;
  Show(form, [this](Operator& op) {
    op.Wait(std::chrono::milliseconds(499));
    AnswerByAllMeans(op);
    EXPECT_EQ(log, "");
    op.Wait(std::chrono::milliseconds(1));
    AnswerByAllMeans(op);
  });
  EXPECT_EQ(log, "enter cancel one one one one ");
}

TEST_F(Answers, AreDelayedAnewWheneverTheFormComesUp) {
  form.Panel.FirstAnswerDelay = 1;
  for (int i = 0; i < 2; ++i) {
    Show(form, [](Operator& op) {
      op.Click(u"keyOne");
      op.Wait(std::chrono::seconds(1));
      op.Click(u"keyOne");
    });
  }
  EXPECT_EQ(log, "one one ");
}

TEST_F(Answers, AreNotWhatIsTypedMeanwhile) {
  form.Panel.FirstAnswerDelay = 1;
  Show(form, [](Operator& op) {
    op.Type(u"a b");
    op.Press(ui::kKeyTab);
    EXPECT_EQ(op.Focus(), u"keyOne");
  });
  EXPECT_EQ(form.txtName.Text(), u"a b");
}

TEST_F(Answers, AreNotGivenByADoubleClickEither) {
  ui::ListView list(form, u"lvw");
  list.SetRows({{u"a"}});
  list.RowClick = [this](int) { log += "click "; };
  list.RowDoubleClick = [this](int) { log += "double "; };
  form.Panel.FirstAnswerDelay = 1;
  Show(form, [](Operator& op) {
    op.DoubleClickRow(u"lvw", 0);
    op.Wait(std::chrono::seconds(1));
    op.DoubleClickRow(u"lvw", 0);
  });
  EXPECT_EQ(log, "click click double ");
}

TEST_F(Answers, OfTheProgramAreNeverDelayed) {
  form.Panel.FirstAnswerDelay = 1;
  form.tmrSample.Interval = 200;
  form.tmrSample.Enabled = true;
  form.tmrSample.Tick = [this] { form.Hide(); };
  Show(form, [](Operator& op) {
    op.Wait(std::chrono::milliseconds(200));
    EXPECT_FALSE(op.Form().Visible());
  });
}

}  // namespace krx::test
