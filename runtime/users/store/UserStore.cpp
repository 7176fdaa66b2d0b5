#include "runtime/users/store/UserStore.h"

#include <algorithm>
#include <utility>

#include "runtime/users/rules/Names.h"

namespace krx::runtime {

const StoredUser* UserStore::Find(StringView name) const {
  const auto found = std::find_if(users_.begin(), users_.end(),
                                  [name](const StoredUser& user) { return user.Name == name; });
  return found == users_.end() ? nullptr : &*found;
}

const StoredUser* UserStore::FindId(std::uint32_t id) const {
  const auto found = std::find_if(users_.begin(), users_.end(),
                                  [id](const StoredUser& user) { return user.Id == id; });
  return found == users_.end() ? nullptr : &*found;
}

StoredUser* UserStore::FindId(std::uint32_t id) {
  return const_cast<StoredUser*>(std::as_const(*this).FindId(id));
}

bool UserStore::IsTaken(StringView name) const {
  return std::any_of(users_.begin(), users_.end(),
                     [name](const StoredUser& user) { return EqualIgnoringCase(user.Name, name); });
}

void UserStore::Add(StoredUser user) {
  user.Id = next_id_++;
  users_.push_back(std::move(user));
}

void UserStore::Remove(std::uint32_t id) {
  std::erase_if(users_, [id](const StoredUser& user) { return user.Id == id; });
}

}  // namespace krx::runtime
