#pragma once

#include <optional>

#include "runtime/users/directory/Directory.h"

namespace krx::runtime {

// What becomes of a log-on.
enum class DirectoryVerdict {
  Right,
  UnknownUser,
  WrongPassword,
  Deactivated,
  LockedOut,
  Expired,
  MustRenew,
};

// What a server's answer to a user's bind means, by the password policy control, by Active
// Directory's number in the diagnostic text, and by the result code; nothing when it says nothing
// about the user.
std::optional<DirectoryVerdict> JudgeBind(const DirectoryAnswer& answer);

// What an answer to a change of password means, as a ChangePasswordResult.
std::int32_t JudgeChange(const DirectoryAnswer& answer);

// Whether the server says that it cannot answer now, so that another is to be asked.
bool IsUnavailable(const DirectoryAnswer& answer);

// Code and diagnostic, for the audit file; never more than one line's worth.
String Describe(const DirectoryAnswer& answer);
// The same for a verdict.
String Describe(DirectoryVerdict verdict);

// Raises DirectorySilence for a server that is unavailable and Error for every other answer but
// success; `what` was asked.
void RequireSuccess(const DirectoryAnswer& answer, const String& what);

}  // namespace krx::runtime
