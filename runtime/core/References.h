#pragma once

#include "base/String.h"
#include "runtime/core/Languages.h"

namespace krx::runtime {

// The text that a reference stands for in the current language.
//
// "@key" is looked up among the dialog texts (-105), then among the user texts (-103);
// "@group:key" in that group alone. A reference that leads to no text gives the key as it stands,
// so "@@" gives "@" and a text that shall begin with "@" is written "@@text"; "@" alone gives
// itself, and a group without a key the whole reference without its first "@". The answer is never
// empty. A text that does not begin with "@" raises Error.
String ResolveReference(Languages& languages, StringView reference);

}  // namespace krx::runtime
