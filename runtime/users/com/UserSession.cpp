#include "runtime/users/com/UserSession.h"

#include "com/Text.h"
#include "runtime/users/com/SessionThread.h"

namespace krx::runtime {

HRESULT UserSession::LogOnUser(BSTR user, BSTR password, LONG* result) {
  return Guard([&] {
    com::Answer(result, [&] {
      return ProcessPlant().Session.LogOnUser(com::FromBstr(user), PasswordFromBstr(password));
    });
    KeepLoadedWhileLoggedOn();
    if (*result == host::LogOnSucceeded) AccompanySession();
    return S_OK;
  });
}

HRESULT UserSession::LogOffUser(LONG* result) {
  return Guard([&] {
    com::Answer(result, [] { return ProcessPlant().Session.LogOffUser(); });
    SessionHasEnded();
    KeepLoadedWhileLoggedOn();
    return S_OK;
  });
}

}  // namespace krx::runtime
