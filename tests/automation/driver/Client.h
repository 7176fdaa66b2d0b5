#pragma once

#include <windows.h>

#include <filesystem>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "driver/Wait.h"

namespace krx::drive {

// A client program in a process of its own, with what it prints; ended when the object goes.
class Client {
 public:
  // Starts a program by its command line; throws when it does not start.
  explicit Client(const std::wstring& command_line);
  ~Client();
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  DWORD ProcessId() const { return process_id_; }
  bool Running() const;
  // What it has printed up to now, in lines without their ends.
  std::vector<std::string> Lines() const;
  // Waits until it has printed this line; throws with its output when it does not.
  void WaitForLine(const std::string& line) const;
  // Waits for its end and returns the exit code; throws with its output when it goes on.
  DWORD Finish(Milliseconds limit = kPatience);

 private:
  void Read(HANDLE pipe);
  void TakeOutput(HANDLE pipe);
  // Its windows, for who waits for its end in vain.
  std::string Shown() const;

  HANDLE process_ = nullptr;
  DWORD process_id_ = 0;
  mutable std::mutex lock_;
  std::string output_;
  std::jthread reader_;
};

// A script for the system's script host, in a file of its own as long as the object lives. The host
// takes the language from the file's extension.
class ScriptFile {
 public:
  explicit ScriptFile(const std::string& text, const wchar_t* extension = L".vbs");
  ~ScriptFile();
  ScriptFile(const ScriptFile&) = delete;
  ScriptFile& operator=(const ScriptFile&) = delete;

  // The command line that runs it.
  std::wstring Command() const;

 private:
  std::filesystem::path path_;
};

// A text as a literal of a script in Visual Basic.
std::string ScriptLiteral(const std::wstring& text);

// Folder of the running program, where its client programs lie as well.
std::filesystem::path ProgramFolder();

}  // namespace krx::drive
