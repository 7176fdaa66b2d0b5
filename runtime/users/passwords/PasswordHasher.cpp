#include "runtime/users/passwords/PasswordHasher.h"

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
  return Matches(normal, hash) || (!(normal == password) && Matches(password, hash));
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
