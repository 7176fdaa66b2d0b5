#pragma once

#include <ole2.h>

#include <vector>

#include "com/TypeDescriptions.h"
#include "com/Variant.h"

namespace krx::com {

// The arguments of a late-bound call, one per parameter, each of exactly the parameter's type.
class Arguments {
 public:
  Arguments(ITypeInfo& owner, const FUNCDESC& function, LCID locale);
  // Wipes the copies of texts: the system keeps freed ones, and one may be a password.
  ~Arguments();
  Arguments(const Arguments&) = delete;
  Arguments& operator=(const Arguments&) = delete;

  // Takes copies of what the client passes, by position or by name, and fills in what it leaves
  // out. Returns DISP_E_BADPARAMCOUNT, DISP_E_PARAMNOTFOUND, DISP_E_TYPEMISMATCH or
  // DISP_E_OVERFLOW, the latter three with the client's argument in `wrong`.
  HRESULT Bind(const DISPPARAMS& given, UINT* wrong);

  // The arguments for ITypeInfo::Invoke; valid until the next change.
  DISPPARAMS& ForInvoke();

  // Hands what the method changed back to the client's variables.
  HRESULT WriteBack();

 private:
  struct Slot {
    ParameterType Type;
    const PARAMDESC* Parameter = nullptr;
    VARIANTARG* Given = nullptr;
    UINT GivenIndex = 0;
    Variant Value;
    VARIANT Before{};
    bool OnlyOut = false;
  };

  HRESULT Assign(const DISPPARAMS& given, UINT* wrong);
  HRESULT Fill(Slot& slot);
  HRESULT FillMissing(Slot& slot);

  const bool put_;
  const LCID locale_;
  std::vector<Slot> slots_;
  std::vector<VARIANTARG> passed_;
  DISPID put_id_ = DISPID_PROPERTYPUT;
  DISPPARAMS parameters_{};
};

}  // namespace krx::com
