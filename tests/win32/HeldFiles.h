#pragma once

#include <atomic>
#include <memory>
#include <utility>

#include "ports/win32/MachineFiles.h"
#include "ports/win32/Win32Platform.h"

namespace krx::test {

// This machine's files; of all that is asked one answer never comes. Answers are counted from 1, in
// the order of the asking; that of a reading counts twice, by its opening and by its rest. The
// counts may be read by other threads.
class HeldFiles final : public folders::FileSystem {
 public:
  // Counts anew and holds this answer from now on; 0: none.
  void Hold(int number) {
    hold_ = number;
    asked_ = drives_ = readings_ = probes_ = 0;
    waited_ = 0;
    looked_for_ = false;
  }

  bool Asked() const { return asked_ >= hold_; }  // for what is held
  bool LookedFor() const { return looked_for_; }
  int DrivesAsked() const { return drives_; }
  int ReadingsAsked() const { return readings_; }
  int ProbesAsked() const { return probes_; }
  // How long the asking thread would have waited so far for what is held, in milliseconds.
  long Waited() const { return waited_; }

  std::vector<String> Drives() override { return machine_.Drives(); }
  String CurrentDirectory() override { return machine_.CurrentDirectory(); }
  std::unique_ptr<folders::Question<folders::Drive>> AskDrive(StringView drive) override {
    const bool held = Next();
    auto asked = machine_.AskDrive(drive);
    ++drives_;
    return std::make_unique<Question<folders::Drive>>(*this, held, std::move(asked));
  }
  std::unique_ptr<folders::Question<bool>> AskFolder(StringView path) override {
    const bool held = Next();
    return std::make_unique<Question<bool>>(*this, held, machine_.AskFolder(path));
  }
  std::unique_ptr<folders::FolderReader> ReadFolder(std::vector<String> paths) override {
    const bool opening = Next();
    const bool rest = Next();
    auto asked = machine_.ReadFolder(std::move(paths));
    ++readings_;
    return std::make_unique<Reader>(*this, opening, rest, std::move(asked));
  }
  std::unique_ptr<folders::SubfolderProbe> ProbeSubfolders(StringView path,
                                                           std::vector<String> folders) override {
    const bool held = Next();
    auto asked = machine_.ProbeSubfolders(path, std::move(folders));
    ++probes_;
    return std::make_unique<Probe>(*this, held, std::move(asked));
  }

 private:
  template <class Answer>
  class Question : public folders::Question<Answer> {
   public:
    Question(HeldFiles& files, bool held, std::unique_ptr<folders::Question<Answer>> asked)
        : files_(files), held_(held), asked_(std::move(asked)) {}
    std::optional<Answer> Take(folders::Patience patience) override {
      if (!held_) return asked_->Take(patience);
      files_.Wait(patience);
      return std::nullopt;
    }

   private:
    HeldFiles& files_;
    const bool held_;
    const std::unique_ptr<folders::Question<Answer>> asked_;
  };

  class Reader : public folders::FolderReader {
   public:
    Reader(HeldFiles& files, bool opening, bool rest, std::unique_ptr<folders::FolderReader> asked)
        : files_(files), held_(opening), rest_(rest), asked_(std::move(asked)) {}
    folders::FolderPart Take(folders::Patience patience) override {
      if (held_) {
        files_.Wait(patience);
        return {};
      }
      folders::FolderPart part = asked_->Take(patience);
      held_ = rest_ && part.Opened;
      if (held_) part.Complete = false;
      return part;
    }

   private:
    HeldFiles& files_;
    bool held_;
    const bool rest_;
    const std::unique_ptr<folders::FolderReader> asked_;
  };

  class Probe : public folders::SubfolderProbe {
   public:
    Probe(HeldFiles& files, bool held, std::unique_ptr<folders::SubfolderProbe> asked)
        : files_(files), held_(held), asked_(std::move(asked)) {}
    std::vector<folders::Marker> Take(folders::Patience patience) override {
      if (!held_) return asked_->Take(patience);
      files_.Wait(patience);
      return {};
    }

   private:
    HeldFiles& files_;
    const bool held_;
    const std::unique_ptr<folders::SubfolderProbe> asked_;
  };

  bool Next() { return ++asked_ == hold_; }
  void Wait(folders::Patience patience) {
    waited_ += static_cast<long>(patience.count());
    looked_for_ = true;
  }

  win32::MachineFiles machine_;
  std::atomic<int> hold_ = 0;
  std::atomic<int> asked_ = 0;
  std::atomic<int> drives_ = 0;
  std::atomic<int> readings_ = 0;
  std::atomic<int> probes_ = 0;
  std::atomic<long> waited_ = 0;
  std::atomic<bool> looked_for_ = false;
};

// Real windows over these files.
class HeldPlatform final : public win32::Win32Platform {
 public:
  HeldFiles Held;
  folders::FileSystem& Files() override { return Held; }
};

}  // namespace krx::test
