#pragma once

#include <gtest/gtest.h>
#include <ole2.h>

#include <memory>
#include <string>

#include "KRXDialogs.h"
#include "com/ComPtr.h"
#include "com/Text.h"
#include "com/Variant.h"

namespace krx::tests {

// KRXDialogs.dll of the test program's own folder, loaded as long as this lives.
class LoadedComponent {
 public:
  LoadedComponent();
  ~LoadedComponent();
  LoadedComponent(const LoadedComponent&) = delete;
  LoadedComponent& operator=(const LoadedComponent&) = delete;

  static std::wstring Path();
  HRESULT GetClassObject(REFCLSID id, REFIID iid, void** object) const;
  HRESULT CanUnload() const;
  HRESULT Register() const;
  HRESULT Unregister() const;
  // A new dialog object through the class object; empty and a failed test when that fails.
  com::ComPtr<IKRXDialog> Create() const;

 private:
  template <class Function>
  Function Entry(const char* name) const;

  HMODULE module_;
};

inline constexpr HRESULT kTypeMismatch = static_cast<HRESULT>(0x800A000D);
inline constexpr HRESULT kObjectNotSet = static_cast<HRESULT>(0x800A005B);

// A message box whose style makes it fail (type mismatch) before it opens.
inline constexpr LONG kFailingStyle = 256;

// The calling thread inside COM as a single-threaded apartment.
class Sta {
 public:
  Sta() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~Sta() { CoUninitialize(); }
  Sta(const Sta&) = delete;
  Sta& operator=(const Sta&) = delete;
};

// A test inside COM with the component loaded; at its end, out of COM, nothing may be in use.
class ComponentTest : public ::testing::Test {
 protected:
  ComponentTest() : sta_(std::make_unique<Sta>()) {}
  ~ComponentTest() override {
    LeaveCom();
    EXPECT_EQ(Module.CanUnload(), S_OK);
  }
  void LeaveCom() { sta_.reset(); }

  LoadedComponent Module;

 private:
  std::unique_ptr<Sta> sta_;
};

// Source, description and help file of the thread's error object, which is taken away.
struct ErrorTexts {
  bool Present = false;
  String Source;
  String Description;
};
ErrorTexts TakeError();

String FontClassButton(IKRXDialog& dialog);
float ButtonMinHeight(IKRXDialog& dialog);

// One late-bound call by name; arguments in their natural order.
struct LateResult {
  HRESULT Status = S_OK;
  com::Variant Value;
  EXCEPINFO Failure{};
  UINT WrongArgument = 0;
  String Source;
  String Description;
};
LateResult CallByName(IDispatch& object, const wchar_t* name, WORD flags,
                      std::vector<VARIANT> arguments = {},
                      const std::vector<const wchar_t*>& names = {});

VARIANT Int(LONG value);
VARIANT Text(BSTR value);
VARIANT Missing();
VARIANT Reference(VARIANT& value);

}  // namespace krx::tests
