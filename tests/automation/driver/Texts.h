#pragma once

#include <string>

namespace krx::drive {

// The text of a key in the tables that the runtime is built from, as a control shows it: without
// the marks of access keys. Throws for a key that has none.
std::wstring Text(const std::string& key, const std::string& language = "en");

}  // namespace krx::drive
