#include "automation/LateMember.h"

#include <string>

#include "com/Errors.h"
#include "com/Text.h"

namespace krx::automation {

LateMember::LateMember(const com::ComPtr<IDispatch>& object, const wchar_t* name)
    : object_(object) {
  std::wstring writable = name;
  LPOLESTR names = writable.data();
  HRESULT status = object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id_);
  if (status == E_NOTIMPL && (extended_ = object_.As<IDispatchEx>())) {
    const com::Bstr text(com::FromWide(name));
    status = extended_->GetDispID(text.Get(), fdexNameCaseInsensitive, &id_);
  }
  com::CheckCall(status, object_.Get(), IID_IDispatch);
}

com::Variant LateMember::Read() const {
  com::Variant value;
  EXCEPINFO failure{};
  const HRESULT status = Call(value.Put(), failure);
  if (status == DISP_E_EXCEPTION) throw com::FromExcepInfo(failure);
  com::CheckCall(status, object_.Get(), IID_IDispatch);
  return value;
}

HRESULT LateMember::Call(VARIANT* value, EXCEPINFO& failure) const {
  DISPPARAMS none{};
  constexpr WORD kFlags = DISPATCH_PROPERTYGET | DISPATCH_METHOD;
  if (extended_) {
    return extended_->InvokeEx(id_, LOCALE_USER_DEFAULT, kFlags, &none, value, &failure, nullptr);
  }
  return object_->Invoke(id_, IID_NULL, LOCALE_USER_DEFAULT, kFlags, &none, value, &failure,
                         nullptr);
}

}  // namespace krx::automation
