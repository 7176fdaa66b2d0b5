#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "runtime/users/system/Errands.h"

namespace krx::test {

// Errands on threads of the standard library; its end waits for all of them.
class Threads : public runtime::Errands {
 public:
  ~Threads() override {
    for (std::thread& thread : threads_)
      thread.join();
  }

  bool Run(std::function<void()> work, std::chrono::milliseconds patience) override {
    auto done = std::make_shared<Done>();
    {
      const std::lock_guard lock(guard_);
      threads_.emplace_back([work = std::move(work), done]() mutable {
        work();
        work = nullptr;
        const std::lock_guard finished(done->Guard);
        done->Is = true;
        done->Changed.notify_all();
      });
    }
    std::unique_lock lock(done->Guard);
    return done->Changed.wait_for(lock, patience, [&] { return done->Is; });
  }

 private:
  struct Done {
    std::mutex Guard;
    std::condition_variable Changed;
    bool Is = false;
  };

  std::mutex guard_;
  std::vector<std::thread> threads_;
};

}  // namespace krx::test
