#include "runtime/users/com/UserAdministration.h"

#include "com/Text.h"
#include "runtime/users/administration/UserDirectory.h"
#include "runtime/users/com/Arrays.h"
#include "runtime/users/com/ProcessUsers.h"

namespace krx::runtime {
namespace {

VARIANT_BOOL ToVariantBool(bool value) {
  return value ? VARIANT_TRUE : VARIANT_FALSE;
}

host::UserRecord RecordOf(BSTR user, BSTR full_name, BSTR comment, BSTR password, BSTR class_name,
                          DATE date, LONG state) {
  host::UserRecord record;
  record.Name = com::FromBstr(user);
  record.FullName = com::FromBstr(full_name);
  record.Comment = com::FromBstr(comment);
  record.Secret = PasswordFromBstr(password);
  record.ClassName = com::FromBstr(class_name);
  record.Date = date;
  record.State = state;
  return record;
}

}  // namespace

HRESULT UserAdministration::ChangeUserPassword(BSTR user, BSTR new_password, BSTR current_password,
                                               LONG* result) {
  if (!result) return E_POINTER;
  *result = 0;
  return Guard([&] {
    *result = UserDirectory(ProcessUsers())
                  .ChangeUserPassword(com::FromBstr(user), PasswordFromBstr(new_password),
                                      PasswordFromBstr(current_password));
    return S_OK;
  });
}

HRESULT UserAdministration::CreateUser(BSTR user, BSTR full_name, BSTR comment, BSTR password,
                                       BSTR class_name, DATE date, LONG state, LONG* result) {
  if (!result) return E_POINTER;
  *result = 0;
  return Guard([&] {
    *result =
        UserDirectory(ProcessUsers())
            .CreateUser(RecordOf(user, full_name, comment, password, class_name, date, state));
    return S_OK;
  });
}

HRESULT UserAdministration::ModifyUser(BSTR user, BSTR full_name, BSTR comment, BSTR password,
                                       BSTR class_name, DATE date, LONG state, LONG* result) {
  if (!result) return E_POINTER;
  *result = 0;
  return Guard([&] {
    *result =
        UserDirectory(ProcessUsers())
            .ModifyUser(RecordOf(user, full_name, comment, password, class_name, date, state));
    return S_OK;
  });
}

HRESULT UserAdministration::RemoveUser(BSTR user, LONG* result) {
  if (!result) return E_POINTER;
  *result = 0;
  return Guard([&] {
    *result = UserDirectory(ProcessUsers()).RemoveUser(com::FromBstr(user));
    return S_OK;
  });
}

HRESULT UserAdministration::SetUserActive(BSTR user, LONG active, LONG* result) {
  if (!result) return E_POINTER;
  *result = 0;
  return Guard([&] {
    *result = UserDirectory(ProcessUsers()).SetUserActive(com::FromBstr(user), active);
    return S_OK;
  });
}

HRESULT UserAdministration::GetUserClass(BSTR user, BSTR* class_name, VARIANT_BOOL* found) {
  if (!class_name || !found) return E_POINTER;
  *class_name = nullptr;
  *found = VARIANT_FALSE;
  return Guard([&] {
    const host::UserClassOfUser answer =
        UserDirectory(ProcessUsers()).GetUserClass(com::FromBstr(user));
    *class_name = com::Bstr(answer.ClassName).Detach();
    *found = ToVariantBool(answer.Found);
    return S_OK;
  });
}

HRESULT UserAdministration::GetUserInfo(BSTR user, BSTR* full_name, BSTR* comment, LONG* state,
                                        LONG* remaining_log_ons, LONG* password_changed_on,
                                        LONG* renew_password, LONG* status) {
  if (!full_name || !comment || !state || !remaining_log_ons || !password_changed_on ||
      !renew_password || !status) {
    return E_POINTER;
  }
  *full_name = *comment = nullptr;
  *state = *remaining_log_ons = *password_changed_on = *renew_password = *status = 0;
  return Guard([&] {
    UserDirectory directory(ProcessUsers());
    const String name = com::FromBstr(user);
    const host::UserInfo info = directory.GetUserInfo(name);
    com::Bstr full(info.FullName);
    com::Bstr remark(info.Comment);
    *status = directory.GetUserClass(name).Found ? 0 : 1;
    *state = info.State;
    *remaining_log_ons = info.RemainingLogOns;
    *password_changed_on = info.PasswordChangedOn;
    *renew_password = info.RenewPassword;
    *full_name = full.Detach();
    *comment = remark.Detach();
    return S_OK;
  });
}

HRESULT UserAdministration::GetUserNames(BSTR selection, VARIANT, VARIANT, VARIANT,
                                         VARIANT* names) {
  if (!names) return E_POINTER;
  VariantInit(names);
  return Guard([&] {
    const std::vector<String> found =
        UserDirectory(ProcessUsers()).GetUserNames(com::FromBstr(selection));
    if (found.empty()) return S_OK;
    com::Variant array = ArrayOf(found);
    std::swap(*names, array.Get());
    return S_OK;
  });
}

HRESULT UserAdministration::GetCurrentUser(BSTR* user, BSTR* class_name, VARIANT_BOOL* logged_on) {
  if (!user || !class_name || !logged_on) return E_POINTER;
  *user = *class_name = nullptr;
  *logged_on = VARIANT_FALSE;
  return Guard([&] {
    const host::CurrentUser current = UserDirectory(ProcessUsers()).GetCurrentUser();
    com::Bstr name(current.Name);
    *class_name = com::Bstr(current.ClassName).Detach();
    *user = name.Detach();
    *logged_on = ToVariantBool(current.LoggedOn);
    return S_OK;
  });
}

HRESULT UserAdministration::GetAdministrationMode(LONG* mode) {
  if (!mode) return E_POINTER;
  *mode = 0;
  return Guard([&] {
    *mode = UserDirectory(ProcessUsers()).GetAdministrationMode();
    return S_OK;
  });
}

}  // namespace krx::runtime
