#pragma once

#include <windows.h>

#include <KorvelRuntime.h>

#include <filesystem>
#include <string_view>

#include "com/ComPtr.h"
#include "com/Errors.h"
#include "com/Text.h"

namespace krx::runtime {

// Path of the component that lies beside the test program.
std::filesystem::path ComponentFile();

// The component, loaded from a fresh folder of its own: it has its own state, and text files can be
// laid beside it. Unloaded and deleted at the end.
class ModuleCopy {
 public:
  ModuleCopy();
  ~ModuleCopy();
  ModuleCopy(const ModuleCopy&) = delete;
  ModuleCopy& operator=(const ModuleCopy&) = delete;

  const std::filesystem::path& Folder() const { return folder_; }
  // Lays a file beside the component.
  void Write(const std::wstring& name, std::string_view bytes) const;

  // Status of the entry point with this name, which takes no arguments.
  HRESULT Call(const char* entry_point) const;
  HRESULT GetClassObject(REFCLSID id, REFIID iid, void** object) const;

  // A new object of a class; the class is given by its name in the type library.
  template <class Class, class Interface>
  com::ComPtr<Interface> Create() const {
    com::ComPtr<IClassFactory> factory;
    com::Check(GetClassObject(__uuidof(Class), IID_IClassFactory, factory.PutVoid()));
    com::ComPtr<Interface> object;
    com::Check(factory->CreateInstance(nullptr, __uuidof(Interface), object.PutVoid()));
    return object;
  }
  com::ComPtr<ITextService> Texts() const { return Create<::TextService, ITextService>(); }
  com::ComPtr<IFontService> Fonts() const { return Create<::FontService, IFontService>(); }
  com::ComPtr<IRuntimeSettings> Settings() const {
    return Create<::RuntimeSettings, IRuntimeSettings>();
  }

 private:
  std::filesystem::path folder_;
  HMODULE module_ = nullptr;
};

// The calls of the services in the terms of the tests; a failing call raises Error with source and
// description of the object.
String GetText(ITextService& texts, StringView key, long group);
String ResolveText(ITextService& texts, StringView reference);
void SetLanguage(IRuntimeSettings& settings, StringView name);
String Language(IRuntimeSettings& settings);

// The failure of an action; an action that succeeds raises std::logic_error.
template <class Action>
Error FailureOf(Action action) {
  try {
    action();
  } catch (const Error& error) {
    return error;
  }
  throw std::logic_error("the action should have failed");
}

}  // namespace krx::runtime
