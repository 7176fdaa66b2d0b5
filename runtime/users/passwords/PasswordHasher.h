#pragma once

#include "runtime/users/passwords/PasswordKeys.h"
#include "runtime/users/rules/UserRules.h"

namespace krx::runtime {

// Hashes passwords as the rules want it, with a key where they ask for one, and knows them again
// whatever the rules were when they were hashed. All raise Error for a key that is not to be had.
class PasswordHasher {
 public:
  PasswordHasher(Cryptography& cryptography, PasswordKeys& keys, const UserRules& rules)
      : cryptography_(cryptography),
        keys_(keys),
        iterations_(static_cast<std::uint32_t>(rules.HashIterations)),
        is_keyed_(rules.KeyedPasswords) {}

  // Of a password in its normal form.
  PasswordHash Hash(const Password& password);
  bool Matches(const Password& password, const PasswordHash& hash);
  // The same for one as it was typed. Passwords that were stored before there was a normal form
  // were hashed as typed.
  bool MatchesTyped(const Password& password, const PasswordHash& hash);
  // A hash that nobody has a password for, at the price of the others.
  PasswordHash Decoy();

  // The rest of the work where checking a hash took less than one that would be made now.
  void SpendWhatWasSaved(const PasswordHash& hash);

  // Whether a hash is weaker than one that would be made now.
  bool IsOutdated(const PasswordHash& hash);
  // Gives hashes of passwords that nobody knows any more the key that the rules ask for.
  void ApplyKey(std::vector<PasswordHash>& hashes);

 private:
  Cryptography& cryptography_;
  PasswordKeys& keys_;
  std::uint32_t iterations_;
  bool is_keyed_;
};

}  // namespace krx::runtime
