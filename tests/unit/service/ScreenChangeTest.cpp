// A dialog whose screen changes while it is up looks as if it had been opened there.

#include <functional>

#include "support/DialogTest.h"

namespace krx::test {

namespace {

struct Look {
  Size Form;
  std::vector<std::pair<String, Rect>> Controls;
  int Cross = 0;
  bool operator==(const Look&) const = default;
};

Look LookOf(headless::Operator& op) {
  Look look{{op.Form().Width(), op.Form().Height()}, {}, 0};
  for (ui::Component* const component : op.Form().Components()) {
    const auto* const control = dynamic_cast<ui::Control*>(component);
    if (control && control->Name() != u"lblSize")
      look.Controls.emplace_back(control->Name(), control->Bounds());
  }
  look.Cross = op.Get<ui::KRXKey>(u"keyClose").Picture().Pixels;
  return look;
}

struct Call {
  String Form;
  std::function<void(service::KRXDialog&)> Open;
};

void PrintTo(const Call& call, std::ostream* out) {
  *out << ToUtf8(call.Form);
}

class ScreenChange : public DialogTest, public ::testing::WithParamInterface<Call> {
 protected:
  ScreenChange() {
    runtime.Users.Current = {.Name = u"anna", .ClassName = u"Shift", .LoggedOn = true};
    runtime.Users.Records[u"anna"] = {};
    runtime.Users.Names = {u"anna"};
    runtime.Users.AdministrationMode = 1;
    platform.Machine.AddFolder(u"C:\\Data");
  }

  // The screen becomes smaller, with four times the pixels to the inch.
  void ChangeScreen() {
    platform.PixelSize = 3.75f;
    platform.Area = {0, 0, 7680, 5760};
  }

  // How the dialog looks after the script.
  Look Show(const std::function<void(headless::Operator&)>& script) {
    Look look;
    platform.Expect(GetParam().Form, [&](headless::Operator& op) {
      script(op);
      look = LookOf(op);
      op.Form().Hide();
    });
    GetParam().Open(*dialog);
    return look;
  }
};

TEST_P(ScreenChange, LaysTheDialogOutAnew) {
  const Look before = Show([&](headless::Operator& op) {
    ChangeScreen();
    op.Form().ScreenChanged();
  });
  const Look opened_there = Show([](headless::Operator&) {});
  EXPECT_EQ(before.Form, opened_there.Form);
  EXPECT_EQ(before.Controls, opened_there.Controls);
  EXPECT_EQ(before.Cross, opened_there.Cross);
}

TEST_P(ScreenChange, LeavesADialogAsItIsWhenNothingChanged) {
  Look opened;
  const Look after = Show([&](headless::Operator& op) {
    opened = LookOf(op);
    op.Form().ScreenChanged();
  });
  EXPECT_EQ(after, opened);
}

const Call kCalls[] = {
    {u"FMessageBox",
     [](service::KRXDialog& dialog) {
       dialog.KRMsgBox(String(4'000, u'm'), 3 + 48, String(150, u't'), u"help");
     }},
    {u"FLogOn", [](service::KRXDialog& dialog) { dialog.KRUserLogOn(); }},
    {u"FLogOnCombo", [](service::KRXDialog& dialog) { dialog.KRUserLogOnCombo(); }},
    {u"FChangePassword", [](service::KRXDialog& dialog) { dialog.KRChangePassword(); }},
    {u"FWhoAmI", [](service::KRXDialog& dialog) { dialog.KRWhoAmI(); }},
    {u"FAddUser", [](service::KRXDialog& dialog) { dialog.KRAddUser(); }},
    {u"FUser", [](service::KRXDialog& dialog) { dialog.KRUser(); }},
    {u"FSelectDirectory",
     [](service::KRXDialog& dialog) {
       dialog.KRSelectDirectory({u"C:\\Data", true, u""});
     }},
    {u"FFileSelect",
     [](service::KRXDialog& dialog) {
       dialog.KROpenFile({u"", u"C:\\Data", u"", true, u""});
     }},
    {u"FDirectorySelectTouch",
     [](service::KRXDialog& dialog) {
       dialog.KRSelectDirectoryTouch({u"C:\\Data", true, u""});
     }},
    {u"FFileSelectTouch", [](service::KRXDialog& dialog) {
       dialog.KROpenFileTouch({u"", u"C:\\Data", u"", true, u""});
     }}};

INSTANTIATE_TEST_SUITE_P(Dialogs, ScreenChange, ::testing::ValuesIn(kCalls));

}  // namespace

}  // namespace krx::test
