#include "runtime/users/passwords/PasswordKeys.h"

#include <algorithm>
#include <utility>

#include "runtime/core/KorvelError.h"

namespace krx::runtime {
namespace {

constexpr std::size_t kSecretSize = 32;  // bytes

using Bytes = std::span<const std::uint8_t>;

}  // namespace

struct PasswordKeys::Key {
  KeyId Id;
  SecretBytes Secret{kSecretSize};
};

PasswordKeys::PasswordKeys(Files& files, Cryptography& cryptography, KeyProtection* protection,
                           std::filesystem::path file)
    : files_(files), cryptography_(cryptography), protection_(protection), file_(std::move(file)) {}

void PasswordKeys::Fail(const String& reason) const {
  throw KorvelError(kPasswordKeyMissing, file_.u16string() + u": " + reason);
}

// Tells nothing of the key: nobody finds 32 random bytes by their digest.
KeyId PasswordKeys::IdOf(Bytes secret) {
  const Digest digest = cryptography_.Hash(secret);
  return {digest.begin(), digest.begin() + kKeyIdSize};
}

// The file holds the keys and their digest, since not every system notices that what it opens was
// changed.
std::vector<PasswordKeys::Key> PasswordKeys::Read() {
  const std::optional<std::string> sealed = files_.Read(file_);
  if (!sealed) Fail(u"the key that passwords are hashed with is not there");
  const std::optional<SecretBytes> opened =
      protection_ == nullptr ? std::nullopt : protection_->Open(*sealed);
  if (!opened) Fail(u"the key that passwords are hashed with is another machine's, or damaged");
  const Bytes whole = opened->Bytes();
  const std::size_t size = whole.size() - std::min(whole.size(), sizeof(Digest));
  const Bytes secrets = whole.first(size);
  if (size == 0 || size % kSecretSize != 0 ||
      !std::ranges::equal(cryptography_.Hash(secrets), whole.subspan(size)))
    Fail(u"the key that passwords are hashed with is damaged");
  std::vector<Key> keys(size / kSecretSize);
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const Bytes secret = secrets.subspan(i * kSecretSize, kSecretSize);
    std::ranges::copy(secret, keys[i].Secret.Bytes().begin());
    keys[i].Id = IdOf(secret);
  }
  return keys;
}

std::vector<KeyId> PasswordKeys::Ids() {
  std::vector<KeyId> ids;
  for (const Key& key : Read())
    ids.push_back(key.Id);
  return ids;
}

bool PasswordKeys::Has(const KeyId& id) {
  try {
    Require(id);
    return true;
  } catch (const Error&) {
    return false;
  }
}

void PasswordKeys::Require(const KeyId& id) {
  if (id.empty()) return;
  const std::vector<KeyId> ids = Ids();
  if (std::ranges::find(ids, id) == ids.end())
    Fail(u"the key " + TextOf(id) + u" that a password was hashed with is not in it");
}

void PasswordKeys::Mix(const KeyId& id, std::span<std::uint8_t> derived) {
  if (id.empty()) return;
  Require(id);
  for (const Key& key : Read()) {
    if (key.Id != id) continue;
    Digest mixed = cryptography_.Authenticate(key.Secret.Bytes(), derived);
    std::ranges::copy(Bytes(mixed).first(derived.size()), derived.begin());
    Wipe(mixed.data(), mixed.size());
  }
}

void PasswordKeys::Apply(PasswordHash& hash) {
  hash.KeyId = Ids().front();
  Mix(hash.KeyId, hash.Key);
}

KeyId PasswordKeys::Add(const std::vector<KeyId>& used) {
  std::vector<Key> before;
  if (HasFile()) before = Read();
  std::vector<Key> keys(1);
  cryptography_.FillRandom(keys.front().Secret.Bytes());
  keys.front().Id = IdOf(keys.front().Secret.Bytes());
  for (Key& key : before)
    if (std::ranges::find(used, key.Id) != used.end()) keys.push_back(std::move(key));
  Write(keys);
  return keys.front().Id;
}

void PasswordKeys::Write(const std::vector<Key>& keys) {
  if (protection_ == nullptr) Fail(u"this system has nothing to protect a key with");
  const std::size_t size = keys.size() * kSecretSize;
  SecretBytes whole(size + sizeof(Digest));
  auto at = whole.Bytes().begin();
  for (const Key& key : keys)
    at = std::ranges::copy(key.Secret.Bytes(), at).out;
  std::ranges::copy(cryptography_.Hash(whole.Bytes().first(size)), at);
  std::filesystem::path draft = file_;
  draft += ".new";
  files_.WriteFlushed(draft, protection_->Seal(whole.Bytes()));
  files_.Replace(draft, file_);
}

String TextOf(const KeyId& id) {
  String text;
  for (const std::uint8_t byte : id) {
    text += u"0123456789abcdef"[byte >> 4];
    text += u"0123456789abcdef"[byte & 0xF];
  }
  return text;
}

}  // namespace krx::runtime
