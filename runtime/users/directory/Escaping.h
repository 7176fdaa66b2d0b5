#pragma once

#include <string_view>

#include "base/String.h"

namespace krx::runtime {

// A text as a value in a search filter (RFC 4515): whatever it contains, it stays one value.
String EscapedForFilter(StringView text);

// A text as a value in a distinguished name (RFC 4514).
String EscapedForDn(StringView text);

// The template with {user} and {dn} replaced by escaped texts; what is put in is not looked at
// again.
String FilledFilter(StringView filter, StringView user, StringView dn);
// The same for the name that a user binds by: a distinguished name when the template has a "=".
String FilledBindName(StringView name, StringView user, StringView dn);

// Distinguished names that differ in blanks around separators and in the case of letters alone are
// the same; for comparing.
String ComparableDn(StringView dn);

// The value in front of a distinguished name, when it is one of this attribute and no other stands
// beside it; else empty.
String FirstValueOf(StringView dn, std::string_view attribute);

}  // namespace krx::runtime
