#include <gtest/gtest.h>
#include <windows.h>

#include "ResourceCounts.h"
#include "TestForm.h"
#include "msgbox/FMessageBox.h"
#include "service/KRXDialog.h"

namespace krx::test {

namespace {

constexpr int kWarmUp = 50;
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
  OpenBoxes(apartment, kWarmUp);
  const int windows = Windows();
  const int objects = GdiObjects();
  const int handles = KernelHandles();
  ASSERT_GT(handles, 0);
  OpenBoxes(apartment, kBoxes);
  EXPECT_EQ(Windows(), windows);
  EXPECT_EQ(GdiObjects(), objects);
  EXPECT_EQ(KernelHandles(), handles);
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
