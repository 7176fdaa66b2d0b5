#include "ui/Questions.h"

#include "support/FormTest.h"

namespace krx::test {
namespace {

using std::chrono::milliseconds;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// What a test knows of a question: it gives the answer, or takes it away.
struct Line {
  std::optional<int> Answer;
  std::vector<folders::Patience> Waits;
  int Living = 0;
  bool Broken = false;
};

class FakeQuestion : public folders::Question<int> {
 public:
  explicit FakeQuestion(Line& line) : line_(line) { ++line_.Living; }
  ~FakeQuestion() override { --line_.Living; }
  std::optional<int> Take(folders::Patience patience) override {
    line_.Waits.push_back(patience);
    if (line_.Broken) throw RuntimeError(57, u"Device I/O error");
    return line_.Answer;
  }

 private:
  Line& line_;
};

class QuestionsTest : public FormTest {
 protected:
  void Await(Line& line, folders::Patience patience = folders::kNoPatience) {
    questions.Await<int>(std::make_unique<FakeQuestion>(line), patience,
                         [this](const int& answer) { Told(answer); });
  }
  void Told(int answer) {
    told.push_back(answer);
    if (on_told) on_told(answer);
  }
  bool Looking() { return dynamic_cast<ui::Timer&>(*form.Find(u"tmrQuestions")).Enabled(); }

  ui::Questions questions{form, u"tmrQuestions"};
  std::vector<int> told;
  std::function<void(int)> on_told;
  Line one;
  Line two;
};

TEST_F(QuestionsTest, AnAnswerThatIsThereIsToldAtOnce) {
  one.Answer = 7;
  Await(one, milliseconds(20));
  EXPECT_THAT(told, ElementsAre(7));
  EXPECT_THAT(one.Waits, ElementsAre(milliseconds(20)));
  EXPECT_EQ(one.Living, 0) << "it has ended";
  EXPECT_FALSE(Looking());
}

TEST_F(QuestionsTest, ALateAnswerIsToldSoonAndNobodyWaitsForIt) {
  Show(form, [this](Operator& op) {
    Await(one, milliseconds(20));
    op.Wait(milliseconds(1000));
    EXPECT_THAT(told, IsEmpty());
    one.Answer = 7;
    op.Wait(milliseconds(10));
    EXPECT_THAT(told, ElementsAre(7));
    EXPECT_EQ(std::count(one.Waits.begin() + 1, one.Waits.end(), folders::kNoPatience),
              static_cast<std::ptrdiff_t>(one.Waits.size()) - 1);
    EXPECT_EQ(one.Living, 0);
    EXPECT_FALSE(Looking()) << "there is nothing more to look for";
    op.Wait(milliseconds(1000));
    EXPECT_THAT(told, ElementsAre(7)) << "once";
  });
}

TEST_F(QuestionsTest, OneThatStaysOpenDelaysNoOther) {
  Show(form, [this](Operator& op) {
    Await(one);
    Await(two);
    two.Answer = 2;
    op.Wait(milliseconds(10));
    EXPECT_THAT(told, ElementsAre(2));
    one.Answer = 1;
    op.Wait(milliseconds(10));
    EXPECT_THAT(told, ElementsAre(2, 1));
  });
}

TEST_F(QuestionsTest, NothingIsAskedBeforeTheFormIsShown) {
  one.Answer = 1;
  int asked = 0;
  questions.AskWhenShown<int>(
      [&]() -> ui::Questions::Asked<int> {
        ++asked;
        return std::make_unique<FakeQuestion>(one);
      },
      [this](const int& answer) { Told(answer); });
  EXPECT_EQ(asked, 0);
  EXPECT_THAT(told, IsEmpty());
  one.Answer.reset();
  Show(form, [&](Operator& op) {
    op.Wait(milliseconds(30));
    EXPECT_EQ(asked, 1) << "asked once, looked for three times";
    EXPECT_EQ(one.Waits.size(), 3u);
    one.Answer = 1;
    op.Wait(milliseconds(10));
    EXPECT_THAT(told, ElementsAre(1));
  });
}

TEST_F(QuestionsTest, WhatCannotBeAskedIsPassedOver) {
  one.Broken = true;
  EXPECT_EQ(ErrorOf([this] { Await(one); })->Description(), u"Device I/O error") << "at once";
  one.Broken = false;
  Show(form, [this](Operator& op) {
    Await(one);
    Await(two);
    one.Broken = true;
    two.Answer = 2;
    op.Wait(milliseconds(10));
    EXPECT_THAT(told, ElementsAre(2));
    EXPECT_EQ(one.Living, 0);
    EXPECT_FALSE(Looking());
  });
}

TEST_F(QuestionsTest, WhatIsDroppedIsGivenUpAndNeverTold) {
  Show(form, [this](Operator& op) {
    Await(one);
    Await(two);
    questions.Drop();
    EXPECT_EQ(one.Living + two.Living, 0);
    EXPECT_FALSE(Looking());
    one.Answer = two.Answer = 1;
    op.Wait(milliseconds(1000));
    EXPECT_THAT(told, IsEmpty());
    Await(one);
    EXPECT_THAT(told, ElementsAre(1)) << "and others can be asked";
  });
}

TEST_F(QuestionsTest, WhoeverIsToldMayAskMore) {
  Show(form, [this](Operator& op) {
    on_told = [this](int answer) {
      if (answer == 1) Await(two);
    };
    Await(one);
    one.Answer = 1;
    op.Wait(milliseconds(10));
    EXPECT_TRUE(Looking());
    two.Answer = 2;
    op.Wait(milliseconds(10));
    EXPECT_THAT(told, ElementsAre(1, 2));
  });
}

// Both answers have come by the same look.
TEST_F(QuestionsTest, WhoeverIsToldMayDropTheOthers) {
  Show(form, [this](Operator& op) {
    on_told = [this](int) { questions.Drop(); };
    Await(one);
    Await(two);
    one.Answer = 1;
    two.Answer = 2;
    op.Wait(milliseconds(1000));
    EXPECT_THAT(told, ElementsAre(1));
  });
}

// As a message box does that tells of the answer.
TEST_F(QuestionsTest, TimeMayPassWhileAnAnswerIsTold) {
  Show(form, [this](Operator& op) {
    on_told = [&](int answer) {
      if (answer != 1) return;
      two.Answer = 2;
      op.Wait(milliseconds(100));
    };
    Await(one);
    Await(two);
    one.Answer = 1;
    op.Wait(milliseconds(10));
    EXPECT_THAT(told, ElementsAre(1, 2));
  });
}

}  // namespace
}  // namespace krx::test
