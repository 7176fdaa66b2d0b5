#include "runtime/users/passwords/PasswordHasher.h"

#include "base/Error.h"

namespace krx::runtime {

PasswordHash PasswordHasher::Hash(const Password& password) {
  PasswordHash hash = HashPassword(cryptography_, password, iterations_);
  if (is_keyed_) keys_.Apply(hash);
  return hash;
}

bool PasswordHasher::Matches(const Password& password, const PasswordHash& hash) {
  return runtime::Matches(cryptography_, password, hash, &keys_);
}

bool PasswordHasher::MatchesTyped(const Password& password, const PasswordHash& hash) {
  const Password normal = cryptography_.Normalized(password);
  const bool matches = Matches(normal, hash);
  if (normal == password) return matches;
  // The work must not tell which of the two it was.
  const bool matches_as_typed = Matches(password, hash);
  return matches || matches_as_typed;
}

void PasswordHasher::SpendWhatWasSaved(const PasswordHash& hash) {
  if (hash.Iterations < iterations_)
    runtime::Matches(cryptography_, Password(StringView()),
                     DecoyHash(iterations_ - hash.Iterations));
  if (!is_keyed_ || !hash.KeyId.empty()) return;
  try {
    PasswordHash decoy = DecoyHash(iterations_);
    keys_.Apply(decoy);
  } catch (const Error&) {
    // A key that is not to be had is told to who has a password hashed with it.
  }
}

PasswordHash PasswordHasher::Decoy() {
  PasswordHash hash = DecoyHash(iterations_);
  if (is_keyed_) keys_.Apply(hash);
  return hash;
}

bool PasswordHasher::IsOutdated(const PasswordHash& hash) {
  return hash.Iterations < iterations_ || (is_keyed_ && hash.KeyId != keys_.Ids().front());
}

void PasswordHasher::ApplyKey(std::vector<PasswordHash>& hashes) {
  if (!is_keyed_) return;
  for (PasswordHash& hash : hashes)
    if (hash.KeyId.empty()) keys_.Apply(hash);
}

}  // namespace krx::runtime
