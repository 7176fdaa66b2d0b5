#include "runtime/users/directory/Judgement.h"

#include <algorithm>
#include <charconv>

#include "base/Utf8.h"
#include "host/UserManager.h"
#include "runtime/users/directory/PasswordWire.h"

namespace krx::runtime {
namespace {

// Result codes of LDAP (RFC 4511).
enum ResultCode : std::int32_t {
  kSuccess = 0,
  kTimeLimit = 3,
  kConstraint = 19,
  kNoSuchObject = 32,
  kInappropriate = 48,
  kInvalidCredentials = 49,
  kInsufficientAccess = 50,
  kBusy = 51,
  kUnavailable = 52,
  kUnwilling = 53,
};

constexpr std::size_t kLongestDiagnostic = 200;

// Active Directory writes "..., data 52e, v2580": the system's number of the reason.
std::optional<unsigned> ReasonIn(std::string_view diagnostic) {
  constexpr std::string_view mark = ", data ";
  const std::size_t at = diagnostic.find(mark);
  if (at == diagnostic.npos) return std::nullopt;
  const std::string_view digits = diagnostic.substr(at + mark.size());
  unsigned number = 0;
  const auto [end, failure] =
      std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
  if (failure != std::errc()) return std::nullopt;
  return number;
}

std::optional<DirectoryVerdict> VerdictOf(unsigned reason) {
  switch (reason) {
    case 0x525:  // no such user
      return DirectoryVerdict::UnknownUser;
    case 0x52E:  // wrong password
      return DirectoryVerdict::WrongPassword;
    case 0x530:  // not at this hour
    case 0x531:  // not from this station
    case 0x533:  // disabled
    case 0x701:  // the account has expired, not the password
      return DirectoryVerdict::Deactivated;
    case 0x532:  // the password has expired
      return DirectoryVerdict::Expired;
    case 0x773:  // must be changed first
      return DirectoryVerdict::MustRenew;
    case 0x775:  // locked out
      return DirectoryVerdict::LockedOut;
    default:
      return std::nullopt;
  }
}

std::optional<DirectoryVerdict> VerdictOf(const PolicyState& state) {
  if (state.Error == PolicyError::AccountLocked) return DirectoryVerdict::LockedOut;
  if (state.Error == PolicyError::PasswordExpired) return DirectoryVerdict::Expired;
  if (state.Error == PolicyError::ChangeAfterReset) return DirectoryVerdict::MustRenew;
  if (state.GraceLogOns) return DirectoryVerdict::Expired;
  return std::nullopt;
}

PolicyState PolicyOf(const DirectoryAnswer& answer) {
  if (!answer.Policy) return {};
  return ParsePolicyControl(*answer.Policy).value_or(PolicyState());
}

std::int32_t PolicyCodeOf(PolicyError error) {
  switch (error) {
    case PolicyError::TooShort:
    case PolicyError::TooLong:
      return host::ChangePasswordInvalidLength;
    case PolicyError::InsufficientQuality:
    case PolicyError::TooYoung:
    case PolicyError::InHistory:
      return host::ChangePasswordNotAccepted;
    case PolicyError::ModificationNotAllowed:
      return host::ChangePasswordUnableToSave;
    default:
      return host::ChangePasswordCallFailed;
  }
}

}  // namespace

std::optional<DirectoryVerdict> JudgeBind(const DirectoryAnswer& answer) {
  const std::optional<DirectoryVerdict> policy = VerdictOf(PolicyOf(answer));
  switch (answer.Code) {
    case kSuccess:
      return policy.value_or(DirectoryVerdict::Right);
    case kInvalidCredentials:
      if (const auto reason = ReasonIn(answer.Diagnostic)) return VerdictOf(*reason);
      return policy.value_or(DirectoryVerdict::WrongPassword);
    case kNoSuchObject:
      return DirectoryVerdict::UnknownUser;
    case kConstraint:  // some servers answer so to who has guessed too often
      return DirectoryVerdict::LockedOut;
    case kInappropriate:  // an entry without a password
      return DirectoryVerdict::WrongPassword;
    default:
      return std::nullopt;
  }
}

std::int32_t JudgeChange(const DirectoryAnswer& answer) {
  const PolicyState state = PolicyOf(answer);
  if (answer.Code == kSuccess) return host::ChangePasswordSucceeded;
  if (state.Error) return PolicyCodeOf(*state.Error);
  // Active Directory begins with the system's number: 56 is a wrong current password.
  const bool wrong = answer.Diagnostic.starts_with("00000056");
  switch (answer.Code) {
    case kConstraint:
      return wrong ? host::ChangePasswordInvalidPassword : host::ChangePasswordNotAccepted;
    case kInvalidCredentials:
      return host::ChangePasswordInvalidPassword;
    case kNoSuchObject:
      return host::ChangePasswordUnknownUser;
    case kInsufficientAccess:
    case kUnwilling:
      return host::ChangePasswordUnableToSave;
    default:
      return host::ChangePasswordCallFailed;
  }
}

bool IsUnavailable(const DirectoryAnswer& answer) {
  return answer.Code == kBusy || answer.Code == kUnavailable || answer.Code == kTimeLimit;
}

String Describe(const DirectoryAnswer& answer) {
  String text = u"code " + ToString(answer.Code);
  const auto is_inside = [&](std::size_t at) {
    return at < answer.Diagnostic.size() &&
           (static_cast<unsigned char>(answer.Diagnostic[at]) & 0xC0) == 0x80;
  };
  std::size_t size = std::min(kLongestDiagnostic, answer.Diagnostic.size());
  while (size > 0 && is_inside(size))
    --size;  // not within a character
  const std::optional<String> diagnostic = FromUtf8(answer.Diagnostic.substr(0, size));
  if (diagnostic && !diagnostic->empty()) text += u", " + *diagnostic;
  return text;
}

String Describe(DirectoryVerdict verdict) {
  switch (verdict) {
    case DirectoryVerdict::Right:
      return u"password right";
    case DirectoryVerdict::UnknownUser:
      return u"unknown user";
    case DirectoryVerdict::WrongPassword:
      return u"wrong password";
    case DirectoryVerdict::Deactivated:
      return u"user is deactivated";
    case DirectoryVerdict::LockedOut:
      return u"user is locked out";
    case DirectoryVerdict::Expired:
      return u"password has expired";
    case DirectoryVerdict::MustRenew:
      break;
  }
  return u"password must be renewed";
}

void RequireSuccess(const DirectoryAnswer& answer, const String& what) {
  if (answer.Code == kSuccess) return;
  const String reason = what + u": " + Describe(answer);
  if (IsUnavailable(answer)) throw DirectorySilence(reason);
  throw KorvelError(kDirectoryFailure, reason);
}

}  // namespace krx::runtime
