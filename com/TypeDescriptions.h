#pragma once

#include <ole2.h>

#include "com/ComPtr.h"

namespace krx::com {

// Description of one function of an interface, for as long as this lives.
class FunctionDescription {
 public:
  // Function with this identifier among the kinds of call that `flags` allow; Found() is false
  // when there is none.
  FunctionDescription(ITypeInfo& owner, DISPID member, WORD flags);
  ~FunctionDescription();
  FunctionDescription(const FunctionDescription&) = delete;
  FunctionDescription& operator=(const FunctionDescription&) = delete;

  bool Found() const { return function_ != nullptr; }
  const FUNCDESC& operator*() const { return *function_; }
  const FUNCDESC* operator->() const { return function_; }

 private:
  ComPtr<ITypeInfo> owner_;
  FUNCDESC* function_ = nullptr;
};

// Type of a parameter as a late-bound argument needs it: aliases resolved, enums as long, every
// interface as an object; ByReference for a pointer to such a value.
struct ParameterType {
  VARTYPE Type = VT_EMPTY;
  bool ByReference = false;
};
ParameterType ResolveType(ITypeInfo& owner, const TYPEDESC& type);

}  // namespace krx::com
