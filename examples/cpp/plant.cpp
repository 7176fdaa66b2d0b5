// A small plant: log on, ask, choose a recipe file, show who did it. Bound early by the header that
// is generated from the component's interface description; nothing else of the component is needed.

#include <KRXDialogs.h>

#include <cstdio>
#include <string>

namespace {

constexpr long kQuestion = 32;
constexpr long kThirdIsDefault = 512;
constexpr const wchar_t* kRecipeFolder = L"C:\\Plant\\Recipes";

// A text as automation passes it.
class Bstr {
 public:
  Bstr() = default;
  Bstr(const std::wstring& text) : text_(SysAllocString(text.c_str())) {}
  ~Bstr() { SysFreeString(text_); }
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;

  operator BSTR() const { return text_; }
  BSTR* Put() { return &text_; }
  std::wstring Text() const { return {text_, SysStringLen(text_)}; }

 private:
  BSTR text_ = nullptr;
};

struct Failure {
  std::wstring Description;
};

void Check(HRESULT status) {
  if (SUCCEEDED(status)) return;
  Bstr description;
  IErrorInfo* info = nullptr;
  if (GetErrorInfo(0, &info) == S_OK) {
    info->GetDescription(description.Put());
    info->Release();
  }
  if (SysStringLen(description)) throw Failure{description.Text()};
  throw Failure{L"status " + std::to_wstring(status)};
}

// The object, as long as it is needed.
class Dialogs {
 public:
  Dialogs() {
    Check(CoCreateInstance(__uuidof(KRXDialog), nullptr, CLSCTX_INPROC_SERVER, __uuidof(IKRXDialog),
                           reinterpret_cast<void**>(&dialogs_)));
  }
  ~Dialogs() { dialogs_->Release(); }
  Dialogs(const Dialogs&) = delete;
  Dialogs& operator=(const Dialogs&) = delete;

  IKRXDialog* operator->() const { return dialogs_; }

 private:
  IKRXDialog* dialogs_ = nullptr;
};

std::wstring LoadRecipe() {
  const Dialogs dialogs;
  VARIANT_BOOL logged_on = VARIANT_FALSE;
  Check(dialogs->KRUserLogOn(&logged_on));
  if (!logged_on) return L"Nobody has logged on.";
  KRMsgBoxResult answer{};
  Check(dialogs->KRMsgBoxEx(Bstr(L"Which mixer takes the next batch?"), kQuestion + kThirdIsDefault,
                            Bstr(L"Next batch"), nullptr, 0, Bstr(L"Mixer &A"), Bstr(L"Mixer &B"),
                            Bstr(L"&None"), 0, &answer));
  std::wstring mixer;
  switch (answer) {
    case krButton1:
      mixer = L"mixer A";
      break;
    case krButton2:
      mixer = L"mixer B";
      break;
    default:
      return L"No mixer has been chosen.";
  }
  Bstr recipe;
  Check(dialogs->KROpenFile(nullptr, Bstr(kRecipeFolder), Bstr(L"Recipes|*.rcp|All files|*.*"),
                            VARIANT_FALSE, Bstr(L"Recipe for " + mixer), recipe.Put()));
  if (!SysStringLen(recipe)) return L"No recipe has been chosen.";
  Check(dialogs->KRWhoAmI());
  return L"Loaded into " + mixer + L": " + recipe.Text();
}

}  // namespace

int main() {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  int status = 0;
  try {
    std::wprintf(L"%ls\n", LoadRecipe().c_str());
  } catch (const Failure& failure) {
    std::fwprintf(stderr, L"The plant stops: %ls\n", failure.Description.c_str());
    status = 1;
  }
  CoUninitialize();
  return status;
}
