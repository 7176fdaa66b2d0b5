#pragma once

#include <chrono>

#include "runtime/core/Languages.h"
#include "runtime/users/session/LogOnHistory.h"

namespace krx::runtime {

// That the user will be logged off, in the operator's language.
String IdleText(Languages& languages, const String& user, std::chrono::seconds left);

// When the user logged on before, `last` being that time as it is written, and how often it failed
// since then.
String GreetingText(Languages& languages, const LogOnHistory& history, const String& last);

}  // namespace krx::runtime
