// A host that chose no controls, as this program: the dialogs bring theirs.

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <cwctype>
#include <map>
#include <string>

#include "FolderTree.h"
#include "client/Dialogs.h"
#include "soak/Forms.h"

namespace krx::soak {
namespace {

// Path of the module with the procedure of the window's class; the system's own ones may be in
// none.
std::wstring HomeOf(HWND window) {
  const auto procedure = reinterpret_cast<const wchar_t*>(GetClassLongPtrW(window, GCLP_WNDPROC));
  HMODULE module = nullptr;
  if (!GetModuleHandleExW(
          GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
          procedure, &module))
    return L"nowhere";
  std::array<wchar_t, 512> path{};
  GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
  std::wstring text = path.data();
  std::transform(text.begin(), text.end(), text.begin(), std::towlower);
  return text;
}

// The system keeps each version side by side, in a folder that carries its name.
bool IsVersionSix(const std::wstring& home) {
  return home.find(L"common-controls_6595b64144ccf1df_6.") != std::wstring::npos;
}

std::wstring ClassOf(HWND window) {
  std::array<wchar_t, 64> name{};
  GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  return name.data();
}

// Of the form's windows by class; one that is not of version six goes before others.
std::map<std::wstring, std::wstring> homes;

BOOL CALLBACK See(HWND window, LPARAM) {
  std::wstring& home = homes[ClassOf(window)];
  if (home.empty() || IsVersionSix(home)) home = HomeOf(window);
  return TRUE;
}

void CALLBACK SeeAndCancel(HWND, UINT, UINT_PTR, DWORD) {
  const HWND key = ControlOnShow(L"keyCancel");
  if (!key || !homes.empty()) return;
  EnumChildWindows(FormOnShow(), See, 0);
  Click(key);
}

TEST(Host, WithoutAManifestGetsTheControlsOfTheComponent) {
  const HWND own =
      CreateWindowExW(0, L"Button", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
  ASSERT_FALSE(IsVersionSix(HomeOf(own))) << "this program has a manifest; the test shows nothing";
  const test::FolderTree tree;
  const client::BasicString folder(tree.WidePath());
  const client::Automation automation;
  client::Dialogs dialogs;
  ASSERT_TRUE(dialogs);
  {
    const Answering answering(SeeAndCancel, 1);
    BSTR result = nullptr;
    EXPECT_EQ(dialogs->KROpenFile(nullptr, folder, nullptr, VARIANT_TRUE, nullptr, &result), S_OK);
    SysFreeString(result);
  }
  for (const wchar_t* const kind : {L"Button", L"ComboBox", L"Edit", L"SysListView32"})
    EXPECT_TRUE(IsVersionSix(homes[kind])) << kind << L" of " << homes[kind];
  const HWND after =
      CreateWindowExW(0, L"Button", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
  EXPECT_EQ(HomeOf(after), HomeOf(own));
  for (const HWND window : {own, after})
    DestroyWindow(window);
}

}  // namespace
}  // namespace krx::soak
