#include "MockApplication.h"

#include <string_view>

#include "com/Text.h"

namespace krx::tests {

HRESULT MockApplication::QueryInterface(REFIID iid, void** object) {
  *object = nullptr;
  if (iid != IID_IUnknown && !(iid == IID_IDispatch && OffersDispatch)) return E_NOINTERFACE;
  *object = this;
  AddRef();
  return S_OK;
}

ULONG MockApplication::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT MockApplication::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

HRESULT MockApplication::GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) {
  if (FAILED(NameStatus)) return NameStatus;
  if (std::wstring_view(names[0]) != L"EXEName") return DISP_E_UNKNOWNNAME;
  *ids = 1;
  return S_OK;
}

HRESULT MockApplication::Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                EXCEPINFO* failure, UINT*) {
  return answer_(result, failure);
}

com::ComPtr<MockApplication> NamedApplication() {
  return com::ComPtr<MockApplication>::Attach(new MockApplication([](VARIANT* result, EXCEPINFO*) {
    result->vt = VT_BSTR;
    result->bstrVal = com::Bstr(u"TheApp").Detach();
    return S_OK;
  }));
}

}  // namespace krx::tests
