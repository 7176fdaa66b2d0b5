#include "UserCalls.h"

#include <stdexcept>
#include <utility>

#include "Times.h"
#include "com/ComPtr.h"

namespace krx::bench {

namespace {

double spent = 0;

// Counts the time of its own life.
class Timed {
 public:
  Timed() = default;
  ~Timed() { spent += Since(begin_); }
  Timed(const Timed&) = delete;
  Timed& operator=(const Timed&) = delete;

 private:
  const Time begin_ = Clock::now();
};

// An object that hands each call on. The dialogs bind early, so nobody asks for names.
template <class Interface>
class Forwarding : public Interface {
 public:
  explicit Forwarding(com::ComPtr<Interface> inner) : inner_(std::move(inner)) {}
  virtual ~Forwarding() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool known = id == IID_IUnknown || id == IID_IDispatch || id == __uuidof(Interface);
    *object = known ? this : nullptr;
    if (!known) return inner_->QueryInterface(id, object);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    return E_NOTIMPL;
  }

 protected:
  template <class... Parameters>
  HRESULT On(HRESULT (STDMETHODCALLTYPE Interface::*method)(Parameters...),
             Parameters... arguments) const {
    const Timed timed;
    return (inner_.Get()->*method)(arguments...);
  }

 private:
  const com::ComPtr<Interface> inner_;
  ULONG references_ = 1;
};

class Session final : public Forwarding<IUserSession> {
 public:
  using Forwarding::Forwarding;
  HRESULT STDMETHODCALLTYPE LogOnUser(BSTR user, BSTR password, LONG* result) override {
    return On(&IUserSession::LogOnUser, user, password, result);
  }
  HRESULT STDMETHODCALLTYPE LogOffUser(LONG* result) override {
    return On(&IUserSession::LogOffUser, result);
  }
};

class Users final : public Forwarding<IUserAdministration> {
  using I = IUserAdministration;

 public:
  using Forwarding::Forwarding;
  HRESULT STDMETHODCALLTYPE ChangeUserPassword(BSTR user, BSTR fresh, BSTR current,
                                               LONG* result) override {
    return On(&I::ChangeUserPassword, user, fresh, current, result);
  }
  HRESULT STDMETHODCALLTYPE CreateUser(BSTR user, BSTR full_name, BSTR comment, BSTR password,
                                       BSTR of_class, DATE date, LONG state,
                                       LONG* result) override {
    return On(&I::CreateUser, user, full_name, comment, password, of_class, date, state, result);
  }
  HRESULT STDMETHODCALLTYPE RemoveUser(BSTR user, LONG* result) override {
    return On(&I::RemoveUser, user, result);
  }
  HRESULT STDMETHODCALLTYPE SetUserActive(BSTR user, LONG active, LONG* result) override {
    return On(&I::SetUserActive, user, active, result);
  }
  HRESULT STDMETHODCALLTYPE GetUserClass(BSTR user, BSTR* of_class, VARIANT_BOOL* found) override {
    return On(&I::GetUserClass, user, of_class, found);
  }
  HRESULT STDMETHODCALLTYPE GetUserInfo(BSTR user, BSTR* full_name, BSTR* comment, LONG* state,
                                        LONG* remaining, LONG* changed_on, LONG* renew,
                                        LONG* status) override {
    return On(&I::GetUserInfo, user, full_name, comment, state, remaining, changed_on, renew,
              status);
  }
  HRESULT STDMETHODCALLTYPE ModifyUser(BSTR user, BSTR full_name, BSTR comment, BSTR password,
                                       BSTR of_class, DATE date, LONG state,
                                       LONG* result) override {
    return On(&I::ModifyUser, user, full_name, comment, password, of_class, date, state, result);
  }
  HRESULT STDMETHODCALLTYPE Reserved1() override { return On(&I::Reserved1); }
  HRESULT STDMETHODCALLTYPE Reserved2() override { return On(&I::Reserved2); }
  HRESULT STDMETHODCALLTYPE GetUserNames(BSTR selection, VARIANT first, VARIANT second,
                                         VARIANT third, VARIANT* names) override {
    return On(&I::GetUserNames, selection, first, second, third, names);
  }
  HRESULT STDMETHODCALLTYPE GetCurrentUser(BSTR* user, BSTR* of_class,
                                           VARIANT_BOOL* logged_on) override {
    return On(&I::GetCurrentUser, user, of_class, logged_on);
  }
  HRESULT STDMETHODCALLTYPE GetAdministrationMode(LONG* mode) override {
    return On(&I::GetAdministrationMode, mode);
  }
};

class Classes final : public Forwarding<IUserClassAdministration> {
  using I = IUserClassAdministration;

 public:
  using Forwarding::Forwarding;
  HRESULT STDMETHODCALLTYPE Reserved1() override { return On(&I::Reserved1); }
  HRESULT STDMETHODCALLTYPE Reserved2() override { return On(&I::Reserved2); }
  HRESULT STDMETHODCALLTYPE Reserved3() override { return On(&I::Reserved3); }
  HRESULT STDMETHODCALLTYPE GetUserClassInfo(BSTR of_class, BSTR* text, VARIANT* level,
                                             LONG* result) override {
    return On(&I::GetUserClassInfo, of_class, text, level, result);
  }
  HRESULT STDMETHODCALLTYPE Reserved4() override { return On(&I::Reserved4); }
  HRESULT STDMETHODCALLTYPE GetUserClasses(VARIANT* names, VARIANT* levels, LONG* result) override {
    return On(&I::GetUserClasses, names, levels, result);
  }
};

// Makes timed objects of one class. There is one factory for as long as the program runs.
template <class Object, class Interface>
class Factory final : public IClassFactory {
 public:
  explicit Factory(com::ComPtr<IClassFactory> inner) : inner_(std::move(inner)) {}
  virtual ~Factory() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool known = id == IID_IUnknown || id == IID_IClassFactory;
    *object = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override {
    com::ComPtr<Interface> inner;
    HRESULT status = S_OK;
    {
      const Timed timed;
      status = inner_->CreateInstance(outer, __uuidof(Interface), inner.PutVoid());
    }
    if (FAILED(status)) return status;
    return com::ComPtr<Interface>::Attach(new Object(std::move(inner)))->QueryInterface(id, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  const com::ComPtr<IClassFactory> inner_;
};

com::ComPtr<IClassFactory> FactoryOf(REFCLSID id) {
  using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  const HMODULE runtime = GetModuleHandleW(L"KorvelRuntime.dll");
  const auto get = reinterpret_cast<GetClassObject>(
      reinterpret_cast<void*>(runtime ? GetProcAddress(runtime, "DllGetClassObject") : nullptr));
  com::ComPtr<IClassFactory> factory;
  if (!get || FAILED(get(id, IID_IClassFactory, factory.PutVoid())))
    throw std::runtime_error("the runtime has no user management");
  return factory;
}

template <class Object, class Interface>
DWORD Register(REFCLSID id) {
  // Never deleted: the runtime may be gone before this program's own objects are.
  static auto* const factory = new Factory<Object, Interface>(FactoryOf(id));
  DWORD cookie = 0;
  if (FAILED(CoRegisterClassObject(id, factory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie)))
    throw std::runtime_error("a timed class cannot be registered");
  return cookie;
}

}  // namespace

UserCalls::UserCalls()
    : registered_{Register<Session, IUserSession>(__uuidof(UserSession)),
                  Register<Users, IUserAdministration>(__uuidof(UserAdministration)),
                  Register<Classes, IUserClassAdministration>(__uuidof(UserClassAdministration))} {
  spent = 0;
}

UserCalls::~UserCalls() {
  for (const DWORD cookie : registered_)
    CoRevokeClassObject(cookie);
}

double UserCalls::Milliseconds() const {
  return spent;
}

}  // namespace krx::bench
