#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace krx {

// Texts are UTF-16 throughout: what a client passes and what a file system names is kept unit by
// unit, lone surrogates included.
using String = std::u16string;
using StringView = std::u16string_view;

// Decimal notation of a whole number.
String ToString(std::int32_t value);

// Whole number of a decimal text; anything else (also the empty text) is a type mismatch (error
// 13).
std::int32_t ToLong(StringView text);

// The letters from a to z in another case and all others as they are: drives and languages are
// named so.
char16_t AsciiUpper(char16_t unit);
char16_t AsciiLower(char16_t unit);
String AsciiUpper(StringView text);
String AsciiLower(StringView text);

// UTF-8 for diagnostics; lone surrogates become the replacement character.
std::string ToUtf8(StringView text);

// The text with every occurrence of `what` replaced.
String ReplaceAll(String text, StringView what, StringView by);

}  // namespace krx
