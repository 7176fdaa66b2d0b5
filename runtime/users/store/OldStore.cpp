#include "runtime/users/store/OldStore.h"

#include <exception>
#include <string>
#include <utility>

#include "runtime/core/FieldText.h"
#include "runtime/core/KorvelError.h"

namespace krx::runtime {
namespace {

using Fields = std::vector<std::string_view>;

constexpr std::size_t kUserFields = 13;

std::filesystem::path FileIn(const std::filesystem::path& folder) {
  return folder / "users.dat";
}

struct Damage {
  StringView Reason;
};

// The value that was read, or the end of reading.
template <class T>
T Needed(std::optional<T> value) {
  if (!value) throw Damage{u"a field is damaged"};
  return std::move(*value);
}

PasswordHash HashOf(std::string_view text) {
  const Fields parts = Split(text, ':');
  if (parts.size() != 3) throw Damage{u"this is no password hash"};
  return {Needed(WholeNumber<std::uint32_t>(parts[0])), Needed(FromHex(parts[1])),
          Needed(FromHex(parts[2]))};
}

StoredUser UserOf(const Fields& fields) {
  if (fields.front() != "user" || fields.size() != kUserFields)
    throw Damage{u"this is no user line"};
  StoredUser user;
  user.Name = Needed(UnescapedField(fields[2]));
  user.FullName = Needed(UnescapedField(fields[3]));
  user.Comment = Needed(UnescapedField(fields[4]));
  user.ClassName = Needed(UnescapedField(fields[5]));
  user.Deactivated = fields[6] == "1";
  user.MustRenew = fields[7] == "1";
  user.RemainingLogOns = Needed(WholeNumber<std::int32_t>(fields[8]));
  user.PasswordChangedOn = Needed(WholeNumber<std::int64_t>(fields[9]));
  user.Failures = user.FailuresInARow = Needed(WholeNumber<std::int32_t>(fields[10]));
  user.LastFailure = Needed(WholeNumber<std::int64_t>(fields[11]));
  for (const std::string_view hash : Split(fields[12], ' '))
    user.Passwords.push_back(HashOf(hash));
  return user;
}

// The lines before the end line, which has to be the last one and right about their number.
std::vector<StoredUser> UsersOf(const Fields& lines, std::int32_t& line) {
  std::vector<StoredUser> users;
  for (line = 1; line <= static_cast<std::int32_t>(lines.size()); ++line) {
    const Fields fields = Split(lines[static_cast<std::size_t>(line - 1)], '\t');
    const bool is_last = static_cast<std::size_t>(line) == lines.size() - 1 && lines.back().empty();
    if (line == 1) {
      if (fields.size() != 3 || fields[0] != "KorvelUsers" || fields[1] != "1")
        throw Damage{u"this is no user store of the first version"};
    } else if (fields.front() == "end" && is_last) {
      if (fields.size() != 3 || fields[1] != std::to_string(users.size()))
        throw Damage{u"users are missing"};
      return users;
    } else {
      users.push_back(UserOf(fields));
    }
  }
  throw Damage{u"the file ends too early"};
}

}  // namespace

bool HasOldStore(Files& files, const std::filesystem::path& folder) {
  return files.Read(FileIn(folder)).has_value();
}

std::vector<StoredUser> ReadOldStore(Files& files, const std::filesystem::path& folder) {
  const std::filesystem::path file = FileIn(folder);
  const std::string bytes = Needed(files.Read(file));
  std::int32_t line = 0;
  try {
    return UsersOf(Split(bytes, '\n'), line);
  } catch (const Damage& damage) {
    throw KorvelError(kUnreadableUsers, file.u16string() + u", line " + ToString(line) + u": " +
                                            String(damage.Reason));
  }
}

void PutOldStoreAside(Files& files, const std::filesystem::path& folder) noexcept {
  try {
    files.Replace(FileIn(folder), folder / "users.dat.imported");
  } catch (const std::exception&) {
  }
}

}  // namespace krx::runtime
