#include "runtime/users/com/UserSession.h"

#include "com/Text.h"
#include "runtime/users/com/ProcessUsers.h"
#include "runtime/users/logon/LogOnService.h"

namespace krx::runtime {

HRESULT UserSession::LogOnUser(BSTR user, BSTR password, LONG* result) {
  if (!result) return E_POINTER;
  *result = 0;
  return Guard([&] {
    *result =
        LogOnService(ProcessUsers()).LogOnUser(com::FromBstr(user), PasswordFromBstr(password));
    KeepLoadedWhileLoggedOn();
    return S_OK;
  });
}

HRESULT UserSession::LogOffUser(LONG* result) {
  if (!result) return E_POINTER;
  *result = 0;
  return Guard([&] {
    *result = LogOnService(ProcessUsers()).LogOffUser();
    KeepLoadedWhileLoggedOn();
    return S_OK;
  });
}

}  // namespace krx::runtime
