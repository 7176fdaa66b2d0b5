#include <gtest/gtest.h>
#include <windows.h>

#include "TestForm.h"
#include "msgbox/FMessageBox.h"
#include "service/KRXDialog.h"
#include "soak/Growth.h"

namespace krx::test {

namespace {

constexpr int kBoxesToWarmUp = 50;
constexpr int kBoxes = 1000;

// Every box closes itself as soon as it is shown.
void OpenBoxes(service::Apartment& apartment, int count) {
  for (int i = 0; i < count; ++i) {
    msgbox::FMessageBox box(apartment);
    box.DisplayIcon(3 | 32);
    box.SetFonts();
    box.SetTexts(u"Text of the box", 3 | 32, u"Title", u"help", 0);
    box.CalcPositions();
    box.Paint = [&] { box.Unload(); };
    box.ShowModal();
  }
}

TEST(Leaks, AThousandBoxesLeaveNothingBehind) {
  win32::Win32Platform platform;
  FakeRuntime runtime;
  service::Apartment apartment(platform, runtime);
  const auto dialog = service::KRXDialog::Create(apartment);
  const soak::Growth growth = soak::GrowthOver("a box", kBoxesToWarmUp, kBoxes,
                                               [&](int count) { OpenBoxes(apartment, count); });
  EXPECT_EQ(growth.Leak(), "");
  EXPECT_EQ(GlobalFindAtomW(L"FMessageBox"), 0);
  EXPECT_EQ(GlobalFindAtomW(L"keyButton(1)"), 0);
}

TEST(Leaks, TheLastPlatformTakesTheWindowClassesAway) {
  WNDCLASSEXW info{};
  info.cbSize = sizeof info;
  const HINSTANCE module = GetModuleHandleW(nullptr);
  {
    const win32::Win32Platform first;
    { const win32::Win32Platform second; }
    EXPECT_TRUE(GetClassInfoExW(module, L"KRXForm", &info));
  }
  EXPECT_FALSE(GetClassInfoExW(module, L"KRXForm", &info));
  EXPECT_FALSE(GetClassInfoExW(module, L"KRXPane", &info));
}

}  // namespace

}  // namespace krx::test
