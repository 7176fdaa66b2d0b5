#include "ComponentTest.h"

#include <algorithm>

namespace krx::tests {

LoadedComponent::LoadedComponent() : module_(LoadLibraryW(Path().c_str())) {
  EXPECT_NE(module_, nullptr) << "KRXDialogs.dll does not load: " << GetLastError();
}

LoadedComponent::~LoadedComponent() {
  FreeLibrary(module_);
}

std::wstring LoadedComponent::Path() {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
  return path.substr(0, path.rfind(L'\\') + 1) + L"KRXDialogs.dll";
}

template <class Function>
Function LoadedComponent::Entry(const char* name) const {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
}

HRESULT LoadedComponent::GetClassObject(REFCLSID id, REFIID iid, void** object) const {
  return Entry<decltype(&::DllGetClassObject)>("DllGetClassObject")(id, iid, object);
}

HRESULT LoadedComponent::CanUnload() const {
  return Entry<decltype(&::DllCanUnloadNow)>("DllCanUnloadNow")();
}

HRESULT LoadedComponent::Register() const {
  return Entry<HRESULT(WINAPI*)()>("DllRegisterServer")();
}

HRESULT LoadedComponent::Unregister() const {
  return Entry<HRESULT(WINAPI*)()>("DllUnregisterServer")();
}

com::ComPtr<IKRXDialog> LoadedComponent::Create() const {
  com::ComPtr<IClassFactory> factory;
  com::ComPtr<IKRXDialog> dialog;
  EXPECT_EQ(GetClassObject(__uuidof(KRXDialog), IID_IClassFactory, factory.PutVoid()), S_OK);
  if (!factory) return dialog;
  EXPECT_EQ(factory->CreateInstance(nullptr, __uuidof(IKRXDialog), dialog.PutVoid()), S_OK);
  return dialog;
}

ErrorTexts TakeError() {
  com::ComPtr<IErrorInfo> info;
  if (GetErrorInfo(0, info.Put()) != S_OK) return {};
  com::Bstr source;
  com::Bstr description;
  info->GetSource(source.Put());
  info->GetDescription(description.Put());
  return {true, source.Text(), description.Text()};
}

String FontClassButton(IKRXDialog& dialog) {
  com::Bstr value;
  EXPECT_EQ(dialog.get_FontClassButton(value.Put()), S_OK);
  return value.Text();
}

float ButtonMinHeight(IKRXDialog& dialog) {
  float value = -1;
  EXPECT_EQ(dialog.get_ButtonMinHeight(&value), S_OK);
  return value;
}

LateResult CallByName(IDispatch& object, const wchar_t* name, WORD flags,
                      std::vector<VARIANT> arguments, const std::vector<const wchar_t*>& names) {
  LateResult result;
  std::vector<LPOLESTR> members{const_cast<wchar_t*>(name)};
  for (const wchar_t* argument : names)
    members.push_back(const_cast<wchar_t*>(argument));
  std::vector<DISPID> ids(members.size());
  result.Status = object.GetIDsOfNames(IID_NULL, members.data(), static_cast<UINT>(members.size()),
                                       LOCALE_USER_DEFAULT, ids.data());
  if (FAILED(result.Status)) return result;
  // Named arguments come first in the array, the others from the last to the first.
  std::reverse(arguments.begin(), arguments.end());
  std::vector<DISPID> named(ids.rbegin(), ids.rend() - 1);
  if (flags & DISPATCH_PROPERTYPUT) named = {DISPID_PROPERTYPUT};
  DISPPARAMS parameters{arguments.data(), named.data(), static_cast<UINT>(arguments.size()),
                        static_cast<UINT>(named.size())};
  result.Status = object.Invoke(ids[0], IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                result.Value.Put(), &result.Failure, &result.WrongArgument);
  com::Bstr source;
  com::Bstr description;
  com::Bstr help_file;
  *source.Put() = result.Failure.bstrSource;
  *description.Put() = result.Failure.bstrDescription;
  *help_file.Put() = result.Failure.bstrHelpFile;
  result.Source = source.Text();
  result.Description = description.Text();
  return result;
}

VARIANT Int(LONG value) {
  VARIANT variant{};
  variant.vt = VT_I4;
  variant.lVal = value;
  return variant;
}

VARIANT Text(BSTR value) {
  VARIANT variant{};
  variant.vt = VT_BSTR;
  variant.bstrVal = value;
  return variant;
}

VARIANT Missing() {
  VARIANT variant{};
  variant.vt = VT_ERROR;
  variant.scode = DISP_E_PARAMNOTFOUND;
  return variant;
}

VARIANT Reference(VARIANT& value) {
  VARIANT variant{};
  variant.vt = VT_BYREF | VT_VARIANT;
  variant.pvarVal = &value;
  return variant;
}

}  // namespace krx::tests
