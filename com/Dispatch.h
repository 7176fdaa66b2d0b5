#pragma once

#include <ole2.h>

namespace krx::com {

// A late-bound call as the client makes it.
struct LateCall {
  DISPID Member;
  LCID Locale;
  WORD Flags;
  const DISPPARAMS& Arguments;
};

// Makes a late-bound call on a dual interface through its type description. Clients may pass
// every argument by value or by reference, positional or named; it is converted to the type of its
// parameter first, and what the method changes is written back to the client's variables. Returns
// DISP_E_EXCEPTION with `failure` filled in when the method itself fails.
HRESULT InvokeTyped(ITypeInfo& description, void* object, const LateCall& call, VARIANT* result,
                    EXCEPINFO* failure, UINT* wrong_argument);

}  // namespace krx::com
