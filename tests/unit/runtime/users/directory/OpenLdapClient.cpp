#include "directory/OpenLdapClient.h"

#include <sys/time.h>

#include "base/Utf8.h"
#include "runtime/users/directory/DirectoryUser.h"
#include "runtime/users/directory/PasswordWire.h"

namespace krx::test {
namespace {

constexpr int kPage = 1000;

berval ValueOf(const runtime::SecretBytes& bytes) {
  const auto content = bytes.Bytes();
  return {content.size(), const_cast<char*>(reinterpret_cast<const char*>(content.data()))};
}

LDAPControl PolicyRequest() {
  return {const_cast<char*>(runtime::kPolicyControl), {0, nullptr}, 0};
}

timeval TimeOf(std::chrono::microseconds patience) {
  return {static_cast<time_t>(patience.count() / 1'000'000),
          static_cast<suseconds_t>(patience.count() % 1'000'000)};
}

String TextOf(const char* text) {
  return FromUtf8(text ? text : "").value_or(String());
}

}  // namespace

void OpenLdapApi::Close(LDAP* session) {
  ldap_unbind_ext_s(session, nullptr, nullptr);
}

String OpenLdapApi::LastFailure(LDAP* session) {
  int code = 0;
  char* text = nullptr;
  ldap_get_option(session, LDAP_OPT_RESULT_CODE, &code);
  ldap_get_option(session, LDAP_OPT_DIAGNOSTIC_MESSAGE, &text);
  String reason = TextOf(ldap_err2string(code));
  if (text) reason += u": " + TextOf(text);
  ldap_memfree(text);
  return reason;
}

int OpenLdapApi::SimpleBind(LDAP* session, const String& name, const Password& password) {
  const runtime::SecretBytes secret = runtime::Utf8Of(password);
  berval value = ValueOf(secret);
  LDAPControl policy = PolicyRequest();
  LDAPControl* controls[] = {&policy, nullptr};
  int request = -1;
  const int code = ldap_sasl_bind(session, ToUtf8(name).c_str(), LDAP_SASL_SIMPLE, &value, controls,
                                  nullptr, &request);
  return code == LDAP_SUCCESS ? request : -1;
}

int OpenLdapApi::Search(LDAP* session, const runtime::DirectorySearch& search,
                        const std::string& cookie) {
  std::vector<char*> attributes;
  for (const std::string& name : search.Attributes)
    attributes.push_back(const_cast<char*>(name.c_str()));
  attributes.push_back(nullptr);
  berval next{cookie.size(), const_cast<char*>(cookie.data())};
  LDAPControl* page = nullptr;
  if (search.Paged) ldap_create_page_control(session, kPage, &next, 0, &page);
  LDAPControl* controls[] = {page, nullptr};
  const bool entry = search.Scope == runtime::DirectorySearch::Reach::Entry;
  int request = -1;
  const int code = ldap_search_ext(
      session, ToUtf8(search.Base).c_str(), entry ? LDAP_SCOPE_BASE : LDAP_SCOPE_SUBTREE,
      ToUtf8(search.Filter).c_str(), attributes.data(), 0, controls, nullptr, nullptr, 0, &request);
  if (page) ldap_control_free(page);
  return code == LDAP_SUCCESS ? request : -1;
}

int OpenLdapApi::Extended(LDAP* session, const std::string& operation,
                          const runtime::SecretBytes& content) {
  berval value = ValueOf(content);
  LDAPControl policy = PolicyRequest();
  LDAPControl* controls[] = {&policy, nullptr};
  int request = -1;
  const int code =
      ldap_extended_operation(session, operation.c_str(), &value, controls, nullptr, &request);
  return code == LDAP_SUCCESS ? request : -1;
}

int OpenLdapApi::Exchange(LDAP* session, const String& dn, const std::string& attribute,
                          const runtime::SecretBytes& before, const runtime::SecretBytes& after) {
  berval old_value = ValueOf(before);
  berval new_value = ValueOf(after);
  berval* old_values[] = {&old_value, nullptr};
  berval* new_values[] = {&new_value, nullptr};
  LDAPMod taken{};
  taken.mod_op = LDAP_MOD_DELETE | LDAP_MOD_BVALUES;
  taken.mod_type = const_cast<char*>(attribute.c_str());
  taken.mod_bvalues = old_values;
  LDAPMod added = taken;
  added.mod_op = LDAP_MOD_ADD | LDAP_MOD_BVALUES;
  added.mod_bvalues = new_values;
  LDAPMod* changes[] = {&taken, &added, nullptr};
  int request = -1;
  const int code =
      ldap_modify_ext(session, ToUtf8(dn).c_str(), changes, nullptr, nullptr, &request);
  return code == LDAP_SUCCESS ? request : -1;
}

bool OpenLdapApi::Poll(LDAP* session, int request, std::chrono::microseconds patience,
                       LDAPMessage** message) {
  timeval time = TimeOf(patience);
  return ldap_result(session, request, LDAP_MSG_ALL, &time, message) >= 0;
}

runtime::DirectoryEntry OpenLdapApi::Entry(LDAP* session, LDAPMessage* entry) {
  runtime::DirectoryEntry read;
  char* const dn = ldap_get_dn(session, entry);
  read.Dn = TextOf(dn);
  ldap_memfree(dn);
  BerElement* place = nullptr;
  for (char* name = ldap_first_attribute(session, entry, &place); name != nullptr;
       name = ldap_next_attribute(session, entry, place)) {
    berval** const values = ldap_get_values_len(session, entry, name);
    for (berval** value = values; value && *value; ++value)
      read.Attributes[runtime::AttributeKey(name)].emplace_back((*value)->bv_val, (*value)->bv_len);
    ldap_value_free_len(values);
    ldap_memfree(name);
  }
  if (place) ber_free(place, 0);
  return read;
}

runtime::DirectoryAnswer OpenLdapApi::Parse(LDAP* session, LDAPMessage* answer,
                                            std::string* cookie) {
  runtime::DirectoryAnswer read;
  char* text = nullptr;
  LDAPControl** controls = nullptr;
  int code = 0;
  const int failure =
      ldap_parse_result(session, answer, &code, nullptr, &text, nullptr, &controls, 0);
  read.Code = failure == LDAP_SUCCESS ? code : failure;
  if (text) read.Diagnostic = text;
  ldap_memfree(text);
  if (LDAPControl* found = ldap_control_find(runtime::kPolicyControl, controls, nullptr))
    read.Policy.emplace(found->ldctl_value.bv_val, found->ldctl_value.bv_len);
  LDAPControl* const page = ldap_control_find(LDAP_CONTROL_PAGEDRESULTS, controls, nullptr);
  if (page && cookie) {
    ber_int_t count = 0;
    berval next{};
    ldap_parse_pageresponse_control(session, page, &count, &next);
    cookie->assign(next.bv_val ? next.bv_val : "", next.bv_len);
    ldap_memfree(next.bv_val);
  }
  ldap_controls_free(controls);
  return read;
}

std::unique_ptr<runtime::DirectoryConnection> OpenLdapClient::Connect(
    const runtime::DirectoryServer& server, runtime::DirectoryDeadline deadline) {
  const auto rest = std::chrono::duration_cast<std::chrono::microseconds>(
      deadline - std::chrono::steady_clock::now());
  const timeval patience = TimeOf(std::max(rest, std::chrono::microseconds(1)));
  const int version = LDAP_VERSION3;
  const int demand = LDAP_OPT_X_TLS_DEMAND;
  const int client = 0;
  LDAP* session = nullptr;
  if (ldap_initialize(&session, ToUtf8(server.Address()).c_str()) != LDAP_SUCCESS)
    throw runtime::DirectorySilence(u"this is no address");
  auto connection = std::make_unique<runtime::LdapConnection<OpenLdapApi>>(api_, session, deadline);
  ldap_set_option(session, LDAP_OPT_PROTOCOL_VERSION, &version);
  ldap_set_option(session, LDAP_OPT_REFERRALS, LDAP_OPT_OFF);
  ldap_set_option(session, LDAP_OPT_NETWORK_TIMEOUT, &patience);
  if (!authorities_.empty())
    ldap_set_option(session, LDAP_OPT_X_TLS_CACERTFILE, authorities_.c_str());
  ldap_set_option(session, LDAP_OPT_X_TLS_REQUIRE_CERT, &demand);
  ldap_set_option(session, LDAP_OPT_X_TLS_NEWCTX, &client);
  if (ldap_connect(session) != LDAP_SUCCESS)
    throw runtime::DirectorySilence(api_.LastFailure(session));
  return connection;
}

}  // namespace krx::test
