#include "runtime/users/com/UserSession.h"

#include "com/Text.h"
#include "runtime/users/com/SessionThread.h"

namespace krx::runtime {

HRESULT UserSession::LogOnUser(BSTR user, BSTR password, LONG* result) {
  return Answer(result, [&] {
    const std::int32_t outcome =
        ProcessPlant().Session.LogOnUser(com::FromBstr(user), PasswordFromBstr(password));
    if (outcome == host::LogOnSucceeded) AccompanySession();
    return outcome;
  });
}

HRESULT UserSession::LogOffUser(LONG* result) {
  return Answer(result, [] {
    const std::int32_t outcome = ProcessPlant().Session.LogOffUser();
    SessionHasEnded();
    return outcome;
  });
}

}  // namespace krx::runtime
