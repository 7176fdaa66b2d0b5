#include "runtime/users/tool/Console.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <cstdio>
#include <string>

namespace krx::runtime {
namespace {

void Write(std::FILE* file, std::string_view bytes) {
  std::fwrite(bytes.data(), 1, bytes.size(), file);
  std::fflush(file);
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

}  // namespace

void Print(StringView text) {
  PrintBytes(ToUtf8(text));
}

void PrintBytes(std::string_view bytes) {
  Write(stdout, bytes);
}

void PrintError(StringView text) {
  Write(stderr, ToUtf8(text));
}

Password TypePassword(StringView prompt) {
  Print(prompt);
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
  Print(u"\n");
  return typed;
}

// Lines end as they are written: what is exported is compared and hashed by others.
Utf8Console::Utf8Console() : page_(GetConsoleOutputCP()) {
  SetConsoleOutputCP(CP_UTF8);
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
}

Utf8Console::~Utf8Console() {
  SetConsoleOutputCP(page_);
}

}  // namespace krx::runtime
