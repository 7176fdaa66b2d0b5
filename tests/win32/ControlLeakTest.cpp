#include <gtest/gtest.h>

#include "ControlsForm.h"
#include "ListsForm.h"
#include "Person.h"
#include "soak/Growth.h"

namespace krx::test {

namespace {

constexpr int kFormsToWarmUp = 30;

// How to open a form, and how often.
struct Opening {
  void (*Open)(ui::Platform&);
  int Forms;
};

// A form whose list drops down, which is given texts and closes itself as soon as it is shown.
void OpenInputs(ui::Platform& platform) {
  ControlsForm form(platform);
  form.AddNames(20);
  form.Paint = [&] {
    SendMessageW(Person().FindControl(GetActiveWindow(), u"cboName"), CB_SHOWDROPDOWN, TRUE, 0);
    EXPECT_TRUE(form.cboName.DroppedDown);
    form.txtPassword.Text = Password(u"secret");
    form.cboName.Select(1);
    form.cboName.Enabled = false;
    form.Unload();
  };
  form.ShowModal();
}

// A form whose lists are filled, scrolled, given other columns and fonts, and emptied.
void OpenLists(ui::Platform& platform) {
  ListsForm form(platform);
  form.grd.SetRows(ListsForm::FingerRows(50));
  form.lst.Resize(1000);
  form.fra.Caption = u"&Frame";
  form.Paint = [&] {
    form.lvw.SetRows(ListsForm::Rows(100));
    form.lvw.SelectRow(90);
    form.lvw.EnsureVisible(90);
    form.lvw.Columns = {{u"One", 900}};
    form.lst.Font = Font{u"Tahoma", 12};
    form.lst.TopRow = 500;
    form.grd.Clear();
    form.grd.Enabled = false;
    form.Unload();
  };
  form.ShowModal();
}

class FormLeaks : public testing::TestWithParam<Opening> {};

TEST_P(FormLeaks, ManyFormsLeaveNothingBehind) {
  win32::Win32Platform platform;
  const soak::Growth growth =
      soak::GrowthOver("a form", kFormsToWarmUp, GetParam().Forms, [&](int count) {
        for (int i = 0; i < count; ++i)
          GetParam().Open(platform);
      });
  EXPECT_EQ(growth.Leak(), "");
}

INSTANTIATE_TEST_SUITE_P(Controls, FormLeaks,
                         testing::Values(Opening{&OpenInputs, 300}, Opening{&OpenLists, 100}));

}  // namespace

}  // namespace krx::test
