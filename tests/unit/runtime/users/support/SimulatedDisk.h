#pragma once

#include <map>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace krx::test {

// What a power failure leaves of what was written and not yet flushed: nothing, everything, or of
// each write by chance all, nothing, or a part with garbage behind it.
enum class Loss { Nothing, Everything, ByChance };

// A disk in memory for databases, which knows what has reached it: every operation can fail, and
// the machine can stop before, within and after each that changes something.
class SimulatedDisk {
 public:
  SimulatedDisk();
  ~SimulatedDisk();
  SimulatedDisk(const SimulatedDisk&) = delete;
  SimulatedDisk& operator=(const SimulatedDisk&) = delete;

  // The name by which databases reach it.
  const char* Name() const { return name_.c_str(); }

  // Stops the machine at the n-th step from now (1 is the next); 0: never. From then on nothing is
  // read or written any more.
  void StopAt(int step) { stop_at_ = step, steps_ = 0; }
  bool HasStopped() const { return stop_at_ > 0 && steps_ >= stop_at_; }
  // The machine starts again; every database has been closed. Without `loss` only the process died,
  // and what it wrote is there.
  void Restart(std::optional<Loss> loss, unsigned seed = 1);

  // Lets the n-th operation from now fail, and with `for_good` all after it.
  void FailAt(int operation, bool for_good) {
    fail_at_ = operation, fails_for_good_ = for_good, operations_ = 0;
  }
  int Operations() const { return operations_; }

  bool ReadOnly = false;        // nothing can be written
  bool Full = false;            // nothing new finds room
  std::string RefusesNewFiles;  // with this in their name, where it is not empty
  bool Unreadable = false;      // nothing can be opened
  bool LiesOfFlushing = false;  // says that it has flushed and has not
  int Writes = 0;
  int Flushes = 0;

  // A write that is not on the disk yet; without bytes the file is cut to the offset.
  struct Change {
    std::size_t Offset;
    std::optional<std::string> Bytes;
  };
  struct File {
    std::string Visible;
    std::optional<std::string> Durable;  // nothing: not even its name is on the disk
    std::vector<Change> Pending;
  };
  using Files = std::map<std::string, std::shared_ptr<File>>;

  std::string& Content(const std::string& file) { return files_.at(file)->Visible; }
  bool Exists(const std::string& file) const { return files_.contains(file); }
  // A copy of all files, and the way back; every database has been closed.
  Files Copy() const;
  void Put(const Files& files);

 private:
  friend struct DiskAccess;

  struct Locks {
    int Shared = 0;
    const void* Reserved = nullptr;
    const void* Pending = nullptr;
    const void* Exclusive = nullptr;
  };

  bool Step();
  bool Fails();
  bool Write(File& file, std::size_t offset, std::string bytes);
  std::string AfterPowerFailure(const File& file, Loss loss, std::mt19937& random) const;

  std::string name_;
  std::shared_ptr<void> system_;
  Files files_;
  Files removed_;  // whose removal is not on the disk yet
  std::map<std::string, Locks> locks_;
  int steps_ = 0;
  int stop_at_ = 0;
  int operations_ = 0;
  int fail_at_ = 0;
  bool fails_for_good_ = false;
};

}  // namespace krx::test
