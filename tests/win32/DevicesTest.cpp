#include "ports/win32/Devices.h"

#include <gtest/gtest.h>

#include <atomic>

#include "MachineFilesSupport.h"
#include "Person.h"

namespace krx::test {

namespace {

using std::chrono::milliseconds;

const String kDead = u"\\\\?\\UNC\\dead\\share\\Data";
const String kAlive = u"\\\\?\\C:\\Data";

// A server that answers no question until it is woken; the questions that were asked of it live on
// behind the end of the test that asked them.
class DeadServer {
 public:
  std::function<int()> Question() const {
    return [state = state_] {
      ++state->Asked;
      WaitForSingleObject(state->Awake, INFINITE);
      ++state->Answered;
      return 1;
    };
  }
  void Wake() const { SetEvent(state_->Awake); }
  int Asked() const { return state_->Asked; }
  int Answered() const { return state_->Answered; }
  bool HasAnswered(int questions) const {
    return Within([&] { return state_->Answered >= questions; }) && state_->Answered == questions;
  }

 private:
  struct State {
    ~State() { CloseHandle(Awake); }
    const HANDLE Awake = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::atomic<int> Asked = 0;
    std::atomic<int> Answered = 0;
  };
  const std::shared_ptr<State> state_ = std::make_shared<State>();
};

TEST(Devices, AnAnswerArrives) {
  win32::Devices devices(kLong);
  EXPECT_EQ(devices.Ask<int>(kAlive, [] { return 42; }), 42);
}

TEST(Devices, ADeviceThatKeepsQuietIsWaitedForOnce) {
  constexpr int kTimes = 1000;
  constexpr milliseconds kWait{500};
  const DeadServer server;
  win32::Devices devices(kWait);
  const Stopwatch first;
  EXPECT_EQ(devices.Ask<int>(kDead, server.Question()), std::nullopt);
  EXPECT_GE(first.Passed(), kWait);
  const Stopwatch others;
  for (int i = 0; i < kTimes; ++i)
    EXPECT_EQ(devices.Ask<int>(kDead, server.Question()), std::nullopt);
  EXPECT_LT(others.Passed(), kWait * kTimes);  // a wait each time takes eight minutes
  EXPECT_TRUE(Within([&] { return server.Asked() > 0; }));
  EXPECT_EQ(server.Asked(), 1);
  server.Wake();
}

TEST(Devices, OthersAnswerWhileOneKeepsQuiet) {
  const DeadServer server;
  win32::Devices devices(milliseconds(10));
  EXPECT_EQ(devices.Ask<int>(kDead, server.Question()), std::nullopt);
  win32::Devices patient(kLong);
  EXPECT_EQ(patient.Ask<int>(kAlive, [] { return 42; }), 42);
  server.Wake();
}

TEST(Devices, ADeviceThatWakesUpIsAskedAgain) {
  const DeadServer server;
  win32::Devices devices(milliseconds(10));
  EXPECT_EQ(devices.Ask<int>(kDead, server.Question()), std::nullopt);
  server.Wake();
  ASSERT_TRUE(server.HasAnswered(1));
  std::optional<int> answer;
  Within([&] { return (answer = devices.Ask<int>(kDead, server.Question())).has_value(); });
  EXPECT_EQ(answer, 1);
}

TEST(Devices, OneDriveIsOneDeviceInBothCases) {
  const DeadServer server;
  win32::Devices devices(milliseconds(10));
  EXPECT_EQ(devices.Ask<int>(u"\\\\?\\q:\\a", server.Question()), std::nullopt);
  EXPECT_EQ(devices.Ask<int>(u"\\\\?\\Q:\\b", server.Question()), std::nullopt);
  EXPECT_TRUE(Within([&] { return server.Asked() > 0; }));
  EXPECT_EQ(server.Asked(), 1);
  server.Wake();
}

TEST(Devices, TheirEndWaitsForNothing) {
  const DeadServer server;
  auto devices = std::make_unique<win32::Devices>(milliseconds(10));
  EXPECT_EQ(devices->Ask<int>(kDead, server.Question()), std::nullopt);
  devices.reset();
  EXPECT_EQ(server.Answered(), 0);
  server.Wake();
  EXPECT_TRUE(server.HasAnswered(1));
}

TEST(Devices, AQuestionOpensNoBoxOfTheSystem) {
  win32::Devices devices(kLong);
  EXPECT_EQ(devices.Ask<DWORD>(kAlive, [] { return GetThreadErrorMode(); }),
            static_cast<DWORD>(SEM_FAILCRITICALERRORS));
}

TEST(Devices, AQuestionThatFailsIsAnsweredByNothing) {
  win32::Devices devices(kLong);
  EXPECT_EQ(devices.Ask<int>(kAlive, []() -> int { throw std::bad_alloc(); }), 0);
}

}  // namespace

}  // namespace krx::test
