#pragma once

#include "runtime/users/directory/OfflineUsers.h"
#include "runtime/users/store/UserStore.h"

namespace krx::runtime {

// What is kept for offline log-ons, in the database of the users. Without a store nothing is kept.
class OfflineTable : public OfflineStore {
 public:
  explicit OfflineTable(UserStore& store) : store_(store) {}

  std::unique_ptr<Hold> Open() override;

 private:
  UserStore& store_;
};

}  // namespace krx::runtime
