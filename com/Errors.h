#pragma once

#include <ole2.h>

#include <utility>

#include "base/Error.h"

namespace krx::com {

// An error that came out of an automation object, with the help reference that it named.
class ObjectError : public Error {
 public:
  ObjectError(HRESULT status, String description, String source, String help_file = {},
              DWORD help_context = 0)
      : Error(static_cast<std::uint32_t>(status), std::move(description), std::move(source)),
        help_file_(std::move(help_file)),
        help_context_(help_context) {}

  const String& HelpFile() const { return help_file_; }
  DWORD HelpContext() const { return help_context_; }

 private:
  String help_file_;
  DWORD help_context_;
};

// The system's text of a status; its number in hexadecimal when the system has none.
String SystemMessage(HRESULT status);

// Raises Error with the system's text of a failure.
[[noreturn]] void Refuse(HRESULT status);

// Raises Error with the system's text when a call of the platform failed.
void Check(HRESULT status);

// Raises the failure of a call into `object` with the object's own description where it gives one
// for `iid`, else with the system's text.
void CheckCall(HRESULT status, IUnknown* object, REFIID iid);

// The failure that a late-bound call described in `info`, deferred texts included; releases the
// texts of `info`.
ObjectError FromExcepInfo(EXCEPINFO& info);

// To be called in a catch block: turns the exception into the status for the client and leaves its
// texts as the thread's error object. What is no Error is an internal error (0x800A0033), lack of
// memory E_OUTOFMEMORY.
HRESULT ReportException(REFIID iid) noexcept;

// Runs a method's body and ends every exception here: none crosses the component's boundary.
template <class Body>
HRESULT Guard(REFIID iid, Body&& body) noexcept {
  try {
    return body();
  } catch (...) {
    return ReportException(iid);
  }
}

}  // namespace krx::com
