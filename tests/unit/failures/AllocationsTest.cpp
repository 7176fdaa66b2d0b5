// Every allocation of a dialog method fails in turn, once and with all that follow.
#include "failures/Allocations.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <iostream>
#include <random>

#include "base/Error.h"
#include "failures/Calls.h"
#include "platform/Wish.h"
#include "support/Seed.h"

namespace krx::test {
namespace {

constexpr long kSample = 250;  // of each method and way, where KRX_FAILURES asks for no more

enum class End { Result, LackOfMemory, Other };

struct Outcome {
  End How = End::Result;
  std::string Told;  // the result, or the words of another failure
};

Outcome Of(const Error& error) {
  return {error.Status() == kOutOfMemory ? End::LackOfMemory : End::Other, error.what()};
}

// What has been told in boxes of the platform counts as told.
bool ToldInABox(const Plant& plant) {
  const auto& boxes = plant.Platform.Boxes;
  return std::any_of(boxes.begin(), boxes.end(), [](const headless::HeadlessPlatform::Box& box) {
    return box.Text.find(u"Out of memory") != String::npos;
  });
}

class AllocationFailures : public ::testing::TestWithParam<PlantCall> {
 protected:
  // One call, whose n-th allocation fails; 0: none.
  static Outcome Run(Plant& plant, long n, bool for_good) {
    plant.Platform.Forget();
    plant.Platform.Boxes.clear();
    GetParam().Prepare(plant);
    Allocations::Fail(n, for_good);
    try {
      Outcome outcome{End::Result, GetParam().Open(plant)};
      made_ = Allocations::Stop();
      return outcome;
    } catch (const std::bad_alloc&) {
      Allocations::Stop();
      return {End::LackOfMemory, {}};
    } catch (const Error& error) {
      Allocations::Stop();
      return Of(error);
    } catch (const std::exception& failure) {
      Allocations::Stop();
      return {End::Other, failure.what()};
    }
  }

  void ExpectItIsOver(const Plant& plant) {
    EXPECT_EQ(plant.Runtime.Live, 0);
    EXPECT_EQ(plant.Platform.InUse, nullptr);
    EXPECT_EQ(plant.Platform.Attached, nullptr);
  }

  void ExpectItWorks(Plant& plant) {
    const Outcome outcome = Run(plant, 0, false);
    EXPECT_EQ(outcome.How, End::Result) << outcome.Told;
    EXPECT_EQ(outcome.Told, usual_);
    EXPECT_THAT(plant.Platform.Complaints(), ::testing::IsEmpty());
    ExpectItIsOver(plant);
  }

  void FailOne(long n, bool for_good) {
    const long before = Allocations::Live();
    {
      Plant plant;
      const Outcome outcome = Run(plant, n, for_good);
      EXPECT_TRUE(Allocations::Failed());
      if (outcome.How == End::LackOfMemory) {
        ++told_;
      } else if (ToldInABox(plant)) {
        ++told_in_a_box_;
      } else {
        ++harmless_;
        EXPECT_EQ(outcome.How, End::Result) << outcome.Told;
        EXPECT_EQ(outcome.Told, usual_) << "another result, and nobody was told why";
        EXPECT_THAT(plant.Platform.Complaints(), ::testing::IsEmpty());
      }
      ExpectItIsOver(plant);
      plant.Runtime.Codes.clear();
      ExpectItWorks(plant);
    }
    EXPECT_EQ(Allocations::Live(), before) << "blocks are left behind";
  }

  // The method as it works without a failure; twice, as the first call makes what stays.
  void LearnTheUsual() {
    for (int i = 0; i < 2; ++i) {
      Plant plant;
      const Outcome outcome = Run(plant, 0, false);
      ASSERT_EQ(outcome.How, End::Result) << outcome.Told;
      ASSERT_THAT(plant.Platform.Complaints(), ::testing::IsEmpty());
      usual_ = outcome.Told;
    }
  }

  static inline long made_ = 0;  // by the last call that ended with a result
  std::string usual_;
  int told_ = 0;
  int told_in_a_box_ = 0;
  int harmless_ = 0;
};

TEST_P(AllocationFailures, AreToldOrHarmNothing) {
  LearnTheUsual();
  ASSERT_FALSE(HasFatalFailure());
  const long all = made_;
  EXPECT_GT(all, 100);
  const long step = std::max(1L, all / Wish("KRX_FAILURES", kSample));
  std::mt19937 random{FirstSeed()};
  int tried = 0;
  for (long n = 1 + static_cast<long>(random() % static_cast<unsigned long>(step)); n <= all;
       n += step) {
    for (const bool for_good : {false, true}) {
      SCOPED_TRACE("allocation " + std::to_string(n) + (for_good ? " and all that follow" : ""));
      FailOne(n, for_good);
      ++tried;
      if (HasFailure()) return;
    }
  }
  RecordProperty("Allocations", static_cast<int>(all));
  std::cout << GetParam().Name << ": " << all << " allocations, " << tried << " failures, told "
            << told_ << ", in a box " << told_in_a_box_ << ", harmless " << harmless_ << '\n';
}

std::vector<PlantCall> AllCalls() {
  std::vector<PlantCall> all = BoxCalls();
  for (const std::vector<PlantCall>& more : {UserCalls(), FileCalls()})
    all.insert(all.end(), more.begin(), more.end());
  return all;
}

INSTANTIATE_TEST_SUITE_P(Methods, AllocationFailures, ::testing::ValuesIn(AllCalls()),
                         [](const auto& test) { return test.param.Name; });

TEST(AllocationFailuresOf, AllThirteenMethods) {
  EXPECT_EQ(AllCalls().size(), 13u);
}

}  // namespace
}  // namespace krx::test
