// Dialogs without the keyboard have no window more than they had before there was one.
#include "panel/Board.h"
#include "users/UsersTest.h"

namespace krx::drive {
namespace {

constexpr const wchar_t* kServer =
    L"Software\\Classes\\CLSID\\{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C2070}\\InprocServer32";

// While it lives the runtime's class of panel settings cannot be created.
class WithoutClass {
 public:
  WithoutClass() {
    DWORD size = sizeof module_;
    if (RegGetValueW(HKEY_LOCAL_MACHINE, kServer, nullptr, RRF_RT_REG_SZ, nullptr, module_,
                     &size) != ERROR_SUCCESS)
      throw std::runtime_error("the runtime is not registered");
    Set(L"missing.dll");
  }
  ~WithoutClass() { Set(module_); }
  WithoutClass(const WithoutClass&) = delete;
  WithoutClass& operator=(const WithoutClass&) = delete;

 private:
  static void Set(const std::wstring& module) {
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, kServer, nullptr, REG_SZ, module.c_str(),
                    static_cast<DWORD>((module.size() + 1) * sizeof(wchar_t)));
  }
  wchar_t module_[MAX_PATH]{};
};

BOOL CALLBACK Count(HWND, LPARAM count) {
  ++*reinterpret_cast<int*>(count);
  return TRUE;
}

struct Windows {
  int OfForm = 0;    // itself and all within it
  int OfThread = 0;  // at the top, seen or not
  bool operator==(const Windows&) const = default;
};

void PrintTo(const Windows& windows, std::ostream* out) {
  *out << windows.OfForm << " and " << windows.OfThread;
}

// A dialog by its call and the windows that it has had since long before.
struct Call {
  const wchar_t* Form;
  const char* Script;
  int Windows;
};

void PrintTo(const Call& call, std::ostream* out) {
  *out << Narrow(call.Form);
}

class WithoutKeyboard : public UsersTest, public testing::WithParamInterface<Call> {
 protected:
  // How many windows the dialog has when its first statement is this one.
  Windows Of(const std::string& first) {
    RunUserScript(first + "LogOn \"admin\"\r\nDialogs." + GetParam().Script + "\r\n");
    const Window form = WaitForForm(GetParam().Form);
    form.WaitUntilAtRest();
    Windows windows{static_cast<int>(form.Descendants().size()) + 1, 0};
    EnumThreadWindows(GetWindowThreadProcessId(form.Handle(), nullptr), Count,
                      reinterpret_cast<LPARAM>(&windows.OfThread));
    PressKey(L"Esc");
    EXPECT_EQ(Printed(), Lines{"end"});
    return windows;
  }
};

TEST_P(WithoutKeyboard, ADialogHasNoWindowMore) {
  const std::string panel = "CreateObject(\"KorvelRuntime.PanelSettings\").Keyboard = ";
  const Windows never = Of(panel + "\"never\"\r\n");
  EXPECT_EQ(never.OfForm, GetParam().Windows);
  EXPECT_EQ(Of(panel + "\"touch\"\r\n"), never) << "until a finger comes";
  const WithoutClass without;
  EXPECT_EQ(Of(""), never);
}

INSTANTIATE_TEST_SUITE_P(
    Dialogs, WithoutKeyboard,
    testing::Values(Call{L"FMessageBox", "KRMsgBox \"Text\"", 5}, Call{L"FLogOn", "KRUserLogOn", 8},
                    Call{L"FChangePassword", "KRChangePassword", 11},
                    Call{L"FAddUser", "KRAddUser", 11},
                    Call{L"FFileSelect", "KROpenFile \"\", \"C:\\windows\", \"\"", 12}),
    [](const auto& call) { return Narrow(call.param.Form); });

}  // namespace
}  // namespace krx::drive
