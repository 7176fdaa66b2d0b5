#pragma once

#include <cstdint>
#include <string_view>

#include "base/String.h"

namespace krx::runtime {

// The text without blanks and carriage returns at both ends.
std::string_view Trimmed(std::string_view text);

// Hands out the lines of a text file that a person wrote and refuses with the place: a byte order
// mark, both kinds of line ends and a last line without an end are all accepted.
class LineReader {
 public:
  static constexpr std::string_view kBlanks = " \t\r";

  LineReader(const String& file, std::string_view bytes, std::uint32_t status);

  // Goes to the next line; false after the last one.
  bool Next();
  // The current line, trimmed.
  std::string_view Line() const { return line_; }
  std::int32_t Number() const { return number_; }
  // UTF-8 of a part of the line as text; refuses what is none.
  String Text(std::string_view bytes) const;
  // Raises Error with file, line and reason.
  [[noreturn]] void Refuse(const String& reason) const;

 private:
  String file_;
  std::string_view rest_;
  std::string_view line_;
  std::int32_t number_ = 0;
  std::uint32_t status_;
};

}  // namespace krx::runtime
