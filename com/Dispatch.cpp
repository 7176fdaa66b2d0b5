#include "com/Dispatch.h"

#include "com/Arguments.h"

namespace krx::com {

HRESULT InvokeTyped(ITypeInfo& description, void* object, const LateCall& call, VARIANT* result,
                    EXCEPINFO* failure, UINT* wrong_argument) {
  const FunctionDescription function(description, call.Member, call.Flags);
  if (!function.Found()) return DISP_E_MEMBERNOTFOUND;
  Arguments arguments(description, *function, call.Locale);
  if (const HRESULT bound = arguments.Bind(call.Arguments, wrong_argument); FAILED(bound)) {
    return bound;
  }
  const HRESULT status =
      description.Invoke(object, call.Member, static_cast<WORD>(function->invkind),
                         &arguments.ForInvoke(), result, failure, wrong_argument);
  return FAILED(status) ? status : arguments.WriteBack();
}

}  // namespace krx::com
