#pragma once

#include "base/String.h"

namespace krx::win32 {

// The path as the system takes it without changing anything: of any length, names with dots or
// blanks at their end, names that devices have. Slashes, "." and ".." are resolved by the rules of
// the system before; a bare drive and a relative path behind a drive begin at the drive's root, and
// any other relative path at `current`. Empty for what cannot name a folder or file: a text with a
// zero unit in it, a server without a share.
String SystemPath(StringView path, StringView current);

// The root of a system path: of "\\?\C:\Data" it is "\\?\C:\".
String RootOf(const String& system_path);

}  // namespace krx::win32
