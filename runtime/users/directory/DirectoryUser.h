#pragma once

#include <optional>
#include <string>
#include <vector>

#include "runtime/users/directory/Directory.h"

namespace krx::runtime {

// A user as the directory describes him.
struct DirectoryUser {
  String Name;  // as the directory writes it, whatever the case in which he was asked for
  String FullName;
  String Comment;
  String ClassName;
  String Dn;
  std::int32_t State = 0;              // UserState
  std::int32_t PasswordChangedOn = 0;  // day of the date scale; 0: the directory does not say

  bool operator==(const DirectoryUser& other) const = default;
};

// The attributes from which a user is made.
std::vector<std::string> UserAttributes(const DirectoryRules& rules);

// The user of an entry, still without a class; nothing when his name can be none here.
std::optional<DirectoryUser> UserOf(const DirectoryRules& rules, const DirectoryEntry& entry);

// The name of an attribute in small letters, as entries have it.
std::string AttributeKey(std::string_view name);

}  // namespace krx::runtime
