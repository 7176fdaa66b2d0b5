#pragma once

#include <KRXDialogs.h>

#include <string>

#include "com/ComPtr.h"

namespace krx::client {

// Initialises automation for the thread as long as it lives; declare it before any object.
class Automation {
 public:
  Automation() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~Automation() { CoUninitialize(); }
  Automation(const Automation&) = delete;
  Automation& operator=(const Automation&) = delete;
};

// An early-bound dialog object, as a C++ client uses it. Failures are returned as status.
class Dialogs {
 public:
  // The object is empty when the class cannot be created.
  Dialogs();

  IKRXDialog* operator->() const { return dialogs_.Get(); }
  explicit operator bool() const { return static_cast<bool>(dialogs_); }

  HRESULT MsgBox(const std::wstring& text, long style, const std::wstring& title, long& result);

 private:
  com::ComPtr<IKRXDialog> dialogs_;
};

// Description of the thread's current error object; empty when there is none.
std::wstring ErrorText();

// A BSTR that frees itself.
class BasicString {
 public:
  explicit BasicString(const std::wstring& text) : text_(SysAllocString(text.c_str())) {}
  ~BasicString() { SysFreeString(text_); }
  BasicString(const BasicString&) = delete;
  BasicString& operator=(const BasicString&) = delete;
  operator BSTR() const { return text_; }

 private:
  BSTR text_;
};

}  // namespace krx::client
