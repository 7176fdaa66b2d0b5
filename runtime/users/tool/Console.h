#pragma once

#include <string_view>

#include "base/Password.h"
#include "base/String.h"

namespace krx::runtime {

// Writes to the standard output in UTF-8, whatever it is.
void Print(StringView text);
void PrintBytes(std::string_view bytes);
// The same to the standard error.
void PrintError(StringView text);

// Asks for a password, unseen on a console.
Password TypePassword(StringView prompt);

// Lets the console take UTF-8 for as long as the object lives.
class Utf8Console {
 public:
  Utf8Console();
  ~Utf8Console();
  Utf8Console(const Utf8Console&) = delete;
  Utf8Console& operator=(const Utf8Console&) = delete;

 private:
  unsigned page_;
};

}  // namespace krx::runtime
