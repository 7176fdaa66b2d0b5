#pragma once

#include <KorvelRuntime.h>

#include "com/DualObject.h"
#include "runtime/users/com/ProcessUsers.h"

namespace krx::runtime {

// Logging users on and off, as an automation object.
class UserSession : public com::DualObject<IUserSession> {
 public:
  HRESULT STDMETHODCALLTYPE LogOnUser(BSTR user, BSTR password, LONG* result) override;
  HRESULT STDMETHODCALLTYPE LogOffUser(LONG* result) override;

 private:
  const UsersInUse in_use_;
};

}  // namespace krx::runtime
