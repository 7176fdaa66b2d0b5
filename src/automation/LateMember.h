#pragma once

#include <dispex.h>
#include <ole2.h>

#include "com/ComPtr.h"
#include "com/Variant.h"

namespace krx::automation {

// One member of a late-bound object, read without arguments. Objects of some script engines can
// only be called through their extended interface. What the object refuses raises Error.
class LateMember {
 public:
  LateMember(const com::ComPtr<IDispatch>& object, const wchar_t* name);

  com::Variant Read() const;

 private:
  HRESULT Call(VARIANT* value, EXCEPINFO& failure) const;

  const com::ComPtr<IDispatch> object_;
  com::ComPtr<IDispatchEx> extended_;
  DISPID id_ = DISPID_UNKNOWN;
};

}  // namespace krx::automation
