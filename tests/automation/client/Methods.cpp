#include "client/Methods.h"

namespace krx::client {

namespace {

using FileMethod = HRESULT (STDMETHODCALLTYPE IKRXDialog::*)(BSTR, BSTR, BSTR, VARIANT_BOOL, BSTR,
                                                             BSTR*);
using DirectoryMethod = HRESULT (STDMETHODCALLTYPE IKRXDialog::*)(BSTR, VARIANT_BOOL, BSTR, BSTR*);
using UserMethod = HRESULT (STDMETHODCALLTYPE IKRXDialog::*)(VARIANT_BOOL*);
using PlainMethod = HRESULT (STDMETHODCALLTYPE IKRXDialog::*)();

HRESULT Taken(HRESULT status, BSTR result, std::wstring& chosen) {
  chosen.assign(result ? result : L"");
  SysFreeString(result);
  return status;
}

Method File(const char* name, FileMethod method) {
  return {name, [method](IKRXDialog& dialogs, const Selection& selection, std::wstring& chosen) {
            const BasicString filter(L"Text|*.txt|All|*.*");
            BSTR result = nullptr;
            const HRESULT status = (dialogs.*method)(nullptr, selection.Folder, filter,
                                                     selection.AllowChangeUp, nullptr, &result);
            return Taken(status, result, chosen);
          }};
}

Method Directory(const char* name, DirectoryMethod method) {
  return {name, [method](IKRXDialog& dialogs, const Selection& selection, std::wstring& chosen) {
            BSTR result = nullptr;
            const HRESULT status =
                (dialogs.*method)(selection.Folder, selection.AllowChangeUp, nullptr, &result);
            return Taken(status, result, chosen);
          }};
}

Method User(const char* name, UserMethod method) {
  return {name, [method](IKRXDialog& dialogs, const Selection&, std::wstring&) {
            VARIANT_BOOL result = VARIANT_FALSE;
            return (dialogs.*method)(&result);
          }};
}

Method Plain(const char* name, PlainMethod method) {
  return {name, [method](IKRXDialog& dialogs, const Selection&, std::wstring&) {
            return (dialogs.*method)();
          }};
}

constexpr long kYesNoCancel = 3;
constexpr long kQuestion = 32;
constexpr long kAutoActivation = 5;  // seconds

HRESULT OpenBox(IKRXDialog& dialogs, const Selection&, std::wstring&) {
  const BasicString text(L"A text\nin two lines");
  const BasicString title(L"Title");
  long result = 0;
  return dialogs.KRMsgBox(text, kYesNoCancel | kQuestion, title, nullptr, 0, &result);
}

HRESULT OpenFreeBox(IKRXDialog& dialogs, const Selection&, std::wstring&) {
  const BasicString text(L"A text\nin two lines");
  const BasicString title(L"Title");
  const BasicString help(L"help");
  const BasicString retry(L"&Retry");
  const BasicString skip(L"&Skip");
  const BasicString manual(L"&Manual");
  KRMsgBoxResult result{};
  return dialogs.KRMsgBoxEx(text, kQuestion, title, help, 0, retry, skip, manual, kAutoActivation,
                            &result);
}

}  // namespace

const std::vector<Method>& Methods() {
  static const std::vector<Method> methods{
      {"KRMsgBox", OpenBox},
      {"KRMsgBoxEx", OpenFreeBox},
      Directory("KRSelectDirectory", &IKRXDialog::KRSelectDirectory),
      Directory("KRSelectDirectoryTouch", &IKRXDialog::KRSelectDirectoryTouch),
      File("KRSaveFileAs", &IKRXDialog::KRSaveFileAs),
      File("KROpenFile", &IKRXDialog::KROpenFile),
      File("KROpenFileTouch", &IKRXDialog::KROpenFileTouch),
      User("KRUserLogOn", &IKRXDialog::KRUserLogOn),
      User("KRUserLogOnCombo", &IKRXDialog::KRUserLogOnCombo),
      User("KRAddUser", &IKRXDialog::KRAddUser),
      Plain("KRWhoAmI", &IKRXDialog::KRWhoAmI),
      Plain("KRUser", &IKRXDialog::KRUser),
      Plain("KRChangePassword", &IKRXDialog::KRChangePassword),
  };
  return methods;
}

}  // namespace krx::client
