#include "directory/PlantServer.h"
#include "users/UsersTest.h"

namespace krx::drive {
namespace {

// The dialogs on a panel whose users come from a server with many of them.
class PlantDialogTest : public UsersTest {
 protected:
  void SetUp() override {
    UsersTest::SetUp();
    Store.emplace(server.Rules());
    Store->Provision(kAdministrator, kPassword);
  }

  const test::PlantServer server{"operators=10000"};
};

TEST_F(PlantDialogTest, LogOnByListShowsTenThousandUsersAndLogsOneOn) {
  RunDialog("KRUserLogOnCombo()");
  const Window form = Form(L"FLogOnCombo", L"cboName");
  const Window names = form.Child(L"cboName");
  EXPECT_EQ(SendMessageW(names.Handle(), CB_GETCOUNT, 0, 0), 10'009);
  PressKey(L"Home");
  names.WaitForText(kAdministrator);
  PressKey(L"End");
  names.WaitForText(L"ruhend");
  PressKey(L"Up");
  names.WaitForText(L"op10000");
  Move(form, L"Enter", L"txtPassword");
  Type(form, L"txtPassword", kPassword);
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), (Lines{"True, op10000", "end"}));
}

}  // namespace
}  // namespace krx::drive
