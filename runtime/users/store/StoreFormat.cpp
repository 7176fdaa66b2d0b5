#include "runtime/users/store/StoreFormat.h"

#include <cstdint>
#include <optional>
#include <set>
#include <utility>

#include "runtime/core/FieldText.h"
#include "runtime/core/KorvelError.h"
#include "runtime/users/rules/Names.h"
#include "runtime/users/store/Checksum.h"

namespace krx::runtime {
namespace {

constexpr std::string_view kHead = "KorvelUsers";
constexpr std::string_view kVersion = "1";
constexpr std::string_view kUser = "user";
constexpr std::string_view kEnd = "end";
constexpr std::size_t kUserFields = 13;

std::string Hex(std::uint64_t value) {
  std::uint8_t bytes[8];
  for (int i = 0; i < 8; ++i)
    bytes[i] = static_cast<std::uint8_t>(value >> (56 - 8 * i));
  return ToHex(bytes);
}

std::string Line(const std::vector<std::string>& fields) {
  std::string line;
  for (const std::string& field : fields)
    line += (line.empty() ? "" : "\t") + field;
  return line + "\n";
}

std::string HashesOf(const StoredUser& user) {
  std::string hashes;
  for (const PasswordHash& hash : user.Passwords) {
    if (!hashes.empty()) hashes += ' ';
    hashes += std::to_string(hash.Iterations) + ":" + ToHex(hash.Salt) + ":" + ToHex(hash.Key);
  }
  return hashes;
}

std::string LineOf(const StoredUser& user) {
  return Line({std::string(kUser), std::to_string(user.Id), EscapedField(user.Name),
               EscapedField(user.FullName), EscapedField(user.Comment),
               EscapedField(user.ClassName), user.Deactivated ? "1" : "0",
               user.MustRenew ? "1" : "0", std::to_string(user.RemainingLogOns),
               std::to_string(user.PasswordChangedOn), std::to_string(user.Failures),
               std::to_string(user.LastFailure), HashesOf(user)});
}

std::string EndLine(std::size_t users, std::string_view before) {
  return Line({std::string(kEnd), std::to_string(users), Hex(Checksum(before))});
}

// Reads the stored form line by line; every refusal names the place.
class Reader {
 public:
  Reader(const String& file, std::string_view bytes) : file_(file), bytes_(bytes) {}

  UserStore Read() {
    ReadHead();
    while (!ReadLine()) {
    }
    if (!rest().empty()) Refuse(u"text follows the end");
    // What reads well may still be written otherwise than by Serialize (leading zeros and the
    // like); nothing of that kind was written by this program.
    if (Serialize(store_) != bytes_) Refuse(u"the file was not written by this program");
    return std::move(store_);
  }

 private:
  std::string_view rest() const { return bytes_.substr(at_); }

  std::vector<std::string_view> NextLine() {
    ++line_;
    line_start_ = at_;
    const std::size_t end = rest().find('\n');
    if (end == std::string_view::npos) Refuse(u"the file ends too early");
    const std::string_view line = rest().substr(0, end);
    at_ += end + 1;
    return Split(line, '\t');
  }

  void ReadHead() {
    const std::vector<std::string_view> head = NextLine();
    if (head.size() != 3 || head[0] != kHead) Refuse(u"this is no user store");
    if (head[1] != kVersion) Refuse(u"the format is of another version");
    store_.RestoreNextId(Number<std::uint32_t>(head[2]));
  }

  // True when the line was the last one.
  bool ReadLine() {
    const std::vector<std::string_view> fields = NextLine();
    if (fields.front() == kEnd) {
      if (EndLine(store_.Users().size(), bytes_.substr(0, line_start_)) !=
          bytes_.substr(line_start_, at_ - line_start_)) {
        Refuse(u"the checksum is wrong");
      }
      return true;
    }
    if (fields.front() != kUser || fields.size() != kUserFields) Refuse(u"this is no user line");
    Accept(UserOf(fields));
    return false;
  }

  StoredUser UserOf(const std::vector<std::string_view>& fields) {
    StoredUser user;
    user.Id = Number<std::uint32_t>(fields[1]);
    user.Name = Text(fields[2]);
    user.FullName = Text(fields[3]);
    user.Comment = Text(fields[4]);
    user.ClassName = Text(fields[5]);
    user.Deactivated = Flag(fields[6]);
    user.MustRenew = Flag(fields[7]);
    user.RemainingLogOns = Number<std::int32_t>(fields[8]);
    user.PasswordChangedOn = Number<std::int64_t>(fields[9]);
    user.Failures = Number<std::int32_t>(fields[10]);
    user.LastFailure = Number<std::int64_t>(fields[11]);
    for (const std::string_view hash : Split(fields[12], ' '))
      user.Passwords.push_back(Hash(hash));
    return user;
  }

  void Accept(StoredUser user) {
    if (!IsValidUserName(user.Name)) Refuse(u"this is no user name");
    if (!ids_.insert(user.Id).second || user.Id >= store_.NextId())
      Refuse(u"the id is not the user's own");
    if (user.Failures < 0 || user.RemainingLogOns < kUnlimitedLogOns)
      Refuse(u"a counter is negative");
    if (!names_.insert(user.Name).second) Refuse(u"there are two users of this name");
    store_.Restore(std::move(user));
  }

  PasswordHash Hash(std::string_view text) {
    const std::vector<std::string_view> parts = Split(text, ':');
    if (parts.size() != 3) Refuse(u"this is no password hash");
    PasswordHash hash{Number<std::uint32_t>(parts[0]), Bytes(parts[1]), Bytes(parts[2])};
    if (hash.Iterations == 0 || hash.Salt.size() < kSaltSize || hash.Key.size() != kKeySize)
      Refuse(u"this is no password hash");
    return hash;
  }

  bool Flag(std::string_view text) {
    if (text != "0" && text != "1") Refuse(u"a flag is none");
    return text == "1";
  }

  template <class T>
  T Number(std::string_view text) {
    const std::optional<T> value = WholeNumber<T>(text);
    if (!value) Refuse(u"a number is none");
    return *value;
  }

  String Text(std::string_view field) {
    std::optional<String> text = UnescapedField(field);
    if (!text) Refuse(u"a text is damaged");
    return std::move(*text);
  }

  std::vector<std::uint8_t> Bytes(std::string_view digits) {
    std::optional<std::vector<std::uint8_t>> bytes = FromHex(digits);
    if (!bytes) Refuse(u"this is no password hash");
    return std::move(*bytes);
  }

  [[noreturn]] void Refuse(const String& reason) const {
    throw KorvelError(kUnreadableUsers, file_ + u", line " + ToString(line_) + u": " + reason);
  }

  const String& file_;
  std::string_view bytes_;
  std::size_t at_ = 0;
  std::size_t line_start_ = 0;
  std::int32_t line_ = 0;
  std::set<String, decltype(&PrecedesInList)> names_{&PrecedesInList};
  std::set<std::uint32_t> ids_;
  UserStore store_;
};

}  // namespace

std::string Serialize(const UserStore& store) {
  std::string bytes =
      Line({std::string(kHead), std::string(kVersion), std::to_string(store.NextId())});
  for (const StoredUser& user : store.Users())
    bytes += LineOf(user);
  return bytes + EndLine(store.Users().size(), bytes);
}

UserStore ParseStore(const String& file, std::string_view bytes) {
  return Reader(file, bytes).Read();
}

}  // namespace krx::runtime
