#pragma once

#include <ole2.h>

#include <utility>

namespace krx::com {

// Owns the content of an automation variant.
class Variant {
 public:
  Variant() { VariantInit(&value_); }
  Variant(Variant&& other) noexcept : Variant() { std::swap(value_, other.value_); }
  ~Variant() { VariantClear(&value_); }
  Variant& operator=(Variant other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }

  // The empty value of a type: 0, false, null text, no object.
  static Variant Zero(VARTYPE type);
  // What stands for an optional argument that is left out.
  static Variant LeftOut();
  // A value of its own of what `source` holds or refers to. Raises Error when it cannot be copied.
  static Variant Copy(const VARIANT& source);

  // Converts in place to `type` by the rules of `locale`; objects only become objects. Returns the
  // platform's status (DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW) and then leaves the value as it was.
  HRESULT Convert(VARTYPE type, LCID locale);

  VARTYPE Type() const { return value_.vt; }
  const VARIANT& Get() const { return value_; }
  VARIANT& Get() { return value_; }
  // Where a function stores a value that it hands over.
  VARIANT* Put() {
    VariantClear(&value_);
    return &value_;
  }
  // Hands the value over to the caller.
  VARIANT Detach() { return std::exchange(value_, VARIANT{}); }

 private:
  HRESULT ConvertObject(VARTYPE type);

  VARIANT value_;
};

inline VARIANT_BOOL ToVariantBool(bool value) {
  return value ? VARIANT_TRUE : VARIANT_FALSE;
}

}  // namespace krx::com
