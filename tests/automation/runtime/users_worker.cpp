// Changes users without an end until it is killed at a random moment, by itself.
//   users_worker FOLDER SEED
#include <windows.h>

#include <cstdlib>
#include <filesystem>
#include <random>
#include <thread>

#include "runtime/users/administration/UserDirectory.h"
#include "runtime/users/logon/LogOnService.h"
#include "runtime/users/win32/Win32Clock.h"
#include "runtime/users/win32/Win32Cryptography.h"
#include "runtime/users/win32/Win32Files.h"

namespace {

using namespace krx;

constexpr int kWrong = 2;
constexpr int kLongestLife = 60'000;  // microseconds

void DieAfter(int microseconds) {
  std::thread([microseconds] {
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
    TerminateProcess(GetCurrentProcess(), 9);
  }).detach();
}

}  // namespace

int wmain(int, wchar_t** arguments) {
  const unsigned seed = static_cast<unsigned>(_wtoi(arguments[2]));
  std::mt19937 random(seed);
  runtime::Win32Files files;
  runtime::Win32Cryptography crypto;
  runtime::Win32Clock clock;
  runtime::Session session;
  runtime::UserManagement management({files, crypto, clock}, arguments[1], session);
  if (runtime::LogOnService(management).LogOnUser(u"boss", Password(u"boss's own secret")) !=
      host::LogOnSucceeded) {
    return kWrong;
  }
  runtime::UserDirectory directory(management);
  DieAfter(static_cast<int>(random() % kLongestLife));
  for (int i = 0;; ++i) {
    host::UserRecord record;
    record.Name = u"user " + ToString(static_cast<std::int32_t>(seed)) + u" " + ToString(i);
    record.ClassName = u"Operator";
    record.Secret = Password(u"a first secret");
    if (directory.CreateUser(record) != host::CreateUserSucceeded) return kWrong;
    if (i % 2 == 1 && directory.RemoveUser(record.Name) != host::ModifyUserSucceeded) return kWrong;
  }
}
