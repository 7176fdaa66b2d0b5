#include "runtime/users/com/UserAdministration.h"

#include "com/Text.h"
#include "runtime/users/com/Arrays.h"

namespace krx::runtime {
namespace {

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
  return Answer(result, [&] {
    return ProcessPlant().Users.ChangeUserPassword(
        com::FromBstr(user), PasswordFromBstr(new_password), PasswordFromBstr(current_password));
  });
}

HRESULT UserAdministration::CreateUser(BSTR user, BSTR full_name, BSTR comment, BSTR password,
                                       BSTR class_name, DATE date, LONG state, LONG* result) {
  return Answer(result, [&] {
    return ProcessPlant().Users.CreateUser(
        RecordOf(user, full_name, comment, password, class_name, date, state));
  });
}

HRESULT UserAdministration::ModifyUser(BSTR user, BSTR full_name, BSTR comment, BSTR password,
                                       BSTR class_name, DATE date, LONG state, LONG* result) {
  return Answer(result, [&] {
    return ProcessPlant().Users.ModifyUser(
        RecordOf(user, full_name, comment, password, class_name, date, state));
  });
}

HRESULT UserAdministration::RemoveUser(BSTR user, LONG* result) {
  return Answer(result, [&] { return ProcessPlant().Users.RemoveUser(com::FromBstr(user)); });
}

HRESULT UserAdministration::SetUserActive(BSTR user, LONG active, LONG* result) {
  return Answer(result,
                [&] { return ProcessPlant().Users.SetUserActive(com::FromBstr(user), active); });
}

HRESULT UserAdministration::GetUserClass(BSTR user, BSTR* class_name, VARIANT_BOOL* found) {
  return Guard([&] {
    com::EmptyResults(class_name, found);
    const host::UserClassOfUser answer = ProcessPlant().Users.GetUserClass(com::FromBstr(user));
    *class_name = com::Bstr(answer.ClassName).Detach();
    *found = com::ToVariantBool(answer.Found);
    return S_OK;
  });
}

HRESULT UserAdministration::GetUserInfo(BSTR user, BSTR* full_name, BSTR* comment, LONG* state,
                                        LONG* remaining_log_ons, LONG* password_changed_on,
                                        LONG* renew_password, LONG* status) {
  return Guard([&] {
    com::EmptyResults(full_name, comment, state, remaining_log_ons, password_changed_on,
                      renew_password, status);
    const std::optional<host::UserInfo> found = ProcessPlant().FindUserInfo(com::FromBstr(user));
    const host::UserInfo info = found.value_or(host::UserInfo());
    com::Bstr full(info.FullName);
    com::Bstr remark(info.Comment);
    *status = found ? 0 : 1;
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
  return Answer(names, [&] {
    const std::vector<String> found = ProcessPlant().Users.GetUserNames(com::FromBstr(selection));
    return found.empty() ? VARIANT{} : ArrayOf(found).Detach();
  });
}

HRESULT UserAdministration::GetCurrentUser(BSTR* user, BSTR* class_name, VARIANT_BOOL* logged_on) {
  return Guard([&] {
    com::EmptyResults(user, class_name, logged_on);
    const host::CurrentUser current = ProcessPlant().Users.GetCurrentUser();
    com::Bstr name(current.Name);
    *class_name = com::Bstr(current.ClassName).Detach();
    *user = name.Detach();
    *logged_on = com::ToVariantBool(current.LoggedOn);
    return S_OK;
  });
}

HRESULT UserAdministration::GetAdministrationMode(LONG* mode) {
  return Answer(mode, [] { return ProcessPlant().Users.GetAdministrationMode(); });
}

}  // namespace krx::runtime
