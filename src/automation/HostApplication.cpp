#include "automation/HostApplication.h"

#include <dispex.h>

#include <string>

#include "com/Errors.h"
#include "com/Text.h"
#include "com/Variant.h"

namespace krx::automation {

namespace {

// One member of a late-bound object, read without arguments. Objects of some script engines can
// only be called through their extended interface.
class Member {
 public:
  Member(const com::ComPtr<IDispatch>& object, const wchar_t* name) : object_(object) {
    std::wstring writable = name;
    LPOLESTR names = writable.data();
    HRESULT status = object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id_);
    if (status == E_NOTIMPL && (extended_ = object_.As<IDispatchEx>())) {
      const com::Bstr text(com::FromWide(name));
      status = extended_->GetDispID(text.Get(), fdexNameCaseInsensitive, &id_);
    }
    com::CheckCall(status, object_.Get(), IID_IDispatch);
  }

  com::Variant Read() const {
    com::Variant value;
    EXCEPINFO failure{};
    const HRESULT status = Call(value.Put(), failure);
    if (status == DISP_E_EXCEPTION) throw com::FromExcepInfo(failure);
    com::CheckCall(status, object_.Get(), IID_IDispatch);
    return value;
  }

 private:
  HRESULT Call(VARIANT* value, EXCEPINFO& failure) const {
    DISPPARAMS none{};
    constexpr WORD kFlags = DISPATCH_PROPERTYGET | DISPATCH_METHOD;
    if (extended_) {
      return extended_->InvokeEx(id_, LOCALE_USER_DEFAULT, kFlags, &none, value, &failure, nullptr);
    }
    return object_->Invoke(id_, IID_NULL, LOCALE_USER_DEFAULT, kFlags, &none, value, &failure,
                           nullptr);
  }

  const com::ComPtr<IDispatch> object_;
  com::ComPtr<IDispatchEx> extended_;
  DISPID id_ = DISPID_UNKNOWN;
};

}  // namespace

String HostApplication::EXEName() {
  // The member holds the object: the call may make the client replace this application.
  const Member member(application_, L"EXEName");
  com::Variant text = com::Variant::Copy(member.Read().Get());
  if (FAILED(text.Convert(VT_BSTR, LOCALE_USER_DEFAULT))) throw TypeMismatch();
  return com::FromBstr(text.Get().bstrVal);
}

}  // namespace krx::automation
