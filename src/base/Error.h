#pragma once

#include <cstdint>
#include <exception>
#include <string>

#include "base/String.h"

namespace krx {

// A failure on its way to the caller of a dialog method: the automation status that the caller
// receives, and the source and description that late-bound clients read from their error object.
class Error : public std::exception {
 public:
  Error(std::uint32_t status, String description, String source = u"KRXDialogs");

  std::uint32_t Status() const { return status_; }
  const String& Description() const { return description_; }
  const String& Source() const { return source_; }
  const char* what() const noexcept override { return what_.c_str(); }

 private:
  std::uint32_t status_;
  String description_;
  String source_;
  std::string what_;
};

// Status of lack of memory, where it is told as a runtime error.
inline constexpr std::uint32_t kOutOfMemory = 0x800A0000u + 7;

// A numbered runtime error; it reaches the client as 0x800A0000 + number.
Error RuntimeError(std::int32_t number, String description);

// The exception that is being handled, to be called in a catch block. What is no Error is lack of
// memory (runtime error 7) or an internal error (51).
Error ErrorInFlight();

Error TypeMismatch();  // runtime error 13: a text that should be a number is none
Error ObjectNotSet();  // runtime error 91: an object that is needed has been cleared

}  // namespace krx
