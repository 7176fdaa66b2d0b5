#include "runtime/users/directory/win32/SystemLdapClient.h"

#include <map>
#include <mutex>

#include "com/Text.h"
#include "runtime/users/directory/DirectoryUser.h"
#include "runtime/users/directory/PasswordWire.h"

namespace krx::runtime {
namespace {

constexpr ULONG kPage = 1000;
constexpr ULONG kWholeAnswer = 1;
// The controls that go with every request of a session; not in the header.
constexpr int kServerControls = 0x12;

// Which server a connection is to be, for as long as its certificate may be asked about, and
// whether it was found to be that one: a client that never asks has taken any.
struct Expected {
  std::wstring Name;
  bool Vouched = false;
};
std::mutex expected_guard;
std::map<LDAP*, Expected> expected;

std::wstring ExpectedOf(LDAP* session) {
  const std::lock_guard lock(expected_guard);
  const auto found = expected.find(session);
  return found == expected.end() ? std::wstring() : found->second.Name;
}

void Vouch(LDAP* session) {
  const std::lock_guard lock(expected_guard);
  const auto found = expected.find(session);
  if (found != expected.end()) found->second.Vouched = true;
}

class Expecting {
 public:
  Expecting(LDAP* session, std::wstring name) : session_(session) {
    const std::lock_guard lock(expected_guard);
    expected.insert_or_assign(session, Expected{std::move(name)});
  }
  ~Expecting() {
    const std::lock_guard lock(expected_guard);
    expected.erase(session_);
  }
  Expecting(const Expecting&) = delete;
  Expecting& operator=(const Expecting&) = delete;

  bool WasVouchedFor() const {
    const std::lock_guard lock(expected_guard);
    return expected.at(session_).Vouched;
  }

 private:
  LDAP* session_;
};

// Whether a chain of trusted authorities vouches for a server of this name.
bool IsTrusted(const SystemLdap& ldap, PCCERT_CONTEXT certificate, std::wstring name) {
  char usage[] = szOID_PKIX_KP_SERVER_AUTH;
  LPSTR usages[] = {usage};
  CERT_CHAIN_PARA wanted{};
  wanted.cbSize = sizeof wanted;
  wanted.RequestedUsage.dwType = USAGE_MATCH_TYPE_AND;
  wanted.RequestedUsage.Usage = {1, usages};
  PCCERT_CHAIN_CONTEXT chain = nullptr;
  if (!ldap.GetChain(nullptr, certificate, nullptr, certificate->hCertStore, &wanted, 0, nullptr,
                     &chain))
    return false;
  SSL_EXTRA_CERT_CHAIN_POLICY_PARA server{};
  server.cbSize = sizeof server;
  server.dwAuthType = AUTHTYPE_SERVER;
  server.pwszServerName = name.data();
  CERT_CHAIN_POLICY_PARA policy{};
  policy.cbSize = sizeof policy;
  policy.pvExtraPolicyPara = &server;
  CERT_CHAIN_POLICY_STATUS status{};
  status.cbSize = sizeof status;
  // Wine's policy overlooks a chain that ends before it comes to an authority.
  const bool whole = chain->TrustStatus.dwErrorStatus == CERT_TRUST_NO_ERROR;
  const bool judged = ldap.VerifyPolicy(CERT_CHAIN_POLICY_SSL, chain, &policy, &status);
  ldap.FreeChain(chain);
  return whole && judged && status.dwError == 0;
}

// The client hands over the address of the certificate, whatever its header says, and leaves it to
// the callee to give it back.
BOOLEAN LDAPAPI JudgeCertificate(LDAP* session, PCCERT_CONTEXT* shown) noexcept {
  try {
    const SystemLdap& ldap = SystemLdap::Get();
    const std::wstring name = ExpectedOf(session);
    const bool trusted = !name.empty() && IsTrusted(ldap, *shown, name);
    ldap.FreeCertificate(*shown);
    if (trusted) Vouch(session);
    return trusted ? TRUE : FALSE;
  } catch (...) {
    return FALSE;
  }
}

// A text for the client, which takes none that it could not change.
class WideText {
 public:
  explicit WideText(const String& text) : text_(com::ToWide(text)) {}
  explicit WideText(const std::string& ascii) : text_(ascii.begin(), ascii.end()) {}
  PWCHAR Get() { return text_.data(); }

 private:
  std::wstring text_;
};

// The same for a password, wiped when it goes.
class WideSecret {
 public:
  explicit WideSecret(const Password& password)
      : bytes_((password.Length() + 1) * sizeof(wchar_t)) {
    std::copy(password.View().begin(), password.View().end(), Get());
    Get()[password.Length()] = L'\0';
  }
  PWCHAR Get() { return reinterpret_cast<PWCHAR>(bytes_.Bytes().data()); }

 private:
  SecretBytes bytes_;
};

String TextFrom(const SystemLdap& ldap, PWCHAR text) {
  String copy = text ? com::FromWide(text) : String();
  if (text) ldap.FreeText(text);
  return copy;
}

berval ValueOf(const SecretBytes& bytes) {
  const auto content = bytes.Bytes();
  return {static_cast<ULONG>(content.size()),
          const_cast<char*>(reinterpret_cast<const char*>(content.data()))};
}

l_timeval TimeOf(std::chrono::microseconds patience) {
  return {static_cast<LONG>(patience.count() / 1'000'000),
          static_cast<LONG>(patience.count() % 1'000'000)};
}

int RequestOf(ULONG result, ULONG request) {
  return result == LDAP_SUCCESS ? static_cast<int>(request) : -1;
}

bool Is(const wchar_t* left, const char* right) {
  return com::FromWide(left) == com::FromWide(WideText(std::string(right)).Get());
}

void AskForPolicy(const SystemLdap& ldap, LDAP* session) {
  WideText number{std::string(kPolicyControl)};
  LDAPControlW policy{number.Get(), {0, nullptr}, FALSE};
  LDAPControlW* controls[] = {&policy, nullptr};
  // A client that cannot do so still tells right passwords from wrong ones.
  ldap.SetOption(session, kServerControls, controls);
}

}  // namespace

void SystemLdapApi::Close(LDAP* session) {
  SystemLdap::Get().Unbind(session);
}

void SystemLdapApi::Free(LDAPMessage* message) {
  SystemLdap::Get().FreeMessage(message);
}

String SystemLdapApi::LastFailure(LDAP* session) {
  const SystemLdap& ldap = SystemLdap::Get();
  ULONG code = 0;
  ldap.GetOption(session, LDAP_OPT_ERROR_NUMBER, &code);
  const PWCHAR text = ldap.TextOf(code);  // the client keeps it
  return u"code " + ToString(static_cast<std::int32_t>(code)) +
         (text ? u", " + com::FromWide(text) : String());
}

int SystemLdapApi::SimpleBind(LDAP* session, const String& name, const Password& password) {
  return static_cast<int>(
      SystemLdap::Get().SimpleBind(session, WideText(name).Get(), WideSecret(password).Get()));
}

int SystemLdapApi::NegotiateBind(LDAP* session) {
  return static_cast<int>(SystemLdap::Get().Bind(session, nullptr, nullptr, LDAP_AUTH_NEGOTIATE));
}

int SystemLdapApi::Search(LDAP* session, const DirectorySearch& search, const std::string& cookie) {
  const SystemLdap& ldap = SystemLdap::Get();
  std::vector<WideText> names(search.Attributes.begin(), search.Attributes.end());
  std::vector<PWCHAR> attributes;
  attributes.reserve(names.size() + 1);
  for (WideText& name : names)
    attributes.push_back(name.Get());
  attributes.push_back(nullptr);
  berval next{static_cast<ULONG>(cookie.size()), const_cast<char*>(cookie.data())};
  LDAPControlW* page = nullptr;
  if (search.Paged) ldap.CreatePage(session, kPage, &next, FALSE, &page);
  LDAPControlW* controls[] = {page, nullptr};
  const bool entry = search.Scope == DirectorySearch::Reach::Entry;
  ULONG request = 0;
  const ULONG result = ldap.Search(
      session, WideText(search.Base).Get(), entry ? LDAP_SCOPE_BASE : LDAP_SCOPE_SUBTREE,
      WideText(search.Filter).Get(), attributes.data(), 0, controls, nullptr, 0, 0, &request);
  if (page) ldap.FreeControl(page);
  return RequestOf(result, request);
}

int SystemLdapApi::Extended(LDAP* session, const std::string& operation,
                            const SecretBytes& content) {
  berval value = ValueOf(content);
  ULONG request = 0;
  const ULONG result = SystemLdap::Get().Extended(session, WideText(operation).Get(), &value,
                                                  nullptr, nullptr, &request);
  return RequestOf(result, request);
}

int SystemLdapApi::Exchange(LDAP* session, const String& dn, const std::string& attribute,
                            const SecretBytes& before, const SecretBytes& after) {
  WideText name(attribute);
  berval old_value = ValueOf(before);
  berval new_value = ValueOf(after);
  berval* old_values[] = {&old_value, nullptr};
  berval* new_values[] = {&new_value, nullptr};
  LDAPModW taken{};
  taken.mod_op = LDAP_MOD_DELETE | LDAP_MOD_BVALUES;
  taken.mod_type = name.Get();
  taken.mod_vals.modv_bvals = old_values;
  LDAPModW added = taken;
  added.mod_op = LDAP_MOD_ADD | LDAP_MOD_BVALUES;
  added.mod_vals.modv_bvals = new_values;
  LDAPModW* changes[] = {&taken, &added, nullptr};
  ULONG request = 0;
  const ULONG result =
      SystemLdap::Get().Modify(session, WideText(dn).Get(), changes, nullptr, nullptr, &request);
  return RequestOf(result, request);
}

bool SystemLdapApi::Poll(LDAP* session, int request, std::chrono::microseconds patience,
                         LDAPMessage** message) {
  l_timeval time = TimeOf(patience);
  const ULONG kind =
      SystemLdap::Get().Result(session, static_cast<ULONG>(request), kWholeAnswer, &time, message);
  return kind != static_cast<ULONG>(-1);
}

LDAPMessage* SystemLdapApi::FirstEntry(LDAP* session, LDAPMessage* answer) {
  return SystemLdap::Get().FirstEntry(session, answer);
}

LDAPMessage* SystemLdapApi::NextEntry(LDAP* session, LDAPMessage* entry) {
  return SystemLdap::Get().NextEntry(session, entry);
}

DirectoryEntry SystemLdapApi::Entry(LDAP* session, LDAPMessage* entry) {
  const SystemLdap& ldap = SystemLdap::Get();
  DirectoryEntry read;
  read.Dn = TextFrom(ldap, ldap.GetDn(session, entry));
  BerElement* place = nullptr;
  for (PWCHAR name = ldap.FirstAttribute(session, entry, &place); name != nullptr;
       name = ldap.NextAttribute(session, entry, place)) {
    berval** const values = ldap.GetValues(session, entry, name);
    std::vector<std::string>& read_values =
        read.Attributes[AttributeKey(ToUtf8(com::FromWide(name)))];
    for (berval** value = values; value && *value; ++value)
      read_values.emplace_back((*value)->bv_val, (*value)->bv_len);
    if (values) ldap.FreeValues(values);
    ldap.FreeText(name);
  }
  return read;
}

DirectoryAnswer SystemLdapApi::Parse(LDAP* session, LDAPMessage* answer, std::string* cookie) {
  const SystemLdap& ldap = SystemLdap::Get();
  DirectoryAnswer read;
  ULONG code = 0;
  PWCHAR text = nullptr;
  LDAPControlW** controls = nullptr;
  const ULONG failure =
      ldap.ParseResult(session, answer, &code, nullptr, &text, nullptr, &controls, FALSE);
  read.Code = static_cast<std::int32_t>(failure == LDAP_SUCCESS ? code : failure);
  read.Diagnostic = ToUtf8(TextFrom(ldap, text));
  for (LDAPControlW** control = controls; control && *control; ++control) {
    const berval& value = (*control)->ldctl_value;
    if (Is((*control)->ldctl_oid, kPolicyControl)) read.Policy.emplace(value.bv_val, value.bv_len);
  }
  berval* next = nullptr;
  ULONG count = 0;
  if (cookie && controls && ldap.ParsePage(session, controls, &count, &next) == LDAP_SUCCESS &&
      next) {
    cookie->assign(next->bv_val ? next->bv_val : "", next->bv_len);
    ldap.FreeValue(next);
  }
  if (controls) ldap.FreeControls(controls);
  return read;
}

std::unique_ptr<DirectoryConnection> SystemLdapClient::Connect(const DirectoryServer& server,
                                                               DirectoryDeadline deadline) {
  const SystemLdap& ldap = SystemLdap::Get();
  const bool is_number = server.Host.find(u':') != String::npos;
  WideText host(is_number ? u"[" + server.Host + u"]" : server.Host);
  const auto port = static_cast<ULONG>(server.Port);
  LDAP* const session =
      server.Encrypted ? ldap.InitEncrypted(host.Get(), port, 1) : ldap.Init(host.Get(), port);
  if (!session) throw DirectorySilence(u"this is no address");
  auto connection = std::make_unique<LdapConnection<SystemLdapApi>>(api_, session, deadline);
  const ULONG version = LDAP_VERSION3;
  ldap.SetOption(session, LDAP_OPT_PROTOCOL_VERSION, &version);
  ldap.SetOption(session, LDAP_OPT_REFERRALS, LDAP_OPT_OFF);
  const Expecting expecting(session, com::ToWide(server.Host));
  const auto untold = u"this system's client shows no certificates, so none can be trusted";
  if (server.Encrypted &&
      ldap.SetOption(session, LDAP_OPT_SERVER_CERTIFICATE,
                     reinterpret_cast<void*>(&JudgeCertificate)) != LDAP_SUCCESS)
    throw DirectorySilence(untold);
  l_timeval patience = TimeOf(std::max(std::chrono::duration_cast<std::chrono::microseconds>(
                                           deadline - std::chrono::steady_clock::now()),
                                       std::chrono::microseconds(1)));
  if (ldap.Connect(session, &patience) != LDAP_SUCCESS)
    throw DirectorySilence(api_.LastFailure(session));
  if (server.Encrypted && !expecting.WasVouchedFor()) throw DirectorySilence(untold);
  AskForPolicy(ldap, session);
  return connection;
}

}  // namespace krx::runtime
