#include "runtime/users/directory/win32/SystemLdap.h"

#include <utility>

#include "com/SystemLibrary.h"
#include "runtime/core/KorvelError.h"

namespace krx::runtime {
namespace {

Error MissingPart(String reason) {
  return KorvelError(kDirectoryFailure, std::move(reason));
}

}  // namespace

SystemLdap::SystemLdap() {
  const com::SystemLibrary ldap(L"wldap32.dll", MissingPart);
  ldap.Find(Init, "ldap_initW");
  ldap.Find(InitEncrypted, "ldap_sslinitW");
  ldap.Find(Connect, "ldap_connect");
  ldap.Find(Unbind, "ldap_unbind");
  ldap.Find(GetOption, "ldap_get_optionW");
  ldap.Find(SetOption, "ldap_set_optionW");
  ldap.Find(SimpleBind, "ldap_simple_bindW");
  ldap.Find(Bind, "ldap_bind_sW");
  ldap.Find(Search, "ldap_search_extW");
  ldap.Find(Modify, "ldap_modify_extW");
  ldap.Find(Extended, "ldap_extended_operationW");
  ldap.Find(Result, "ldap_result");
  ldap.Find(ParseResult, "ldap_parse_resultW");
  ldap.Find(FreeMessage, "ldap_msgfree");
  ldap.Find(FirstEntry, "ldap_first_entry");
  ldap.Find(NextEntry, "ldap_next_entry");
  ldap.Find(GetDn, "ldap_get_dnW");
  ldap.Find(FirstAttribute, "ldap_first_attributeW");
  ldap.Find(NextAttribute, "ldap_next_attributeW");
  ldap.Find(GetValues, "ldap_get_values_lenW");
  ldap.Find(FreeValues, "ldap_value_free_len");
  ldap.Find(FreeText, "ldap_memfreeW");
  ldap.Find(TextOf, "ldap_err2stringW");
  ldap.Find(CreatePage, "ldap_create_page_controlW");
  ldap.Find(ParsePage, "ldap_parse_page_controlW");
  ldap.Find(FreeControl, "ldap_control_freeW");
  ldap.Find(FreeControls, "ldap_controls_freeW");
  ldap.Find(FreeValue, "ber_bvfree");
  const com::SystemLibrary certificates(L"crypt32.dll", MissingPart);
  certificates.Find(GetChain, "CertGetCertificateChain");
  certificates.Find(VerifyPolicy, "CertVerifyCertificateChainPolicy");
  certificates.Find(FreeChain, "CertFreeCertificateChain");
  certificates.Find(FreeCertificate, "CertFreeCertificateContext");
}

const SystemLdap& SystemLdap::Get() {
  static const SystemLdap ldap;
  return ldap;
}

}  // namespace krx::runtime
