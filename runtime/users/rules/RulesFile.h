#pragma once

#include <string_view>

#include "runtime/users/rules/UserRules.h"

namespace krx::runtime {

// The rules of a configuration file: "name = value" lines, lines of classes ("class = name | level
// | display text", which take the place of the built-in ones) and comments from "#" at the start of
// a line. What the file does not name keeps its default. Anything unknown, given twice, out of
// range or contradictory raises Error, which names `file`, the line and the reason.
UserRules ParseRules(const String& file, std::string_view bytes);

// What of the rules has become another, with the values before and now.
String DescribeChange(const UserRules& before, const UserRules& after);

// A configuration file with every setting at its default, explained.
std::string_view RulesFileTemplate();

}  // namespace krx::runtime
