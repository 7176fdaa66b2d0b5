// Opens dialogs on a machine on which nothing is registered: the manifest beside the program names
// the two components, which lie beside it too.
//
//   every_dialog [--language NAME] [--from-another-apartment] [METHOD...]
//
// It calls these methods, or all, one after the other, and prints their results. With the second
// option it calls from a thread that does not live in the dialogs' apartment.
//
// In the folder of an archive this builds it:
//
//   g++ -std=c++20 -static -municode -I include examples/without-registration/every_dialog.cpp
//     -o every_dialog.exe -lole32 -loleaut32 -luuid

#include <windows.h>

#include <KRXDialogs.h>
#include <KorvelRuntime.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace {

// A text of automation that frees itself.
class Text {
 public:
  Text(const wchar_t* text) : text_(SysAllocString(text)) {}
  ~Text() { SysFreeString(text_); }
  Text(const Text&) = delete;
  Text& operator=(const Text&) = delete;
  operator BSTR() const { return text_; }
  BSTR* Put() { return &text_; }
  const wchar_t* Get() const { return text_ ? text_ : L""; }

 private:
  BSTR text_;
};

// What a failing call is reported with.
struct Failure {
  HRESULT Status;
};

void Check(HRESULT status) {
  if (FAILED(status)) throw Failure{status};
}

// An object of a class, released at its end.
template <class Interface>
class Object {
 public:
  explicit Object(REFCLSID id) {
    Check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface),
                           reinterpret_cast<void**>(&object_)));
  }
  ~Object() { object_->Release(); }
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  Interface* operator->() const { return object_; }

 private:
  Interface* object_ = nullptr;
};

using Dialogs = Object<IKRXDialog>;
using Answer = std::wstring;

Answer YesOrNo(VARIANT_BOOL value) {
  return value ? L"yes" : L"no";
}

Answer Ask(const Dialogs& dialogs) {
  long result = 0;
  Check(dialogs->KRMsgBox(Text(L"Start the pump?"), 4 + 32, Text(L"Pump"), nullptr, 0, &result));
  return result == krYes ? L"yes" : L"no";
}

Answer AskFreely(const Dialogs& dialogs) {
  KRMsgBoxResult result{};
  Check(dialogs->KRMsgBoxEx(Text(L"Which way?"), 32, Text(L"Conveyor"), nullptr, 0, Text(L"&Left"),
                            Text(L"&Straight on"), Text(L"&Right"), 0, &result));
  return L"button " + std::to_wstring(result - krButton1 + 1);
}

template <HRESULT (STDMETHODCALLTYPE IKRXDialog::*Method)(VARIANT_BOOL*)>
Answer Do(const Dialogs& dialogs) {
  VARIANT_BOOL result = VARIANT_FALSE;
  Check((dialogs.operator->()->*Method)(&result));
  return YesOrNo(result);
}

template <HRESULT (STDMETHODCALLTYPE IKRXDialog::*Method)()>
Answer Show(const Dialogs& dialogs) {
  Check((dialogs.operator->()->*Method)());
  return L"closed";
}

template <HRESULT (STDMETHODCALLTYPE IKRXDialog::*Method)(BSTR, VARIANT_BOOL, BSTR, BSTR*)>
Answer SelectDirectory(const Dialogs& dialogs) {
  Text result(nullptr);
  Check((dialogs.operator->()->*Method)(Text(L"C:\\"), VARIANT_TRUE, nullptr, result.Put()));
  return result.Get();
}

template <HRESULT (STDMETHODCALLTYPE IKRXDialog::*Method)(BSTR, BSTR, BSTR, VARIANT_BOOL, BSTR,
                                                          BSTR*)>
Answer SelectFile(const Dialogs& dialogs) {
  Text result(nullptr);
  Check((dialogs.operator->()->*Method)(nullptr, Text(L"C:\\"), Text(L"All files|*.*"),
                                        VARIANT_TRUE, nullptr, result.Put()));
  return result.Get();
}

struct Method {
  const wchar_t* Name;
  Answer (*Call)(const Dialogs& dialogs);
};

constexpr Method kMethods[] = {
    {L"KRMsgBox", Ask},
    {L"KRMsgBoxEx", AskFreely},
    {L"KRUserLogOn", Do<&IKRXDialog::KRUserLogOn>},
    {L"KRUserLogOnCombo", Do<&IKRXDialog::KRUserLogOnCombo>},
    {L"KRWhoAmI", Show<&IKRXDialog::KRWhoAmI>},
    {L"KRChangePassword", Show<&IKRXDialog::KRChangePassword>},
    {L"KRAddUser", Do<&IKRXDialog::KRAddUser>},
    {L"KRUser", Show<&IKRXDialog::KRUser>},
    {L"KRSelectDirectory", SelectDirectory<&IKRXDialog::KRSelectDirectory>},
    {L"KRSelectDirectoryTouch", SelectDirectory<&IKRXDialog::KRSelectDirectoryTouch>},
    {L"KROpenFile", SelectFile<&IKRXDialog::KROpenFile>},
    {L"KRSaveFileAs", SelectFile<&IKRXDialog::KRSaveFileAs>},
    {L"KROpenFileTouch", SelectFile<&IKRXDialog::KROpenFileTouch>},
};

struct Wishes {
  std::wstring Language;
  DWORD Apartment = COINIT_APARTMENTTHREADED;
  std::vector<std::wstring> Methods;

  bool Include(const std::wstring& name) const {
    return Methods.empty() || std::find(Methods.begin(), Methods.end(), name) != Methods.end();
  }
};

Wishes Read(int count, wchar_t** arguments) {
  Wishes wishes;
  for (int i = 1; i < count; ++i) {
    const std::wstring argument = arguments[i];
    if (argument == L"--language" && i + 1 < count) {
      wishes.Language = arguments[++i];
    } else if (argument == L"--from-another-apartment") {
      wishes.Apartment = COINIT_MULTITHREADED;
    } else {
      wishes.Methods.push_back(argument);
    }
  }
  return wishes;
}

bool Report(const wchar_t* what, const Failure& failure) {
  std::printf("%ls: failed with 0x%08lX\n", what, static_cast<unsigned long>(failure.Status));
  return false;
}

bool Call(const Method& method, const Dialogs& dialogs) try {
  std::printf("%ls: %ls\n", method.Name, method.Call(dialogs).c_str());
  return true;
} catch (const Failure& failure) {
  return Report(method.Name, failure);
}

// Whether all went well.
bool OpenDialogs(const Wishes& wishes) try {
  const Object<IRuntimeSettings> settings(__uuidof(RuntimeSettings));
  if (!wishes.Language.empty()) Check(settings->put_Language(Text(wishes.Language.c_str())));
  const Dialogs dialogs(__uuidof(KRXDialog));
  bool well = true;
  for (const Method& method : kMethods) {
    if (wishes.Include(method.Name)) well &= Call(method, dialogs);
    std::fflush(stdout);
  }
  return well;
} catch (const Failure& failure) {
  return Report(L"the components", failure);
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  const Wishes wishes = Read(count, arguments);
  CoInitializeEx(nullptr, wishes.Apartment);
  const bool well = OpenDialogs(wishes);
  CoUninitialize();
  return well ? 0 : 1;
}
