#pragma once

#include <filesystem>
#include <string>

#include "soak/Administrator.h"

namespace krx::bench {

// What the dialogs show: users of whom the administrator is logged on, and a folder of files.
class Surroundings {
 public:
  // Throws when they cannot be set up.
  Surroundings(int users, int files, int folders);
  ~Surroundings();
  Surroundings(const Surroundings&) = delete;
  Surroundings& operator=(const Surroundings&) = delete;

  std::wstring Folder() const { return folder_.wstring(); }
  // Creates operators until there are so many users.
  void HaveUsers(int count);

 private:
  const soak::Administrator administrator_;
  const std::filesystem::path folder_;
  int users_ = 1;
};

}  // namespace krx::bench
