#pragma once

#include <KorvelRuntime.h>

#include "client/Dialogs.h"
#include "users/UserStoreFolder.h"

namespace krx::soak {

// A store of users with one administrator, who is logged on in this process as long as this lives.
class Administrator {
 public:
  // Throws when that cannot be set up.
  Administrator();

 private:
  const drive::UserStoreFolder store_;
  const client::Automation automation_;
  com::ComPtr<IUserSession> session_;
};

}  // namespace krx::soak
