#pragma once

#include <functional>
#include <utility>

#include "folders/FileSystem.h"
#include "ports/win32/Devices.h"

namespace krx::win32 {

// A question to the device of a system path, answered in the background. One that cannot be asked,
// or is not answered in time, has the answer of a device that is not there.
template <class Reply>
class Asking : public folders::Question<Reply> {
 public:
  // Asks at once; `ask` refers to nothing of the caller's. No path: there is nobody to be asked.
  Asking(std::shared_ptr<Devices> devices, String path, std::function<Reply()> ask)
      : devices_(std::move(devices)), path_(std::move(path)) {
    if (path_.empty() || devices_->Silent(path_)) return;
    work_ = std::make_shared<Work>(std::move(ask));
    Background::Start(work_);
  }
  ~Asking() override {
    if (work_) work_->GiveUp();
  }

  std::optional<Reply> Take(folders::Patience patience) override {
    if (!work_) return Reply();
    if (work_->WaitForEnd(patience)) {
      work_->RaiseFailure();
      return work_->Said;
    }
    if (!devices_->Overdue(asked_)) return std::nullopt;
    devices_->GiveUp(path_, std::move(work_));
    return Reply();
  }

 private:
  class Work : public Background {
   public:
    explicit Work(std::function<Reply()> ask) : ask_(std::move(ask)) {}
    Reply Said{};

   private:
    void Run() override { Said = ask_(); }
    const std::function<Reply()> ask_;
  };

  const std::shared_ptr<Devices> devices_;
  const String path_;
  const Devices::Clock::time_point asked_ = Devices::Clock::now();
  std::shared_ptr<Work> work_;
};

}  // namespace krx::win32
