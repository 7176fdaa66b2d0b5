#include <algorithm>

#include "Source.h"
#include "host/UserManager.h"
#include "runtime/users/directory/DirectoryTalk.h"
#include "runtime/users/directory/Escaping.h"
#include "runtime/users/directory/PasswordWire.h"

// What servers of a directory answer: entries, codes, texts for people and controls.

namespace krx::fuzz {
namespace {

using namespace krx::runtime;

constexpr std::string_view kValues[] = {"eva",
                                        "EVA",
                                        "uid=eva,dc=plant",
                                        "cn=operators,dc=plant",
                                        "CN=Administrators, DC=plant",
                                        "20260101120000Z",
                                        "20260101120000.0Z",
                                        "133000000000000000",
                                        "9223372036854775807",
                                        "0",
                                        "-1",
                                        "512",
                                        "514",
                                        "\xC3\xA4",
                                        "\xFF",
                                        ",",
                                        "=",
                                        "+",
                                        "\\",
                                        "\\,",
                                        "*",
                                        "(",
                                        ")",
                                        "\"",
                                        " ",
                                        "#",
                                        "data 52e",
                                        "data 775, v1db1",
                                        "80090308: LdapErr: DSID-0C090400, comment: "
                                        "AcceptSecurityContext error, data ",
                                        "532",
                                        "533",
                                        "701",
                                        "773",
                                        "0000052D",
                                        "00000056"};
constexpr StringView kTexts[] = {u"eva",
                                 u"uid=",
                                 u",",
                                 u"dc=plant",
                                 u"\\",
                                 u"*",
                                 u"(",
                                 u")",
                                 u"{dn}",
                                 u"{user}",
                                 u"(uid={user})",
                                 u"ä",
                                 u"\xD83D\xDE00",
                                 u"\x0001",
                                 u" ",
                                 u"#",
                                 u"+",
                                 u"\"",
                                 u";",
                                 u"<",
                                 u"cn=\\2c"};
constexpr const char* kAttributes[] = {"uid",
                                       "cn",
                                       "description",
                                       "member",
                                       "samaccountname",
                                       "displayname",
                                       "useraccountcontrol",
                                       "pwdlastset",
                                       "pwdchangedtime",
                                       "pwdaccountlockedtime",
                                       "lockouttime",
                                       "pwdreset",
                                       "memberof",
                                       "tokengroups",
                                       "accountexpires"};
constexpr std::int32_t kCodes[] = {0,  0,  0,  0,  1,  2,  3,  4,  10, 19, 32,
                                   34, 48, 49, 49, 50, 51, 52, 53, 80, 81, -1};

// A filter that is one, whatever was put into it.
void RequireBalanced(StringView filter) {
  int depth = 0;
  for (std::size_t i = 0; i < filter.size(); ++i) {
    Require(filter[i] != u'\0');
    if (filter[i] == u'(') ++depth;
    if (filter[i] == u')') --depth;
    Require(depth > 0 || i + 1 == filter.size());
  }
  Require(depth == 0);
}

class Answers : public DirectoryConnection {
 public:
  explicit Answers(Source& source) : source_(source) {}

  DirectoryAnswer Bind(const String&, const Password& password) override {
    Require(!password.Empty());
    const DirectoryAnswer answer = Next();
    bound_ |= answer.Code == 0;
    return answer;
  }
  DirectoryAnswer BindAsProcess() override { return Next(); }
  DirectoryEntries Search(const DirectorySearch& search) override {
    RequireBalanced(search.Filter);
    DirectoryEntries entries;
    static_cast<DirectoryAnswer&>(entries) = Next();
    for (std::size_t count = source_.Below(4); count > 0; --count)
      entries.Entries.push_back(Entry());
    return entries;
  }
  DirectoryAnswer Extended(const std::string&, const SecretBytes&) override { return Next(); }
  DirectoryAnswer Exchange(const String&, const std::string&, const SecretBytes&,
                           const SecretBytes&) override {
    return Next();
  }

  bool HasBound() const { return bound_; }

  DirectoryAnswer Next() {
    if (source_.Byte() == 0xFF) throw DirectorySilence(u"silence");
    DirectoryAnswer answer;
    answer.Code = kCodes[source_.Below(std::size(kCodes))];
    answer.Diagnostic = source_.Bytes(kValues);
    if (source_.Coin()) answer.Policy = source_.Raw(source_.Below(16));
    return answer;
  }
  DirectoryEntry Entry() {
    DirectoryEntry entry{source_.Text(kTexts), {}};
    for (std::size_t count = source_.Below(8); count > 0; --count)
      entry.Attributes[kAttributes[source_.Below(std::size(kAttributes))]].push_back(
          source_.Bytes(kValues));
    return entry;
  }

 private:
  Source& source_;
  bool bound_ = false;
};

DirectoryRules RulesOf(Source& source) {
  DirectoryRules rules;
  const std::size_t choices = source.Byte();
  rules.Servers = {{u"h1"}};
  rules.Base = u"dc=plant";
  rules.Groups = {{u"Administrator", u"cn=administrators,dc=plant"},
                  {u"Operator", u"cn=operators,dc=plant"}};
  if (choices & 1) rules.Kind = DirectoryKind::ActiveDirectory;
  if (choices & 2) rules.NameAttribute = "sAMAccountName";
  if (choices & 4) rules.BindAs = u"uid={user},dc=plant";
  if (choices & 8) rules.SearchAs = SearchIdentity::Negotiate;
  if (choices & 16) rules.SearchAs = SearchIdentity::Entry;
  return rules;
}

void Talk(Source& source) {
  const DirectoryRules rules = RulesOf(source);
  const std::size_t act = source.Below(5);
  const String name = source.Text(kTexts);
  Answers answers(source);
  const Password searcher(u"searcher");
  DirectoryTalk talk(answers, rules, rules.SearchAs == SearchIdentity::Entry ? &searcher : nullptr);
  const auto known = [](const DirectoryUser& user) {
    return user.ClassName == u"Administrator" || user.ClassName == u"Operator";
  };
  Allowed([&] {
    if (act == 0) {
      const std::optional<DirectoryUser> user = talk.Find(name);
      Require(!user || known(*user));
    } else if (act == 1) {
      Require(std::ranges::all_of(talk.All(), known));
    } else if (act == 2) {
      const auto names = talk.Names();
      Require(!names || std::ranges::all_of(*names, known));
    } else if (act == 3) {
      const DirectoryLogOn log_on = talk.LogOn(name, Password(source.Text(kTexts)));
      const bool right = log_on.Verdict == DirectoryVerdict::Right;
      Require(!right || (answers.HasBound() && known(log_on.User)));
      Require(log_on.Reason.find_first_of(u"\r\n") == String::npos);
    } else {
      const DirectoryChange change = talk.Change(name, Password(u"new"), Password(u"old"));
      Require(change.Code != host::ChangePasswordSucceeded || !change.Name.empty());
    }
  });
}

void CheckTexts(Source& source) {
  const String text = source.Text(kTexts);
  const String filter = EscapedForFilter(text);
  Require(filter.find_first_of(u"*()\0", 0, 4) == String::npos);
  RequireBalanced(FilledFilter(u"(&(a={user})(b={dn}))", text, text));
  const String dn = ComparableDn(text);
  Require(ComparableDn(dn) == dn);
  const String named = u"uid=" + EscapedForDn(text) + u",dc=plant";
  const String value = FirstValueOf(named, "uid");
  Require(value.empty() || value == text);
  const Password password(text);
  const SecretBytes request = ModifyPasswordRequest(named, password, password);
  Require(request.Bytes().size() > 6 && request.Bytes()[0] == 0x30);
  Require(QuotedPassword(password).Bytes().size() == 2 * text.size() + 4);
  Require(ToUtf8(text).size() == Utf8Of(password).Bytes().size());
}

// A control as a server writes it is read as it was meant.
void CheckControl(Source& source) {
  Allowed([&] { ParsePolicyControl(source.Raw(source.Below(24))); });
  PolicyState meant;
  std::string content;
  if (source.Coin()) {
    meant.GraceLogOns = source.Byte();
    content += std::string("\xA0\x03\x81\x01", 4) + static_cast<char>(*meant.GraceLogOns);
  }
  if (source.Coin()) {
    meant.Error = static_cast<PolicyError>(source.Below(10));
    content += std::string("\x81\x01", 2) + static_cast<char>(*meant.Error);
  }
  const std::string control = "\x30" + std::string(1, static_cast<char>(content.size())) + content;
  const std::optional<PolicyState> read = ParsePolicyControl(control);
  Require(read && read->Error == meant.Error && read->GraceLogOns == meant.GraceLogOns);
  for (std::size_t cut = 0; cut < control.size(); ++cut)
    Require(!ParsePolicyControl(std::string_view(control).substr(0, cut)));
}

}  // namespace
}  // namespace krx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace krx::fuzz;
  Source source(data, size);
  switch (source.Byte() % 4) {
    case 0:
      CheckTexts(source);
      break;
    case 1:
      CheckControl(source);
      break;
    default:
      Talk(source);
  }
  return 0;
}
