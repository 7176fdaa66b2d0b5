#include <gtest/gtest.h>

#include "ControlsForm.h"
#include "ResourceCounts.h"

namespace krx::test {

namespace {

constexpr int kWarmUp = 50;
constexpr int kForms = 1000;
constexpr int kNames = 20;

// Every form opens its list, is given texts and closes itself as soon as it is shown.
void OpenForms(ui::Platform& platform, int count) {
  for (int i = 0; i < count; ++i) {
    ControlsForm form(platform);
    form.AddNames(kNames);
    form.Paint = [&] {
      form.txtPassword.Text = Password(u"secret");
      form.cboName.Select(1);
      form.cboName.Enabled = false;
      form.Unload();
    };
    form.ShowModal();
  }
}

TEST(Leaks, AThousandFormsWithAllControlsLeaveNothingBehind) {
  win32::Win32Platform platform;
  OpenForms(platform, kWarmUp);
  const int windows = Windows();
  const int objects = GdiObjects();
  const int handles = KernelHandles();
  const int atoms = NameAtoms();
  const int blocks = HeapBlocks();
  ASSERT_GT(handles, 0);
  ASSERT_GT(blocks, 0);
  OpenForms(platform, kForms);
  EXPECT_EQ(Windows(), windows);
  EXPECT_EQ(GdiObjects(), objects);
  EXPECT_EQ(KernelHandles(), handles);
  EXPECT_EQ(NameAtoms(), atoms);
  // A block that every form leaves would make a thousand.
  EXPECT_LT(HeapBlocks() - blocks, kForms / 10);
}

}  // namespace

}  // namespace krx::test
