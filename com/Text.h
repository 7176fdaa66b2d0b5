#pragma once

#include <ole2.h>

#include <string>
#include <string_view>
#include <utility>

#include "base/String.h"

namespace krx::com {

// The platform's wide characters are UTF-16 units like ours; these only change the type.
std::wstring ToWide(StringView text);
String FromWide(std::wstring_view text);

// Content of an automation string, embedded nulls included; null is the empty text.
String FromBstr(BSTR text);

// A class or interface identifier in registry notation, with braces.
std::wstring ToWide(REFGUID id);

// Owns an automation string.
class Bstr {
 public:
  Bstr() = default;
  // Raises std::bad_alloc when there is no memory for the copy.
  explicit Bstr(StringView text);
  Bstr(Bstr&& other) noexcept : text_(other.Detach()) {}
  ~Bstr() { SysFreeString(text_); }
  Bstr& operator=(Bstr other) noexcept {
    std::swap(text_, other.text_);
    return *this;
  }

  BSTR Get() const { return text_; }
  // Where a function stores a string that it hands over.
  BSTR* Put();
  // Hands the string over to the caller.
  BSTR Detach() { return std::exchange(text_, nullptr); }
  String Text() const { return FromBstr(text_); }

 private:
  BSTR text_ = nullptr;
};

}  // namespace krx::com
