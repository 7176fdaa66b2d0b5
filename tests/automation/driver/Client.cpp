#include "driver/Client.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "driver/Window.h"

namespace krx::drive {

Client::Client(const std::wstring& command_line) {
  SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
  HANDLE read = nullptr;
  HANDLE write = nullptr;
  if (!CreatePipe(&read, &write, &inherit, 0)) throw std::runtime_error("no pipe");
  SetHandleInformation(read, HANDLE_FLAG_INHERIT, 0);

  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = write;
  start.hStdError = write;
  PROCESS_INFORMATION process{};
  DWORD error = ERROR_SUCCESS;
  // On a machine with much more to do than it can, Wine has refused to start a program that is
  // there.
  Within(kPatience, [&] {
    std::wstring command = command_line;
    const BOOL created = CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                        nullptr, &start, &process);
    error = created ? ERROR_SUCCESS : GetLastError();
    return created || error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
  });
  CloseHandle(write);
  if (error != ERROR_SUCCESS) {
    CloseHandle(read);
    throw std::runtime_error("a client program does not start: error " + std::to_string(error));
  }
  CloseHandle(process.hThread);
  process_ = process.hProcess;
  process_id_ = process.dwProcessId;
  reader_ = std::jthread([this, read] { Read(read); });
}

Client::~Client() {
  if (Running()) TerminateProcess(process_, 99);
  WaitForSingleObject(process_, INFINITE);
  if (reader_.joinable()) reader_.join();
  CloseHandle(process_);
}

// The client's end is that of its output: what it has started, the system's desktop even, may keep
// the pipe open for as long as this program runs.
void Client::Read(HANDLE pipe) {
  constexpr DWORD kPoll = 5;  // milliseconds
  for (bool ended = false; !ended;) {
    ended = WaitForSingleObject(process_, kPoll) != WAIT_TIMEOUT;
    TakeOutput(pipe);
  }
  CloseHandle(pipe);
}

void Client::TakeOutput(HANDLE pipe) {
  std::array<char, 1024> chunk;
  DWORD there = 0;
  while (PeekNamedPipe(pipe, nullptr, 0, nullptr, &there, nullptr) && there) {
    DWORD count = 0;
    if (!ReadFile(pipe, chunk.data(), std::min<DWORD>(there, chunk.size()), &count, nullptr))
      return;
    const std::lock_guard guard(lock_);
    output_.append(chunk.data(), count);
  }
}

bool Client::Running() const {
  return WaitForSingleObject(process_, 0) == WAIT_TIMEOUT;
}

std::vector<std::string> Client::Lines() const {
  const std::lock_guard guard(lock_);
  std::istringstream text(output_);
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

void Client::WaitForLine(const std::string& line) const {
  const auto printed = [&] {
    const auto lines = Lines();
    return std::find(lines.begin(), lines.end(), line) != lines.end();
  };
  if (!Within(kPatience, printed))
    throw std::runtime_error("the client does not print '" + line + "' but: " + output_);
}

DWORD Client::Finish(Milliseconds limit) {
  if (WaitForSingleObject(process_, static_cast<DWORD>(limit.count())) != WAIT_OBJECT_0)
    throw std::runtime_error("the client does not end; it printed: " + output_ +
                             "; it shows: " + Shown());
  if (reader_.joinable()) reader_.join();
  DWORD code = 0;
  GetExitCodeProcess(process_, &code);
  return code;
}

std::string Client::Shown() const {
  std::string shown;
  for (const Window& window : WindowsOf(process_id_))
    shown += Narrow(window.Name()) + " '" + Narrow(window.Text()) + "' ";
  return shown.empty() ? "nothing" : shown;
}

ScriptFile::ScriptFile(const std::string& text, const wchar_t* extension) {
  std::array<wchar_t, MAX_PATH> folder{};
  std::array<wchar_t, MAX_PATH> file{};
  GetTempPathW(folder.size(), folder.data());
  GetTempFileNameW(folder.data(), L"krx", 0, file.data());
  std::filesystem::remove(file.data());
  path_ = std::wstring(file.data()) + extension;
  std::ofstream(path_, std::ios::binary) << text;
}

ScriptFile::~ScriptFile() {
  std::error_code ignored;
  std::filesystem::remove(path_, ignored);
}

std::wstring ScriptFile::Command() const {
  return L"cscript.exe //nologo \"" + path_.wstring() + L"\"";
}

std::string ScriptLiteral(const std::wstring& text) {
  std::string literal(1, '"');
  for (const char unit : Narrow(text))
    literal += unit == '"' ? std::string("\"\"") : std::string(1, unit);
  return literal += '"';
}

std::filesystem::path ProgramFolder() {
  std::array<wchar_t, MAX_PATH> file{};
  GetModuleFileNameW(nullptr, file.data(), file.size());
  return std::filesystem::path(file.data()).parent_path();
}

}  // namespace krx::drive
