#include "com/TypeDescriptions.h"

#include <array>

#include "com/Failure.h"

namespace krx::com {

namespace {

constexpr std::array kKinds{INVOKE_PROPERTYPUT, INVOKE_PROPERTYPUTREF, INVOKE_FUNC,
                            INVOKE_PROPERTYGET};

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

FunctionDescription::FunctionDescription(ITypeInfo& owner, DISPID member, WORD flags)
    : owner_(&owner) {
  const auto search = owner_.As<ITypeInfo2>();
  if (!search) return;
  for (const INVOKEKIND kind : kKinds) {
    UINT index = 0;
    if (!(flags & kind) || FAILED(search->GetFuncIndexOfMemId(member, kind, &index))) continue;
    if (SUCCEEDED(owner_->GetFuncDesc(index, &function_))) return;
  }
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
