#pragma once

#include <windows.h>

#include <wincrypt.h>
#include <winldap.h>

namespace krx::runtime {

// The system's client of directory services and what judges its certificates, looked up when a
// directory is first asked: who has none does not load them, and a system without them still runs
// the component. Once loaded they stay, since the client keeps threads and settings of its own.
struct SystemLdap {
  // Raises Error when the system has no such library.
  static const SystemLdap& Get();

  decltype(&::ldap_initW) Init;
  decltype(&::ldap_sslinitW) InitEncrypted;
  decltype(&::ldap_connect) Connect;
  decltype(&::ldap_unbind) Unbind;
  decltype(&::ldap_get_optionW) GetOption;
  decltype(&::ldap_set_optionW) SetOption;
  decltype(&::ldap_simple_bindW) SimpleBind;
  decltype(&::ldap_bind_sW) Bind;
  decltype(&::ldap_search_extW) Search;
  decltype(&::ldap_modify_extW) Modify;
  decltype(&::ldap_extended_operationW) Extended;
  decltype(&::ldap_result) Result;
  decltype(&::ldap_parse_resultW) ParseResult;
  decltype(&::ldap_msgfree) FreeMessage;
  decltype(&::ldap_first_entry) FirstEntry;
  decltype(&::ldap_next_entry) NextEntry;
  decltype(&::ldap_get_dnW) GetDn;
  decltype(&::ldap_first_attributeW) FirstAttribute;
  decltype(&::ldap_next_attributeW) NextAttribute;
  decltype(&::ldap_get_values_lenW) GetValues;
  decltype(&::ldap_value_free_len) FreeValues;
  decltype(&::ldap_memfreeW) FreeText;
  decltype(&::ldap_err2stringW) TextOf;
  decltype(&::ldap_create_page_controlW) CreatePage;
  decltype(&::ldap_parse_page_controlW) ParsePage;
  decltype(&::ldap_control_freeW) FreeControl;
  decltype(&::ldap_controls_freeW) FreeControls;
  decltype(&::ber_bvfree) FreeValue;
  decltype(&::CertGetCertificateChain) GetChain;
  decltype(&::CertVerifyCertificateChainPolicy) VerifyPolicy;
  decltype(&::CertFreeCertificateChain) FreeChain;
  decltype(&::CertFreeCertificateContext) FreeCertificate;

 private:
  SystemLdap();
};

}  // namespace krx::runtime
