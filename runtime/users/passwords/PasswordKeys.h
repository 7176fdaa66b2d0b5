#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "runtime/users/passwords/KeyProtection.h"
#include "runtime/users/passwords/PasswordHash.h"
#include "runtime/users/system/Files.h"

namespace krx::runtime {

// The secret keys that passwords are hashed with where the rules say so, the newest first: random,
// in a file apart from the users, sealed so that no other machine opens it. They are read when they
// are needed and kept nowhere. Whatever needs a key that is not to be had raises Error, which names
// the file: a password is never taken for wrong, and never hashed without, for lack of it.
class PasswordKeys {
 public:
  // Without protection no file can be opened.
  PasswordKeys(Files& files, Cryptography& cryptography, KeyProtection* protection,
               std::filesystem::path file);

  const std::filesystem::path& File() const { return file_; }
  // Whether there is a file, readable or not.
  bool HasFile() { return files_.Stamp(file_).Exists; }

  // Of all keys, the newest first.
  std::vector<KeyId> Ids();
  // Whether this key can be used; yes for none. Never raises Error for what the file holds.
  bool Has(const KeyId& id);
  void Require(const KeyId& id);

  // Makes what was derived from a password what is stored under this key; nothing for none.
  void Mix(const KeyId& id, std::span<std::uint8_t> derived);
  // Gives a hash without key the newest one: the password need not be known.
  void Apply(PasswordHash& hash);

  // Puts a new key in front of those of the file, which are dropped unless they are `used`, and
  // returns its name.
  KeyId Add(const std::vector<KeyId>& used);

 private:
  struct Key;

  std::vector<Key> Read();
  KeyId IdOf(std::span<const std::uint8_t> secret);
  void Write(const std::vector<Key>& keys);
  [[noreturn]] void Fail(const String& reason) const;

  Files& files_;
  Cryptography& cryptography_;
  KeyProtection* const protection_;
  const std::filesystem::path file_;
};

// As it is shown.
String TextOf(const KeyId& id);

}  // namespace krx::runtime
