#include "runtime/users/directory/win32/SystemLdap.h"

#include "com/Errors.h"
#include "com/Text.h"
#include "runtime/core/KorvelError.h"

namespace krx::runtime {
namespace {

// A library of the system's own folder.
class Library {
 public:
  explicit Library(const wchar_t* name)
      : name_(com::FromWide(name)),
        module_(LoadLibraryExW(name, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) {
    if (!module_) Fail(name_);
  }

  template <class Function>
  void Find(Function& function, const char* name) const {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    if (!function) Fail(name_);
  }

 private:
  [[noreturn]] static void Fail(const String& name) {
    throw KorvelError(kDirectoryFailure,
                      name + u": " + com::SystemMessage(HRESULT_FROM_WIN32(GetLastError())));
  }

  String name_;
  HMODULE module_;
};

}  // namespace

SystemLdap::SystemLdap() {
  const Library ldap(L"wldap32.dll");
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
  const Library certificates(L"crypt32.dll");
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
