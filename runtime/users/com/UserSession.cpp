#include "runtime/users/com/UserSession.h"

#include "com/Text.h"

namespace krx::runtime {

HRESULT UserSession::LogOnUser(BSTR user, BSTR password, LONG* result) {
  return Guard([&] {
    com::Answer(result, [&] {
      return ProcessPlant().Session.LogOnUser(com::FromBstr(user), PasswordFromBstr(password));
    });
    KeepLoadedWhileLoggedOn();
    return S_OK;
  });
}

HRESULT UserSession::LogOffUser(LONG* result) {
  return Guard([&] {
    com::Answer(result, [] { return ProcessPlant().Session.LogOffUser(); });
    KeepLoadedWhileLoggedOn();
    return S_OK;
  });
}

}  // namespace krx::runtime
