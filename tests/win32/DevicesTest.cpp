#include "ports/win32/Asking.h"

#include <gtest/gtest.h>

#include <atomic>
#include <new>

#include "FolderTree.h"
#include "MachineFilesSupport.h"
#include "Person.h"
#include "ports/win32/FolderReading.h"
#include "ports/win32/System.h"

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

using win32::Asking;
using win32::Devices;

class AskingTest : public testing::Test {
 protected:
  // Devices that count as not there as soon as they are waited for.
  const std::shared_ptr<Devices> hasty = std::make_shared<Devices>(milliseconds(0));
  const std::shared_ptr<Devices> patient = std::make_shared<Devices>(kLong);
  const DeadServer server;

  // A question that the dead server has heard is waited for no longer.
  void AskInVain(const String& path) {
    const int before = server.Asked();
    Asking<int> asking(hasty, path, server.Question());
    ASSERT_TRUE(Within([&] { return server.Asked() > before; }));
    EXPECT_EQ(asking.Take(milliseconds(1)), 0);
  }
  static std::optional<int> Answer(const std::shared_ptr<Devices>& devices, const String& path,
                                   std::function<int()> question, milliseconds patience) {
    return Asking<int>(devices, path, std::move(question)).Take(patience);
  }
};

TEST_F(AskingTest, AnAnswerArrives) {
  EXPECT_EQ(Answer(
                patient, kAlive, [] { return 42; }, kLong),
            42);
}

// It used to be answered as a device answers that is not there.
TEST_F(AskingTest, AnAnswerForWhichMemoryIsLackingIsAFailure) {
  Asking<int> asking(patient, kAlive, []() -> int { throw std::bad_alloc(); });
  EXPECT_THROW(asking.Take(kLong), std::bad_alloc);
}

TEST_F(AskingTest, AQuestionIsOpenUntilItIsAnswered) {
  Asking<int> asking(patient, kDead, server.Question());
  EXPECT_EQ(asking.Take(milliseconds(1)), std::nullopt);
  server.Wake();
  EXPECT_EQ(asking.Take(kLong), 1);
}

TEST_F(AskingTest, ADeviceThatKeepsQuietCountsAsNotThereAndIsAskedNothingMore) {
  AskInVain(kDead);
  for (int i = 0; i < 1000; ++i)
    EXPECT_EQ(Answer(hasty, kDead, server.Question(), kLong), 0);
  EXPECT_EQ(server.Asked(), 1);
  server.Wake();
}

TEST_F(AskingTest, OthersAnswerWhileOneKeepsQuiet) {
  AskInVain(kDead);
  EXPECT_FALSE(hasty->Silent(kAlive));
  EXPECT_TRUE(hasty->Silent(kDead));
  EXPECT_EQ(Answer(
                hasty, kAlive, [] { return 42; }, kLong),
            42);
  server.Wake();
}

TEST_F(AskingTest, ADeviceThatWakesUpIsAskedAgain) {
  AskInVain(kDead);
  server.Wake();
  EXPECT_TRUE(Within([&] { return !hasty->Silent(kDead); }));
  EXPECT_EQ(Answer(hasty, kDead, server.Question(), kLong), 1);
}

TEST_F(AskingTest, OneDriveIsOneDeviceInBothCases) {
  AskInVain(u"\\\\?\\q:\\a");
  EXPECT_TRUE(hasty->Silent(u"\\\\?\\Q:\\b"));
  server.Wake();
}

TEST_F(AskingTest, ItsEndWaitsForNothing) {
  auto asking = std::make_unique<Asking<int>>(patient, kDead, server.Question());
  EXPECT_TRUE(Within([&] { return server.Asked() > 0; }));
  asking.reset();
  EXPECT_EQ(server.Answered(), 0);
  server.Wake();
  EXPECT_TRUE(server.HasAnswered(1));
}

// A pipe that nobody writes to is read for ever.
TEST_F(AskingTest, AQuestionThatIsGivenUpIsCancelled) {
  struct Pipe {
    HANDLE Read = nullptr, Write = nullptr;
    std::atomic<bool> Reading = false;
    std::atomic<DWORD> Failure = ERROR_SUCCESS;
  };
  const auto pipe = std::make_shared<Pipe>();
  ASSERT_TRUE(CreatePipe(&pipe->Read, &pipe->Write, nullptr, 0));
  auto asking = std::make_unique<Asking<int>>(patient, kDead, [pipe] {
    char read = 0;
    DWORD count = 0;
    pipe->Reading = true;
    if (!ReadFile(pipe->Read, &read, 1, &count, nullptr)) pipe->Failure = GetLastError();
    return 1;
  });
  ASSERT_TRUE(Within([&] { return pipe->Reading.load(); }));
  EXPECT_EQ(asking->Take(milliseconds(50)), std::nullopt);  // the thread is in the call by then
  asking.reset();
  EXPECT_TRUE(Within([&] { return pipe->Failure == ERROR_OPERATION_ABORTED; })) << pipe->Failure;
  CloseHandle(pipe->Write);
  CloseHandle(pipe->Read);
}

TEST_F(AskingTest, AQuestionOpensNoBoxOfTheSystem) {
  EXPECT_EQ(Asking<DWORD>(patient, kAlive, [] { return GetThreadErrorMode(); }).Take(kLong),
            static_cast<DWORD>(SEM_FAILCRITICALERRORS));
}

TEST_F(AskingTest, AQuestionThatCannotBeAskedIsAnsweredByNothing) {
  EXPECT_EQ(Answer(
                patient, {}, [] { return 42; }, kLong),
            0);
}

TEST_F(AskingTest, FoldersOfADeviceThatKeepsQuietArePassedOver) {
  const FolderTree tree;
  tree.AddFile(u"file");
  const String alive = u"\\\\?\\" + tree.Path();
  AskInVain(kDead);
  const folders::FolderPart read =
      win32::FolderTaker(hasty, {kDead + u"\\below", kDead, alive}).Take(kLong);
  EXPECT_EQ(read.Opened, 2u);
  EXPECT_EQ(read.Files, std::vector<String>{u"file"});
  win32::FolderTaker none(hasty, {kDead});
  try {
    none.Take(kLong);
    ADD_FAILURE() << "nothing can be opened";
  } catch (const Error& error) {
    EXPECT_EQ(error.Status(), 0x800A0000u + 68);
  }
  server.Wake();
}

}  // namespace

}  // namespace krx::test
