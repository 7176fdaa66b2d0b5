#include "client/Methods.h"

#include <algorithm>
#include <optional>
#include <stdexcept>

#include "com/Errors.h"
#include "com/Text.h"
#include "com/Variant.h"

namespace krx::client {

namespace {

constexpr LONG kYesNoCancel = 3;
constexpr LONG kQuestion = 32;
constexpr LONG kAutoActivation = 5;  // seconds

using Parameters = std::vector<std::wstring>;

com::Variant OfType(VARTYPE type) {
  com::Variant value;
  value.Get().vt = type;
  return value;
}
com::Variant Number(LONG number) {
  com::Variant value = OfType(VT_I4);
  value.Get().lVal = number;
  return value;
}
com::Variant Flag(VARIANT_BOOL flag) {
  com::Variant value = OfType(VT_BOOL);
  value.Get().boolVal = flag;
  return value;
}
com::Variant Text(const std::wstring& text) {
  com::Variant value = OfType(VT_BSTR);
  value.Get().bstrVal = SysAllocString(text.c_str());
  return value;
}
com::Variant LeftOut() {
  com::Variant value = OfType(VT_ERROR);
  value.Get().scode = DISP_E_PARAMNOTFOUND;
  return value;
}

// What a parameter is given goes by its name; a parameter that is not known here is left out.
com::Variant Argument(const std::wstring& name, bool free_buttons, const Selection& selection) {
  if (name == L"Text") return Text(L"A text\nin two lines");
  // The free buttons take the place of a single OK alone.
  if (name == L"Style") return Number(free_buttons ? kQuestion : kQuestion | kYesNoCancel);
  if (name == L"HelpFile") return Text(L"help");
  if (name == L"Button1") return Text(L"&Retry");
  if (name == L"Button2") return Text(L"&Skip");
  if (name == L"Button3") return Text(L"&Manual");
  if (name == L"AutoActivation") return Number(kAutoActivation);
  if (name == L"FileName") return Text(L"");
  if (name == L"StartDirectory") return Text(static_cast<BSTR>(selection.Folder));
  if (name == L"Filter") return Text(L"Text|*.txt|All|*.*");
  if (name == L"AllowChangeUp") return Flag(selection.AllowChangeUp);
  return LeftOut();
}

HRESULT Call(IKRXDialog& dialogs, MEMBERID method, const Parameters& parameters,
             const Selection& selection, std::wstring& chosen) {
  const bool free_buttons =
      std::find(parameters.begin(), parameters.end(), L"Button1") != parameters.end();
  std::vector<com::Variant> owned;  // the last one first, as automation has them
  for (auto name = parameters.rbegin(); name != parameters.rend(); ++name)
    owned.push_back(Argument(*name, free_buttons, selection));
  std::vector<VARIANT> arguments;
  for (const com::Variant& argument : owned)
    arguments.push_back(argument.Get());
  DISPPARAMS call{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
  com::Variant result;
  EXCEPINFO failure{};
  const HRESULT status = dialogs.Invoke(method, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                        &call, result.Put(), &failure, nullptr);
  if (status == DISP_E_EXCEPTION) {
    const com::ObjectError error = com::FromExcepInfo(failure);
    chosen = com::ToWide(error.Description());
    return static_cast<HRESULT>(error.Status());
  }
  if (result.Type() == VT_BSTR) chosen = com::ToWide(com::FromBstr(result.Get().bstrVal));
  return status;
}

// The interface as the component beside this program describes it.
com::ComPtr<ITypeInfo> DialogInterface() {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
  path.replace(path.rfind(L'\\') + 1, std::wstring::npos, L"KRXDialogs.dll");
  com::ComPtr<ITypeLib> library;
  com::ComPtr<ITypeInfo> info;
  if (SUCCEEDED(LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.Put())))
    library->GetTypeInfoOfGuid(__uuidof(IKRXDialog), info.Put());
  if (!info) throw std::runtime_error("KRXDialogs.dll does not describe its interface");
  return info;
}

// Names of the function at a place, its own first; none behind the last one.
std::optional<std::pair<MEMBERID, Parameters>> FunctionAt(ITypeInfo& info, UINT place) {
  constexpr UINT kMost = 16;
  FUNCDESC* function = nullptr;
  if (FAILED(info.GetFuncDesc(place, &function))) return std::nullopt;
  const MEMBERID id = function->memid;
  info.ReleaseFuncDesc(function);
  BSTR names[kMost] = {};
  UINT count = 0;
  info.GetNames(id, names, kMost, &count);
  Parameters found;
  for (UINT i = 0; i < count; ++i) {
    found.emplace_back(names[i] ? names[i] : L"");
    SysFreeString(names[i]);
  }
  return std::pair{id, found};
}

std::vector<Method> Described() {
  const com::ComPtr<ITypeInfo> info = DialogInterface();
  std::vector<Method> methods;
  for (UINT place = 0; const auto function = FunctionAt(*info.Get(), place); ++place) {
    const auto& [id, names] = *function;
    if (names.empty() || !names[0].starts_with(L"KR")) continue;
    const Parameters parameters(names.begin() + 1, names.end());
    methods.push_back({std::string(names[0].begin(), names[0].end()),
                       [id = id, parameters](IKRXDialog& dialogs, const Selection& selection,
                                             std::wstring& chosen) {
                         return Call(dialogs, id, parameters, selection, chosen);
                       }});
  }
  if (methods.empty()) throw std::runtime_error("KRXDialogs.dll describes no dialog");
  return methods;
}

}  // namespace

const std::vector<Method>& Methods() {
  static const std::vector<Method> methods = Described();
  return methods;
}

}  // namespace krx::client
