// Opens and cancels every other dialog many times in one process and counts what stays behind.

#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <cstdlib>
#include <functional>
#include <optional>
#include <string>

#include "client/Dialogs.h"
#include "soak/Administrator.h"
#include "soak/Forms.h"
#include "soak/Growth.h"

namespace krx::soak {
namespace {

constexpr int kWarmUp = 30;
constexpr int kCycles = 200;

// Longer runs say how many in the environment.
int Cycles() {
  std::array<char, 16> wanted{};
  GetEnvironmentVariableA("KRX_SOAK_CYCLES", wanted.data(), static_cast<DWORD>(wanted.size()));
  const int cycles = std::atoi(wanted.data());
  return cycles > 0 ? cycles : kCycles;
}

struct DialogCase {
  const char* Method;
  std::function<HRESULT(IKRXDialog&)> Open;
};

void PrintTo(const DialogCase& dialog, std::ostream* out) {
  *out << dialog.Method;
}

using FileMethod = HRESULT (STDMETHODCALLTYPE IKRXDialog::*)(BSTR, BSTR, BSTR, VARIANT_BOOL, BSTR,
                                                             BSTR*);
using DirectoryMethod = HRESULT (STDMETHODCALLTYPE IKRXDialog::*)(BSTR, VARIANT_BOOL, BSTR, BSTR*);
using UserMethod = HRESULT (STDMETHODCALLTYPE IKRXDialog::*)(VARIANT_BOOL*);

const client::BasicString& Folder() {
  static const client::BasicString folder(L"C:\\windows");
  return folder;
}

DialogCase File(const char* name, FileMethod method) {
  return {name, [method](IKRXDialog& dialogs) {
            BSTR result = nullptr;
            const HRESULT status =
                (dialogs.*method)(nullptr, Folder(), nullptr, VARIANT_TRUE, nullptr, &result);
            SysFreeString(result);
            return status;
          }};
}

DialogCase Directory(const char* name, DirectoryMethod method) {
  return {name, [method](IKRXDialog& dialogs) {
            BSTR result = nullptr;
            const HRESULT status = (dialogs.*method)(Folder(), VARIANT_TRUE, nullptr, &result);
            SysFreeString(result);
            return status;
          }};
}

DialogCase User(const char* name, UserMethod method) {
  return {name, [method](IKRXDialog& dialogs) {
            VARIANT_BOOL result = VARIANT_FALSE;
            return (dialogs.*method)(&result);
          }};
}

bool shown = false;  // the dialog of the call that is running

// Gives a form of this thread up as long as it is there; touch dialogs know no other way than their
// key.
void CALLBACK Cancel(HWND, UINT, UINT_PTR, DWORD) {
  const HWND form = FormOnShow();
  if (!form) return;
  shown = true;
  const HWND key = ControlOnShow(L"keyCancel");
  if (key) {
    Click(key);
  } else {
    PressEscape(form);
  }
}

// Some dialogs open for an administrator only. The runtime keeps to the store that it has used
// first, so there is one for all.
class DialogSoak : public testing::TestWithParam<DialogCase> {
 protected:
  static void SetUpTestSuite() { administrator_.emplace(); }
  static void TearDownTestSuite() { administrator_.reset(); }

 private:
  static std::optional<Administrator> administrator_;
};

std::optional<Administrator> DialogSoak::administrator_;

TEST_P(DialogSoak, LeavesNothingBehind) {
  const client::Automation automation;
  client::Dialogs dialogs;
  ASSERT_TRUE(dialogs);
  int failed = 0;
  int unseen = 0;
  const Answering answering(Cancel, 10);
  const Growth growth = GrowthOver(GetParam().Method, kWarmUp, Cycles(), [&](int count) {
    for (int i = 0; i < count; ++i) {
      shown = false;
      if (GetParam().Open(*dialogs.operator->()) != S_OK) ++failed;
      if (!shown) ++unseen;
    }
  });
  EXPECT_EQ(failed, 0);
  EXPECT_EQ(unseen, 0);
  EXPECT_EQ(growth.Leak(), "");
}

INSTANTIATE_TEST_SUITE_P(
    All, DialogSoak,
    testing::Values(File("KROpenFile", &IKRXDialog::KROpenFile),
                    File("KROpenFileTouch", &IKRXDialog::KROpenFileTouch),
                    Directory("KRSelectDirectory", &IKRXDialog::KRSelectDirectory),
                    Directory("KRSelectDirectoryTouch", &IKRXDialog::KRSelectDirectoryTouch),
                    User("KRUserLogOn", &IKRXDialog::KRUserLogOn),
                    User("KRUserLogOnCombo", &IKRXDialog::KRUserLogOnCombo),
                    User("KRAddUser", &IKRXDialog::KRAddUser),
                    DialogCase{"KRUser", [](IKRXDialog& dialogs) { return dialogs.KRUser(); }},
                    DialogCase{"KRWhoAmI", [](IKRXDialog& dialogs) { return dialogs.KRWhoAmI(); }},
                    DialogCase{"KRChangePassword",
                               [](IKRXDialog& dialogs) { return dialogs.KRChangePassword(); }}),
    [](const auto& test) { return std::string(test.param.Method); });

}  // namespace
}  // namespace krx::soak
