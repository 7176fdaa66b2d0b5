#include "runtime/users/administration/KeyCare.h"

#include <algorithm>

#include "runtime/core/KorvelError.h"

namespace krx::runtime {
namespace {

std::vector<KeyUse> KeysOfPasswords(Database& database) {
  std::vector<KeyUse> uses;
  Query query(database,
              "SELECT key_id, count(*) FROM (SELECT key_id FROM passwords UNION ALL "
              "SELECT key_id FROM offline_users) WHERE key_id <> x'' GROUP BY key_id");
  while (query.Next())
    uses.push_back({query.Bytes(0), query.Number(1), false});
  return uses;
}

// The file is written last: what cannot be recorded is not begun.
KeyId AddKey(UserManagement& management, const String& action) {
  UserStore::Writing writing(management.Store);
  if (!writing.HasStore()) return management.Keys.Add({});
  std::vector<KeyId> used;
  for (const KeyUse& use : KeysOfPasswords(writing.Data()))
    used.push_back(use.Id);
  writing.Record({u"", action, u"", u"for passwords from now on"});
  KeyId added = management.Keys.Add(used);
  writing.Commit();
  return added;
}

// Why the file does not open; nothing when it does.
std::optional<String> FaultOfFile(PasswordKeys& keys) {
  try {
    keys.Ids();
  } catch (const Error& fault) {
    return fault.Description();
  }
  return std::nullopt;
}

}  // namespace

std::vector<KeyUse> ListKeys(UserManagement& management) {
  std::vector<KeyUse> keys;
  if (!FaultOfFile(management.Keys)) {
    for (const KeyId& id : management.Keys.Ids())
      keys.push_back({id});
  }
  UserStore::Reading reading(management.Store);
  if (reading.Data() == nullptr) return keys;
  for (const KeyUse& use : KeysOfPasswords(*reading.Data())) {
    const auto known = std::ranges::find(keys, use.Id, &KeyUse::Id);
    if (known == keys.end()) {
      keys.push_back(use);
    } else {
      known->Passwords = use.Passwords;
    }
  }
  return keys;
}

KeyId CreateKey(UserManagement& management) {
  if (management.Keys.HasFile()) {
    throw KorvelError(kUnableToProvision,
                      management.Keys.File().u16string() + u" is there already");
  }
  return AddKey(management, u"create key of passwords");
}

KeyId RenewKey(UserManagement& management) {
  management.Keys.Ids();
  return AddKey(management, u"renew key of passwords");
}

std::vector<String> CheckKeys(UserManagement& management) {
  std::vector<String> problems;
  const bool is_asked_for = !management.FaultOfRules() && management.Rules().KeyedPasswords;
  const std::optional<String> fault = FaultOfFile(management.Keys);
  if (fault && (is_asked_for || management.Keys.HasFile())) problems.push_back(*fault);
  for (const KeyUse& key : ListKeys(management)) {
    if (key.IsThere) continue;
    problems.push_back(management.Keys.File().u16string() + u": the key " + TextOf(key.Id) +
                       u" is not in it; passwords that were hashed with it: " +
                       ToString(static_cast<std::int32_t>(key.Passwords)));
  }
  return problems;
}

}  // namespace krx::runtime
