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

// Path of the module that the window's class comes from.
std::wstring HomeOf(HWND window) {
  std::array<wchar_t, 512> path{};
  GetModuleFileNameW(reinterpret_cast<HMODULE>(GetClassLongPtrW(window, GCLP_HMODULE)), path.data(),
                     static_cast<DWORD>(path.size()));
  std::wstring text = path.data();
  std::transform(text.begin(), text.end(), text.begin(), std::towlower);
  return text;
}

// The system keeps each version side by side, in a folder that carries its name.
bool IsVersionSix(HWND window) {
  return HomeOf(window).find(L"common-controls_6595b64144ccf1df_6.") != std::wstring::npos;
}

std::wstring ClassOf(HWND window) {
  std::array<wchar_t, 64> name{};
  GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  return name.data();
}

std::map<std::wstring, bool> seen;  // classes of the form's windows: all of them version six

BOOL CALLBACK See(HWND window, LPARAM) {
  const bool six = IsVersionSix(window);
  const auto [entry, first] = seen.emplace(ClassOf(window), six);
  if (!first) entry->second = entry->second && six;
  return TRUE;
}

void CALLBACK SeeAndCancel(HWND, UINT, UINT_PTR, DWORD) {
  const HWND key = ControlOnShow(L"keyCancel");
  if (!key || !seen.empty()) return;
  EnumChildWindows(FormOnShow(), See, 0);
  Click(key);
}

TEST(Host, WithoutAManifestGetsTheControlsOfTheComponent) {
  const HWND own =
      CreateWindowExW(0, L"Button", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
  ASSERT_FALSE(IsVersionSix(own)) << "this program has a manifest; the test shows nothing";
  const test::FolderTree tree;
  const String path = tree.Path();
  const client::BasicString folder(std::wstring(path.begin(), path.end()));
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
    EXPECT_TRUE(seen[kind]) << "a window of the form";
  const HWND after =
      CreateWindowExW(0, L"Button", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
  EXPECT_EQ(HomeOf(after), HomeOf(own));
  for (const HWND window : {own, after})
    DestroyWindow(window);
}

}  // namespace
}  // namespace krx::soak
