#include "com/Variant.h"

#include "com/Errors.h"

namespace krx::com {

Variant Variant::Zero(VARTYPE type) {
  Variant result;
  result.value_ = VARIANT{};
  result.value_.vt = type;
  return result;
}

Variant Variant::LeftOut() {
  Variant result = Zero(VT_ERROR);
  result.value_.scode = DISP_E_PARAMNOTFOUND;
  return result;
}

Variant Variant::Copy(const VARIANT& source) {
  Variant result;
  Check(VariantCopyInd(&result.value_, const_cast<VARIANT*>(&source)));
  return result;
}

HRESULT Variant::Convert(VARTYPE type, LCID locale) {
  if (type == VT_VARIANT || type == value_.vt) return S_OK;
  if (type == VT_DISPATCH || type == VT_UNKNOWN) return ConvertObject(type);
  Variant converted;
  const HRESULT result = VariantChangeTypeEx(&converted.value_, &value_, locale, 0, type);
  if (SUCCEEDED(result)) std::swap(value_, converted.value_);
  return result;
}

// The platform would turn some texts and numbers into objects and errors of its own; for us what is
// no object is a type mismatch.
HRESULT Variant::ConvertObject(VARTYPE type) {
  if (value_.vt != VT_DISPATCH && value_.vt != VT_UNKNOWN) return DISP_E_TYPEMISMATCH;
  Variant object = Zero(type);
  if (value_.punkVal) {
    const IID& iid = type == VT_DISPATCH ? IID_IDispatch : IID_IUnknown;
    void* found = nullptr;
    if (FAILED(value_.punkVal->QueryInterface(iid, &found))) return DISP_E_TYPEMISMATCH;
    object.value_.punkVal = static_cast<IUnknown*>(found);
  }
  std::swap(value_, object.value_);
  return S_OK;
}

}  // namespace krx::com
