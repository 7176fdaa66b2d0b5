#include "automation/HostApplication.h"

#include "com/Failure.h"
#include "com/Text.h"
#include "com/Variant.h"

namespace krx::automation {

String HostApplication::EXEName() {
  // The call may make the client put another application in the place of this one.
  const com::ComPtr<IDispatch> application = application_;
  wchar_t name[] = L"EXEName";
  LPOLESTR names = name;
  DISPID member = 0;
  com::CheckCall(application->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &member),
                 application.Get(), IID_IDispatch);

  DISPPARAMS none{};
  EXCEPINFO info{};
  com::Variant value;
  const HRESULT status = application->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT,
                                             DISPATCH_PROPERTYGET | DISPATCH_METHOD, &none,
                                             value.Put(), &info, nullptr);
  if (status == DISP_E_EXCEPTION) throw com::FromExcepInfo(info);
  com::CheckCall(status, application.Get(), IID_IDispatch);

  com::Variant text = com::Variant::Copy(value.Get());
  if (FAILED(text.Convert(VT_BSTR, LOCALE_USER_DEFAULT))) throw TypeMismatch();
  return com::FromBstr(text.Get().bstrVal);
}

}  // namespace krx::automation
