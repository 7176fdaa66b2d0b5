#include "com/Text.h"

#include <ole2.h>

#include <array>
#include <new>

namespace krx::com {

std::wstring ToWide(StringView text) {
  return std::wstring(text.begin(), text.end());
}

String FromWide(std::wstring_view text) {
  return String(text.begin(), text.end());
}

String FromBstr(BSTR text) {
  return FromWide(std::wstring_view(text, SysStringLen(text)));
}

std::wstring ToWide(REFGUID id) {
  std::array<wchar_t, 39> text{};
  StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
  return text.data();
}

Bstr::Bstr(StringView text) {
  const std::wstring wide = ToWide(text);
  text_ = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  if (!text_) throw std::bad_alloc();
}

BSTR* Bstr::Put() {
  SysFreeString(Detach());
  return &text_;
}

}  // namespace krx::com
