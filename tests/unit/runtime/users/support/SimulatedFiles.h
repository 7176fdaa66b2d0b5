#pragma once

#include <map>

#include "runtime/users/system/Files.h"

namespace krx::test {

// The machine stopped; thrown through the code under test, which must not catch it.
struct MachineStopped {};

// How much of what was written but not flushed is found after a power failure.
enum class Tear { Nothing, FirstHalf, AllButLastByte, Zeros, Everything };

// Files in memory that know what has reached the disk: every operation can fail, and the machine
// can stop before and within each.
class SimulatedFiles : public runtime::Files {
 public:
  std::optional<std::string> Read(const std::filesystem::path& file) override;
  // Each change by an operation or a test is another time.
  runtime::FileStamp Stamp(const std::filesystem::path& file) override;
  void WriteFlushed(const std::filesystem::path& file, std::string_view bytes) override;
  void Replace(const std::filesystem::path& from, const std::filesystem::path& to) override;

  // Stops the machine at the n-th step from now (1 is the next); 0: never.
  void StopAt(int step) { stop_at_ = step, steps_ = 0; }
  int Steps() const { return steps_; }
  // The machine starts again. Without power failure only the process died, and what it wrote is
  // there.
  void Restart(bool power_failed, Tear tear);

  // Lets the n-th operation from now raise Error, and with `for_good` all after it.
  void FailAt(int operation, bool for_good) {
    fail_at_ = operation, fails_for_good_ = for_good, operations_ = 0;
  }
  int Operations() const { return operations_; }

  bool ReadOnly = false;    // every write raises Error
  bool Unreadable = false;  // every read of an existing file raises Error

  std::string& Content(const std::filesystem::path& file) {
    files_[file].Time = ++changes_;
    return files_[file].Visible;
  }
  int Reads = 0;
  // A file that has been on the disk for long.
  void Put(const std::filesystem::path& file, const std::string& bytes) {
    files_[file] = {bytes, bytes, ++changes_};
  }
  bool Exists(const std::filesystem::path& file) const { return files_.contains(file); }

 private:
  struct File {
    std::string Visible;
    std::string Durable;
    std::uint64_t Time = 0;
  };

  void Step();
  void BeginOperation(const std::filesystem::path& file, bool writes);

  std::map<std::filesystem::path, File> files_;
  std::uint64_t changes_ = 0;
  int steps_ = 0;
  int stop_at_ = 0;
  int operations_ = 0;
  int fail_at_ = 0;
  bool fails_for_good_ = false;
};

}  // namespace krx::test
