#pragma once

#include <optional>
#include <string_view>

#include "base/Password.h"
#include "base/String.h"
#include "runtime/users/passwords/SecretBytes.h"

namespace krx::runtime {

inline constexpr const char* kPolicyControl = "1.3.6.1.4.1.42.2.27.8.5.1";
inline constexpr const char* kModifyPassword = "1.3.6.1.4.1.4203.1.11.1";

// What the password policy control of an answer says.
enum class PolicyError {
  PasswordExpired = 0,
  AccountLocked = 1,
  ChangeAfterReset = 2,
  ModificationNotAllowed = 3,
  MustSupplyOldPassword = 4,
  InsufficientQuality = 5,
  TooShort = 6,
  TooYoung = 7,
  InHistory = 8,
  TooLong = 9,
};

struct PolicyState {
  std::optional<PolicyError> Error;
  // The password has expired, and so many log-ons are left to change it.
  std::optional<int> GraceLogOns;
};

// The state in the control's value; nothing when the bytes are no such value.
std::optional<PolicyState> ParsePolicyControl(std::string_view value);

// UTF-8 of a password.
SecretBytes Utf8Of(const Password& password);

// The request to change a password from one to another (RFC 3062).
SecretBytes ModifyPasswordRequest(StringView user_dn, const Password& before,
                                  const Password& after);

// A password as Active Directory's attribute unicodePwd has it: UTF-16 in quotation marks.
SecretBytes QuotedPassword(const Password& password);

}  // namespace krx::runtime
