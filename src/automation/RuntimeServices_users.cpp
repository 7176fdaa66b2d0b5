#include "automation/RuntimeServices.h"

#include <ole2.h>

#include <algorithm>

#include "KorvelRuntime.h"
#include "automation/RuntimeClass.h"
#include "com/Text.h"
#include "com/Variant.h"

namespace krx::automation {

namespace {

// A password on its way to the runtime; wiped as soon as the call is done.
class SecretBstr {
 public:
  explicit SecretBstr(const Password& password) : text_(password.View()) {}
  ~SecretBstr() {
    if (text_.Get()) SecureZeroMemory(text_.Get(), SysStringByteLen(text_.Get()));
  }
  SecretBstr(const SecretBstr&) = delete;
  SecretBstr& operator=(const SecretBstr&) = delete;
  BSTR Get() const { return text_.Get(); }

 private:
  com::Bstr text_;
};

com::Variant Element(SAFEARRAY* array, LONG index) {
  VARTYPE type = VT_EMPTY;
  com::Check(SafeArrayGetVartype(array, &type));
  com::Variant element;
  if (type == VT_VARIANT) {
    com::Check(SafeArrayGetElement(array, &index, element.Put()));
  } else {
    com::Check(SafeArrayGetElement(array, &index, &element.Get().lVal));
    element.Get().vt = type;
  }
  return element;
}

// Elements from index 0 to the upper bound; an empty variant has none.
template <class Read>
void ForEach(const com::Variant& list, Read read) {
  if (list.Type() == VT_EMPTY || list.Type() == VT_NULL) return;
  if ((list.Type() & VT_ARRAY) == 0) com::Refuse(DISP_E_TYPEMISMATCH);
  SAFEARRAY* const array = list.Get().parray;
  LONG upper = -1;
  if (array) com::Check(SafeArrayGetUBound(array, 1, &upper));
  for (LONG i = 0; i <= upper; ++i) {
    com::Variant element = Element(array, i);
    read(element);
  }
}

std::vector<String> Names(const com::Variant& list) {
  std::vector<String> names;
  ForEach(list, [&](com::Variant& name) {
    com::Check(name.Convert(VT_BSTR, LOCALE_INVARIANT));
    names.push_back(com::FromBstr(name.Get().bstrVal));
  });
  return names;
}

std::int32_t Number(com::Variant& value) {
  com::Check(value.Convert(VT_I4, LOCALE_INVARIANT));
  return value.Get().lVal;
}

class UserSessionAdapter : public host::UserSession {
 public:
  std::int32_t LogOnUser(const String& user, const Password& password) override {
    LONG result = 0;
    service_.Check(service_->LogOnUser(com::Bstr(user).Get(), SecretBstr(password).Get(), &result));
    return result;
  }
  std::int32_t LogOffUser() override {
    LONG result = 0;
    service_.Check(service_->LogOffUser(&result));
    return result;
  }

 private:
  RuntimeClass<IUserSession> service_{__uuidof(::UserSession), u"UserSession"};
};

class UserAdministrationAdapter : public host::UserAdministration {
 public:
  std::int32_t ChangeUserPassword(const String& user, const Password& new_password,
                                  const Password& current_password) override {
    LONG result = 0;
    service_.Check(service_->ChangeUserPassword(com::Bstr(user).Get(),
                                                SecretBstr(new_password).Get(),
                                                SecretBstr(current_password).Get(), &result));
    return result;
  }
  std::int32_t CreateUser(const host::UserRecord& record) override {
    return Store(&IUserAdministration::CreateUser, record);
  }
  std::int32_t RemoveUser(const String& user) override {
    LONG result = 0;
    service_.Check(service_->RemoveUser(com::Bstr(user).Get(), &result));
    return result;
  }
  std::int32_t SetUserActive(const String& user, std::int32_t active) override {
    LONG result = 0;
    service_.Check(service_->SetUserActive(com::Bstr(user).Get(), active, &result));
    return result;
  }
  host::UserClassOfUser GetUserClass(const String& user) override {
    com::Bstr class_name;
    VARIANT_BOOL found = VARIANT_FALSE;
    service_.Check(service_->GetUserClass(com::Bstr(user).Get(), class_name.Put(), &found));
    return {class_name.Text(), found != 0};
  }
  host::UserInfo GetUserInfo(const String& user) override;
  std::int32_t ModifyUser(const host::UserRecord& record) override {
    return Store(&IUserAdministration::ModifyUser, record);
  }
  std::vector<String> GetUserNames(const String& selection) override {
    com::Variant names;
    const com::Variant left_out = com::Variant::LeftOut();
    service_.Check(service_->GetUserNames(com::Bstr(selection).Get(), left_out.Get(),
                                          left_out.Get(), left_out.Get(), names.Put()));
    return Names(names);
  }
  host::CurrentUser GetCurrentUser() override {
    com::Bstr user;
    com::Bstr class_name;
    VARIANT_BOOL logged_on = VARIANT_FALSE;
    service_.Check(service_->GetCurrentUser(user.Put(), class_name.Put(), &logged_on));
    return {user.Text(), class_name.Text(), logged_on != 0};
  }
  std::int32_t GetAdministrationMode() override {
    LONG mode = 0;
    service_.Check(service_->GetAdministrationMode(&mode));
    return mode;
  }

 private:
  using StoreOperation = HRESULT (STDMETHODCALLTYPE IUserAdministration::*)(BSTR, BSTR, BSTR, BSTR,
                                                                            BSTR, DATE, LONG,
                                                                            LONG*);
  std::int32_t Store(StoreOperation operation, const host::UserRecord& record);

  RuntimeClass<IUserAdministration> service_{__uuidof(::UserAdministration), u"UserAdministration"};
};

host::UserInfo UserAdministrationAdapter::GetUserInfo(const String& user) {
  com::Bstr full_name;
  com::Bstr comment;
  LONG state = 0;
  LONG remaining = 0;
  LONG changed_on = 0;
  LONG renew = 0;
  LONG status = 0;
  service_.Check(service_->GetUserInfo(com::Bstr(user).Get(), full_name.Put(), comment.Put(),
                                       &state, &remaining, &changed_on, &renew, &status));
  return {full_name.Text(), comment.Text(), state, remaining, changed_on, renew};
}

std::int32_t UserAdministrationAdapter::Store(StoreOperation operation,
                                              const host::UserRecord& record) {
  LONG result = 0;
  IUserAdministration* const service = service_.operator->();
  service_.Check(
      (service->*operation)(com::Bstr(record.Name).Get(), com::Bstr(record.FullName).Get(),
                            com::Bstr(record.Comment).Get(), SecretBstr(record.Secret).Get(),
                            com::Bstr(record.ClassName).Get(), record.Date, record.State, &result));
  return result;
}

class UserClassAdministrationAdapter : public host::UserClassAdministration {
 public:
  host::UserClassInfo GetUserClassInfo(const String& class_name) override {
    com::Bstr text;
    com::Variant level;
    LONG result = 0;
    service_.Check(
        service_->GetUserClassInfo(com::Bstr(class_name).Get(), text.Put(), level.Put(), &result));
    return {text.Text(), level.Type() == VT_EMPTY ? 0 : Number(level)};
  }
  host::UserClasses GetUserClasses() override {
    com::Variant names;
    com::Variant levels;
    LONG result = 0;
    service_.Check(service_->GetUserClasses(names.Put(), levels.Put(), &result));
    host::UserClasses classes{Names(names), {}};
    ForEach(levels, [&](com::Variant& level) { classes.Levels.push_back(Number(level)); });
    return classes;
  }

 private:
  RuntimeClass<IUserClassAdministration> service_{__uuidof(::UserClassAdministration),
                                                  u"UserClassAdministration"};
};

}  // namespace

std::unique_ptr<host::UserSession> RuntimeServices::CreateUserSession() {
  return std::make_unique<UserSessionAdapter>();
}

std::unique_ptr<host::UserAdministration> RuntimeServices::CreateUserAdministration() {
  return std::make_unique<UserAdministrationAdapter>();
}

std::unique_ptr<host::UserClassAdministration> RuntimeServices::CreateUserClassAdministration() {
  return std::make_unique<UserClassAdministrationAdapter>();
}

}  // namespace krx::automation
