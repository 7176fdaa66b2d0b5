#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

#include "base/Error.h"
#include "com/Text.h"
#include "runtime/users/administration/Provisioning.h"
#include "runtime/users/com/ProcessUsers.h"

namespace krx::runtime {
namespace {

constexpr char kUsage[] =
    "usage: krxusers provision <user name> [--generate]\n"
    "Creates the users of this machine with their first administrator, who has to renew his\n"
    "password at the first log-on. The password is typed, or generated and printed once.\n";

void Print(StringView text) {
  const std::string bytes = ToUtf8(text);
  std::fwrite(bytes.data(), 1, bytes.size(), stdout);
}

// Turns the echo of the console off while a password is typed; does nothing for a redirected input.
class SilentInput {
 public:
  explicit SilentInput(HANDLE input) : input_(input) {
    is_console_ = GetConsoleMode(input_, &mode_) != 0;
    if (is_console_) SetConsoleMode(input_, mode_ & ~static_cast<DWORD>(ENABLE_ECHO_INPUT));
  }
  SilentInput(const SilentInput&) = delete;
  SilentInput& operator=(const SilentInput&) = delete;
  ~SilentInput() {
    if (is_console_) SetConsoleMode(input_, mode_);
  }
  bool IsConsole() const { return is_console_; }

 private:
  HANDLE input_;
  DWORD mode_ = 0;
  bool is_console_ = false;
};

Password TypePassword(const char* prompt) {
  std::fputs(prompt, stdout);
  std::fflush(stdout);
  const SilentInput input(GetStdHandle(STD_INPUT_HANDLE));
  Password typed;
  for (;;) {
    wchar_t unit = 0;
    DWORD count = 0;
    char byte = 0;
    const BOOL read = input.IsConsole()
                          ? ReadConsoleW(GetStdHandle(STD_INPUT_HANDLE), &unit, 1, &count, nullptr)
                          : ReadFile(GetStdHandle(STD_INPUT_HANDLE), &byte, 1, &count, nullptr);
    if (!input.IsConsole()) unit = static_cast<unsigned char>(byte);
    if (!read || count == 0 || unit == L'\n') break;
    if (unit == L'\r') continue;
    const auto letter = static_cast<char16_t>(unit);
    typed = typed.With(typed.Length(), 0, StringView(&letter, 1));
  }
  std::fputs("\n", stdout);
  return typed;
}

int Provision(const String& name, bool generates) {
  UserManagement& users = ProcessUsers();
  std::filesystem::create_directories(users.Store.Folder());
  Password password;
  if (generates) {
    password = GeneratePassword(users.System.Crypto, users.Rules());
  } else {
    password = TypePassword("Password: ");
    if (!(password == TypePassword("Password again: "))) {
      std::fputs("The passwords differ; nothing was created.\n", stderr);
      return 1;
    }
  }
  ProvisionFirstAdministrator(users, name, password);
  Print(u"Created the users in " + users.Store.Folder().u16string() + u".\n");
  if (generates) {
    Print(u"Password, shown this once: ");
    Print(password.View());
    Print(u"\n");
  }
  return 0;
}

int Run(const std::vector<String>& arguments) {
  const bool generates = arguments.size() == 3 && arguments[2] == u"--generate";
  if (arguments.size() < 2 || arguments[0] != u"provision" ||
      (arguments.size() > 2 && !generates)) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  try {
    return Provision(arguments[1], generates);
  } catch (const Error& failure) {
    std::fprintf(stderr, "Nothing was created: %s\n", ToUtf8(failure.Description()).c_str());
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "Nothing was created: %s\n", failure.what());
  }
  return 1;
}

}  // namespace
}  // namespace krx::runtime

int wmain(int count, wchar_t** arguments) {
  std::vector<krx::String> texts;
  for (int i = 1; i < count; ++i)
    texts.push_back(krx::com::FromWide(arguments[i]));
  return krx::runtime::Run(texts);
}
