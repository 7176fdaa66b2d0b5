#include "Calls.h"

#include <commctrl.h>  // builds on <windows.h>

#include <algorithm>
#include <memory>
#include <set>
#include <stdexcept>

#include "client/Methods.h"

namespace krx::bench {

namespace {

using client::BasicString;
using Of = Method::Of;

constexpr long kStyle = MB_YESNOCANCEL | MB_ICONQUESTION;

// Takes a path that nobody asks for.
class Dropped {
 public:
  ~Dropped() { SysFreeString(text_); }
  operator BSTR*() { return &text_; }

 private:
  BSTR text_ = nullptr;
};

std::vector<Method> Messages() {
  return {{"KRMsgBox", Of::Messages, 0,
           [](IKRXDialog& dialogs) {
             long result = 0;
             return dialogs.KRMsgBox(BasicString(kMessage), kStyle, BasicString(kTitle), nullptr, 0,
                                     &result);
           }},
          {"KRMsgBoxEx", Of::Messages, 0, [](IKRXDialog& dialogs) {
             KRMsgBoxResult result{};
             return dialogs.KRMsgBoxEx(BasicString(kMessage), MB_ICONQUESTION, BasicString(kTitle),
                                       nullptr, 0, BasicString(L"&Retry"), BasicString(L"&Skip"),
                                       BasicString(L"&Manual"), 0, &result);
           }}};
}

using Asking = HRESULT (STDMETHODCALLTYPE IKRXDialog::*)(VARIANT_BOOL*);
using Telling = HRESULT (STDMETHODCALLTYPE IKRXDialog::*)();

Method OfUsers(const char* name, Asking method) {
  return {name, Of::Users, 0, [method](IKRXDialog& dialogs) {
            VARIANT_BOOL result = VARIANT_FALSE;
            return (dialogs.*method)(&result);
          }};
}

Method OfUsers(const char* name, Telling method, int rows = 0) {
  return {name, Of::Users, rows, [method](IKRXDialog& dialogs) { return (dialogs.*method)(); }};
}

using Folder = std::shared_ptr<const BasicString>;
using Directory = HRESULT (STDMETHODCALLTYPE IKRXDialog::*)(BSTR, VARIANT_BOOL, BSTR, BSTR*);
using File = HRESULT (STDMETHODCALLTYPE IKRXDialog::*)(BSTR, BSTR, BSTR, VARIANT_BOOL, BSTR, BSTR*);

Method OfFiles(const char* name, Directory method, const Folder& folder) {
  return {name, Of::Files, kFolders, [method, folder](IKRXDialog& dialogs) {
            return (dialogs.*method)(*folder, VARIANT_TRUE, nullptr, Dropped());
          }};
}

Method OfFiles(const char* name, File method, const Folder& folder) {
  return {name, Of::Files, kFiles, [method, folder](IKRXDialog& dialogs) {
            return (dialogs.*method)(nullptr, *folder, BasicString(L"Text|*.txt|All|*.*"),
                                     VARIANT_TRUE, nullptr, Dropped());
          }};
}

void Compare(const std::vector<Method>& methods) {
  std::set<std::string> here;
  std::set<std::string> described;
  for (const Method& method : methods)
    here.insert(method.Name);
  for (const client::Method& method : client::Methods())
    described.insert(method.Name);
  if (here != described) throw std::runtime_error("the component has other methods than the bench");
}

}  // namespace

std::vector<Method> Methods(const std::wstring& folder) {
  const auto path = std::make_shared<const BasicString>(folder);
  // A touch dialog that starts in a folder shows what lies beside it.
  const auto inside = std::make_shared<const BasicString>(folder + L"\\folder100");
  std::vector<Method> methods = Messages();
  for (Method& method : std::vector<Method>{
           OfUsers("KRUserLogOn", &IKRXDialog::KRUserLogOn),
           OfUsers("KRUserLogOnCombo", &IKRXDialog::KRUserLogOnCombo),
           OfUsers("KRChangePassword", &IKRXDialog::KRChangePassword),
           OfUsers("KRWhoAmI", &IKRXDialog::KRWhoAmI),
           OfUsers("KRUser", &IKRXDialog::KRUser, kUsers),
           OfUsers("KRAddUser", &IKRXDialog::KRAddUser),
           OfFiles("KRSelectDirectory", &IKRXDialog::KRSelectDirectory, path),
           OfFiles("KRSelectDirectoryTouch", &IKRXDialog::KRSelectDirectoryTouch, inside),
           OfFiles("KROpenFile", &IKRXDialog::KROpenFile, path),
           OfFiles("KRSaveFileAs", &IKRXDialog::KRSaveFileAs, path),
           OfFiles("KROpenFileTouch", &IKRXDialog::KROpenFileTouch, inside)})
    methods.push_back(std::move(method));
  Compare(methods);
  return methods;
}

void ShowMessageBox() {
  MessageBoxW(nullptr, kMessage, kTitle, static_cast<UINT>(kStyle));
}

void ShowTaskDialog() {
  TASKDIALOGCONFIG wanted{};
  wanted.cbSize = sizeof wanted;
  wanted.dwFlags = TDF_ALLOW_DIALOG_CANCELLATION;
  wanted.dwCommonButtons = TDCBF_YES_BUTTON | TDCBF_NO_BUTTON | TDCBF_CANCEL_BUTTON;
  wanted.pszWindowTitle = kTitle;
  wanted.pszMainIcon = TD_INFORMATION_ICON;  // it has none with a question mark
  wanted.pszContent = kMessage;
  TaskDialogIndirect(&wanted, nullptr, nullptr, nullptr);
}

}  // namespace krx::bench
