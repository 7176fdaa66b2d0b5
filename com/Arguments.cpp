#include "com/Arguments.h"

#include <cstring>

#include "com/Errors.h"

namespace krx::com {

namespace {

constexpr std::size_t kValueSize = sizeof(VARIANT) - offsetof(VARIANT, bVal);

bool IsMissing(const VARIANT& value) {
  return value.vt == VT_ERROR && value.scode == DISP_E_PARAMNOTFOUND;
}

bool Same(const VARIANT& a, const VARIANT& b) {
  return a.vt == b.vt && std::memcmp(&a.bVal, &b.bVal, kValueSize) == 0;
}

std::size_t SizeOf(VARTYPE type) {
  switch (type) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
      return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
      return 8;
    default:
      return sizeof(void*);
  }
}

// Puts a value into the variable that `target` refers to, in that variable's own type.
HRESULT Store(const VARIANTARG& target, const Variant& value, LCID locale) {
  const auto type = static_cast<VARTYPE>(target.vt & ~VT_BYREF);
  if (type == VT_VARIANT) return VariantCopy(target.pvarVal, const_cast<VARIANT*>(&value.Get()));
  Variant converted = Variant::Copy(value.Get());
  if (const HRESULT result = converted.Convert(type, locale); FAILED(result)) return result;
  Variant old = Variant::Zero(type);
  std::memcpy(&old.Get().bVal, target.byref, SizeOf(type));
  std::memcpy(target.byref, &converted.Get().bVal, SizeOf(type));
  converted.Get().vt = VT_EMPTY;
  return S_OK;
}

}  // namespace

Arguments::Arguments(ITypeInfo& owner, const FUNCDESC& function, LCID locale)
    : put_(function.invkind == INVOKE_PROPERTYPUT || function.invkind == INVOKE_PROPERTYPUTREF),
      locale_(locale) {
  for (int i = 0; i < function.cParams; ++i) {
    const ELEMDESC& element = function.lprgelemdescParam[i];
    if (element.paramdesc.wParamFlags & (PARAMFLAG_FRETVAL | PARAMFLAG_FLCID)) continue;
    Slot slot;
    slot.Type = ResolveType(owner, element.tdesc);
    slot.Parameter = &element.paramdesc;
    slots_.push_back(std::move(slot));
  }
}

Arguments::~Arguments() {
  for (Slot& slot : slots_) {
    const VARIANT& value = slot.Value.Get();
    if (value.vt == VT_BSTR && value.bstrVal)
      SecureZeroMemory(value.bstrVal, SysStringByteLen(value.bstrVal));
  }
}

HRESULT Arguments::Bind(const DISPPARAMS& given, UINT* wrong) {
  if (const HRESULT result = Assign(given, wrong); FAILED(result)) return result;
  for (Slot& slot : slots_) {
    const HRESULT result = Fill(slot);
    if (FAILED(result)) {
      if (wrong) *wrong = slot.GivenIndex;
      return result;
    }
    slot.Before = slot.Value.Get();
  }
  return S_OK;
}

// Named arguments stand first, then the positional ones from the last to the first.
HRESULT Arguments::Assign(const DISPPARAMS& given, UINT* wrong) {
  if (given.cArgs > slots_.size() || given.cNamedArgs > given.cArgs) return DISP_E_BADPARAMCOUNT;
  for (UINT i = 0; i < given.cArgs; ++i) {
    std::size_t place = given.cArgs - 1 - i;
    if (i < given.cNamedArgs) {
      const DISPID name = given.rgdispidNamedArgs[i];
      place = name == DISPID_PROPERTYPUT ? slots_.size() - 1 : static_cast<std::size_t>(name);
    }
    if (place >= slots_.size() || slots_[place].Given) {
      if (wrong) *wrong = i;
      return DISP_E_PARAMNOTFOUND;
    }
    slots_[place].Given = &given.rgvarg[i];
    slots_[place].GivenIndex = i;
  }
  return S_OK;
}

HRESULT Arguments::Fill(Slot& slot) {
  if (!slot.Given) return FillMissing(slot);
  Variant value = Variant::Copy(*slot.Given);
  if (IsMissing(value.Get()) && slot.Type.Type != VT_VARIANT) return FillMissing(slot);
  slot.OnlyOut = slot.Type.ByReference && (slot.Parameter->wParamFlags & PARAMFLAG_FOUT) &&
                 !(slot.Parameter->wParamFlags & PARAMFLAG_FIN);
  if (slot.OnlyOut) {
    slot.Value = slot.Type.Type == VT_VARIANT ? Variant() : Variant::Zero(slot.Type.Type);
    return S_OK;
  }
  const HRESULT result = value.Convert(slot.Type.Type, locale_);
  slot.Value = std::move(value);
  return result;
}

// An optional argument without a default arrives as the empty value of its type.
HRESULT Arguments::FillMissing(Slot& slot) {
  const USHORT flags = slot.Parameter->wParamFlags;
  if (flags & PARAMFLAG_FHASDEFAULT) {
    slot.Value = Variant::Copy(slot.Parameter->pparamdescex->varDefaultValue);
    return slot.Value.Convert(slot.Type.Type, locale_);
  }
  if (!(flags & PARAMFLAG_FOPT)) return slot.Given ? DISP_E_PARAMNOTFOUND : DISP_E_BADPARAMCOUNT;
  const bool any = slot.Type.Type == VT_VARIANT;
  slot.Value = any ? Variant::LeftOut() : Variant::Zero(slot.Type.Type);
  return S_OK;
}

DISPPARAMS& Arguments::ForInvoke() {
  passed_.clear();
  for (auto slot = slots_.rbegin(); slot != slots_.rend(); ++slot) {
    VARIANTARG argument = slot->Value.Get();
    if (slot->Type.ByReference) {
      VARIANT& value = slot->Value.Get();
      argument.vt = static_cast<VARTYPE>(VT_BYREF | slot->Type.Type);
      argument.byref = slot->Type.Type == VT_VARIANT ? static_cast<void*>(&value) : &value.bVal;
    }
    passed_.push_back(argument);
  }
  parameters_ = {passed_.data(), put_ ? &put_id_ : nullptr, static_cast<UINT>(passed_.size()),
                 put_ ? 1u : 0u};
  return parameters_;
}

HRESULT Arguments::WriteBack() {
  for (Slot& slot : slots_) {
    const bool wanted = slot.Type.ByReference && slot.Given && (slot.Given->vt & VT_BYREF);
    // An output counts even when it is zero: the client's variable may hold something else.
    if (!wanted || (!slot.OnlyOut && Same(slot.Before, slot.Value.Get()))) continue;
    const HRESULT result = Store(*slot.Given, slot.Value, locale_);
    if (FAILED(result)) return result;
  }
  return S_OK;
}

}  // namespace krx::com
