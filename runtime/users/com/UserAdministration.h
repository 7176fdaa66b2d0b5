#pragma once

#include <KorvelRuntime.h>

#include "com/DualObject.h"
#include "runtime/users/com/ProcessUsers.h"

namespace krx::runtime {

// Reading and changing users, as an automation object.
class UserAdministration : public com::DualObject<IUserAdministration> {
 public:
  HRESULT STDMETHODCALLTYPE ChangeUserPassword(BSTR user, BSTR new_password, BSTR current_password,
                                               LONG* result) override;
  HRESULT STDMETHODCALLTYPE CreateUser(BSTR user, BSTR full_name, BSTR comment, BSTR password,
                                       BSTR class_name, DATE date, LONG state,
                                       LONG* result) override;
  HRESULT STDMETHODCALLTYPE RemoveUser(BSTR user, LONG* result) override;
  HRESULT STDMETHODCALLTYPE SetUserActive(BSTR user, LONG active, LONG* result) override;
  HRESULT STDMETHODCALLTYPE GetUserClass(BSTR user, BSTR* class_name, VARIANT_BOOL* found) override;
  // Status: 0, or 1 when there is no such user.
  HRESULT STDMETHODCALLTYPE GetUserInfo(BSTR user, BSTR* full_name, BSTR* comment, LONG* state,
                                        LONG* remaining_log_ons, LONG* password_changed_on,
                                        LONG* renew_password, LONG* status) override;
  HRESULT STDMETHODCALLTYPE ModifyUser(BSTR user, BSTR full_name, BSTR comment, BSTR password,
                                       BSTR class_name, DATE date, LONG state,
                                       LONG* result) override;
  HRESULT STDMETHODCALLTYPE Reserved1() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Reserved2() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetUserNames(BSTR selection, VARIANT, VARIANT, VARIANT,
                                         VARIANT* names) override;
  HRESULT STDMETHODCALLTYPE GetCurrentUser(BSTR* user, BSTR* class_name,
                                           VARIANT_BOOL* logged_on) override;
  HRESULT STDMETHODCALLTYPE GetAdministrationMode(LONG* mode) override;

 private:
  const UsersInUse in_use_;
};

}  // namespace krx::runtime
