// Every call of the component into the system fails in turn, once and with all that follow, in
// every method of the interface.

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "client/Methods.h"
#include "driver/Client.h"
#include "driver/Window.h"
#include "failures/FailingCalls.h"
#include "platform/Imports.h"
#include "platform/Wish.h"

namespace krx::failures {
namespace {

constexpr long kSample = 14;  // calls of each method, where KRX_FAILURES asks for no more
constexpr long kSeed = 1;
constexpr long kLeastCalls = 200;
constexpr long kUsualGrowth = 100;  // of handles and blocks, which the system brings by itself
constexpr drive::Milliseconds kNoLimit{24 * 3600 * 1000};
constexpr int kMostEnds = 20;  // after which a method is left alone

bool IsNamed(const std::vector<std::string>& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

TEST(FailingImports, AreAllThatTheComponentHasExceptThoseThatAreSpared) {
  const HMODULE module = LoadLibraryW((drive::ProgramFolder() / "KRXDialogs.dll").c_str());
  ASSERT_NE(module, nullptr);
  for (const auto& [library, name] : test::ImportsOf(module)) {
    if (_stricmp(library.c_str(), "msvcrt.dll") == 0) continue;  // the language's own library
    const bool fails = std::any_of(FailingImports().begin(), FailingImports().end(),
                                   [&](const Import& import) { return import.Name == name; });
    EXPECT_NE(fails, IsNamed(SparedImports(), name)) << library << ' ' << name;
  }
  FreeLibrary(module);
}

// What the clients have told of the calls that they have failed.
struct Report {
  long Calls = 0;
  long Tried = 0;
  long Told = 0;
  long Worked = 0;
  std::string Begun;  // the call that was being failed; empty when the client was done
  std::vector<std::string> Bad;

  void Add(const std::string& line) {
    const auto rest = [&](const char* word) {
      const std::size_t length = std::strlen(word);
      return line.compare(0, length, word) == 0 ? line.c_str() + length : nullptr;
    };
    if (const char* const calls = rest("calls ")) Calls = std::atol(calls);
    if (const char* const left = rest("left ")) AddLeft(left);
    if (const char* const call = rest("begin ")) Begun = call;
    if (rest("begin ")) ++Tried;
    if (rest("told ")) ++Told;
    if (rest("works ")) ++Worked;
    if (rest("bad ")) Bad.push_back(line);
    if (rest("done")) Begun.clear();
  }

  // Handles and blocks grow a little by the system's own doing.
  void AddLeft(const std::string& counters) {
    long windows = 0;
    long objects = 0;
    long handles = 0;
    long blocks = 0;
    long atoms = 0;
    std::istringstream(counters) >> windows >> objects >> handles >> blocks >> atoms;
    const long tolerated = kUsualGrowth + Tried / 20;
    if (windows > 0 || objects > tolerated || atoms > 0 || handles > tolerated ||
        blocks > tolerated)
      Bad.push_back("left behind (windows, graphics objects, handles, blocks, atoms): " + counters);
  }
};

class CallFailures : public testing::TestWithParam<client::Method> {
 protected:
  // Where a client crashes or stands still, another one goes on behind that call.
  void FailCalls() {
    long behind = 0;
    for (int ends = 0; ends < kMostEnds; ++ends) {
      report_.Begun = "at the start";
      RunClient(behind);
      if (report_.Begun.empty()) return;
      ADD_FAILURE() << "the client ended: " << report_.Begun;
      behind = std::atol(report_.Begun.c_str());
      if (behind == 0) return;
    }
  }

  Report report_;

 private:
  // The client itself ends where a dialog stays.
  void RunClient(long behind) {
    const std::string arguments =
        GetParam().Name + " " + std::to_string(test::Wish("KRX_SEED", kSeed)) + " " +
        std::to_string(test::Wish("KRX_FAILURES", kSample)) + " " + std::to_string(behind);
    drive::Client client((drive::ProgramFolder() / "failing_client.exe").wstring() + L" " +
                         drive::Widen(arguments));
    client.Finish(kNoLimit);
    for (const std::string& line : client.Lines())
      report_.Add(line);
  }
};

TEST_P(CallFailures, AreToldOrTheDialogWorks) {
  FailCalls();
  EXPECT_GE(report_.Calls, kLeastCalls);
  EXPECT_GT(report_.Told, 0);
  EXPECT_GT(report_.Worked, 0);
  for (const std::string& line : report_.Bad)
    ADD_FAILURE() << line;
  RecordProperty("Calls", static_cast<int>(report_.Calls));
  std::printf("%s: %ld calls, %ld failures, told %ld, works %ld\n", GetParam().Name.c_str(),
              report_.Calls, report_.Tried, report_.Told, report_.Worked);
}

INSTANTIATE_TEST_SUITE_P(Methods, CallFailures, testing::ValuesIn(client::Methods()),
                         [](const auto& test) { return test.param.Name; });

}  // namespace
}  // namespace krx::failures
