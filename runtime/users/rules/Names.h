#pragma once

#include <cstddef>

#include "base/String.h"

namespace krx::runtime {

inline constexpr std::size_t kLongestName = 64;           // code points
inline constexpr std::size_t kLongestDescription = 1000;  // full name and comment, code points

// Number of code points; a lone surrogate counts as one.
std::size_t CountCodePoints(StringView text);

// True when every surrogate has its partner, so that the text survives a round trip through UTF-8.
bool IsWellFormed(StringView text);

// User names are 1 to 64 code points, well-formed, without a blank at either end, without control
// characters, bidirectional ones included, without anything invisible and without white space other
// than the blank: two names that look alike on a panel should not be two users.
bool IsValidUserName(StringView name);

// Why this is no user name, with the character that is not seen; empty when it is one.
String ReasonAgainstUserName(StringView name);

// Names of classes come from the rules: invisible characters in them are the plant's own affair.
bool IsValidClassName(StringView name);

// As comments, but for what turns the order of text.
bool IsValidFullName(StringView text);

// Comments may contain everything that can be stored, up to 1000 code points.
bool IsValidDescription(StringView text);

// The same text but for the case of Latin, Greek and Cyrillic letters, independent of the
// machine's language.
bool EqualIgnoringCase(StringView left, StringView right);

// The name with small letters instead of capital ones, by the same letters.
String FoldedName(StringView name);

// The order of user lists: by name, upper and lower case alike, code unit by code unit.
bool PrecedesInList(StringView left, StringView right);

}  // namespace krx::runtime
