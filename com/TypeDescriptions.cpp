#include "com/TypeDescriptions.h"

#include <utility>

#include "com/Errors.h"

namespace krx::com {

namespace {

VARTYPE ResolveUserType(ITypeInfo& owner, HREFTYPE reference) {
  ComPtr<ITypeInfo> type;
  Check(owner.GetRefTypeInfo(reference, type.Put()));
  TYPEATTR* attributes = nullptr;
  Check(type->GetTypeAttr(&attributes));
  const TYPEKIND kind = attributes->typekind;
  const TYPEDESC alias = attributes->tdescAlias;
  type->ReleaseTypeAttr(attributes);
  switch (kind) {
    case TKIND_ENUM:
      return VT_I4;
    case TKIND_ALIAS:
      return ResolveType(*type, alias).Type;
    case TKIND_INTERFACE:
      return VT_UNKNOWN;
    default:
      return VT_DISPATCH;
  }
}

bool IsInterface(VARTYPE type) {
  return type == VT_DISPATCH || type == VT_UNKNOWN;
}

}  // namespace

// Walks the functions: the platforms do not agree on whether a search by identifier counts the
// inherited ones.
FunctionDescription::FunctionDescription(ITypeInfo& owner, DISPID member, WORD flags)
    : owner_(&owner) {
  for (UINT index = 0; SUCCEEDED(owner_->GetFuncDesc(index, &function_)); ++index) {
    if (function_->memid == member && (function_->invkind & flags)) return;
    owner_->ReleaseFuncDesc(std::exchange(function_, nullptr));
  }
  function_ = nullptr;
}

FunctionDescription::~FunctionDescription() {
  if (function_) owner_->ReleaseFuncDesc(function_);
}

ParameterType ResolveType(ITypeInfo& owner, const TYPEDESC& type) {
  if (type.vt == VT_USERDEFINED) return {ResolveUserType(owner, type.hreftype), false};
  if (type.vt != VT_PTR) return {type.vt, false};
  const TYPEDESC& target = *type.lptdesc;
  const ParameterType pointed = ResolveType(owner, target);
  // A pointer to an interface is the object itself.
  const bool object = target.vt == VT_USERDEFINED && IsInterface(pointed.Type);
  return {pointed.Type, !object};
}

}  // namespace krx::com
