#include "runtime/users/administration/Provisioning.h"

#include <algorithm>
#include <utility>

#include "runtime/core/KorvelError.h"
#include "runtime/users/passwords/PasswordRules.h"
#include "runtime/users/passwords/SecretBytes.h"
#include "runtime/users/rules/Names.h"
#include "runtime/users/rules/RulesFile.h"

namespace krx::runtime {
namespace {

constexpr StringView kAlphabet = u"abcdefghjkmnpqrstuvwxyz23456789";
constexpr std::size_t kGeneratedLength = 19;  // four groups of four and their hyphens
constexpr std::size_t kGroup = 5;             // a group and its hyphen

constexpr std::string_view kRefusedTemplate =
    "# Passwords that are refused besides the built-in ones; one per line, case makes no "
    "difference.\n";

[[noreturn]] void Refuse(const String& reason) {
  throw KorvelError(kUnableToProvision, reason);
}

String ClassOfFirstAdministrator(const UserRules& rules) {
  const UserClass* lowest = nullptr;
  for (const UserClass& one : rules.Classes) {
    const bool administers = one.Level >= rules.AdministratorLevel;
    if (administers && (lowest == nullptr || one.Level < lowest->Level)) lowest = &one;
  }
  if (lowest == nullptr) Refuse(u"no class reaches the level of administrators");
  return lowest->Name;
}

void Judge(const UserRules& rules, const RefusedPasswords& refused, const String& name,
           const Password& password) {
  if (!IsValidUserName(name)) Refuse(ReasonAgainstUserName(name));
  const PasswordVerdict verdict = JudgePassword(rules, refused, name, password);
  if (verdict == PasswordVerdict::InvalidLength) {
    Refuse(u"the password needs " + ToString(rules.MinimumLength) + u" to " +
           ToString(rules.MaximumLength) + u" characters");
  }
  if (verdict == PasswordVerdict::NotAccepted) Refuse(u"the password is too easily guessed");
}

// Whole or not at all: half a file would stand in the way of the next try.
void WriteIfMissing(Files& files, const std::filesystem::path& file, std::string_view bytes) {
  if (files.Read(file)) return;
  std::filesystem::path draft = file;
  draft += ".new";
  files.WriteFlushed(draft, bytes);
  files.Replace(draft, file);
}

// One of the letters, each with the same chance.
char16_t RandomLetter(Cryptography& cryptography) {
  const std::size_t fair = 256 - 256 % kAlphabet.size();
  for (;;) {
    SecretBytes byte(1);
    cryptography.FillRandom(byte.Bytes());
    if (byte.Bytes()[0] < fair) return kAlphabet[byte.Bytes()[0] % kAlphabet.size()];
  }
}

}  // namespace

void ProvisionFirstAdministrator(UserManagement& management, const String& name,
                                 const Password& typed) {
  const UserRules rules = management.Rules();
  const Password password = management.System.Crypto.Normalized(typed);
  Judge(rules, management.Refused(), name, password);
  StoredUser user;
  user.Name = name;
  user.ClassName = ClassOfFirstAdministrator(rules);
  user.PasswordChangedOn = management.System.Time.Now();
  user.Passwords.push_back(management.Hasher(rules).Hash(password));

  Files& files = management.System.FileSystem;
  const std::filesystem::path& folder = management.Store.Folder();
  UserStore::Writing writing(management.Store, UserStore::Writing::WithoutStore::Create);
  if (writing.Users().HasAny()) Refuse(u"there are users already");
  WriteIfMissing(files, folder / "users.conf", RulesFileTemplate());
  WriteIfMissing(files, folder / "refused-passwords.txt", kRefusedTemplate);
  KeepRules(writing.Data(), files.Read(folder / "users.conf").value_or(std::string()));
  writing.Users().Add(user);
  writing.Record({u"", u"provision", name, u"first administrator created"});
  writing.Commit();
}

Password GeneratePassword(Cryptography& cryptography, const UserRules& rules) {
  const auto least = static_cast<std::size_t>(rules.MinimumLength);
  const auto most = static_cast<std::size_t>(rules.MaximumLength);
  const std::size_t length = std::clamp(kGeneratedLength, least, most);
  Password generated;
  for (std::size_t i = 0; i < length; ++i) {
    const char16_t next = (i + 1) % kGroup == 0 ? u'-' : RandomLetter(cryptography);
    generated = generated.With(i, 0, StringView(&next, 1));
  }
  return generated;
}

}  // namespace krx::runtime
