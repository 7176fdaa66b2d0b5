#include "service/KRXDialog.h"

#include <chrono>
#include <vector>

#include "support/DialogTest.h"

namespace krx::test {

using service::KRXDialog;

class DialogService : public MessageBoxTest {
 protected:
  // Every request that a method hands over, instead of a dialog.
  void CatchRequests() {
    apartment.Dialogs.MessageBox = [this](service::Apartment& from,
                                          const service::MessageBoxRequest& request) {
      EXPECT_EQ(&from, &apartment);
      requests.push_back(request);
      return 42;
    };
  }

  std::vector<service::MessageBoxRequest> requests;
};

TEST_F(DialogService, SimpleMethodHandsItsArgumentsOver) {
  CatchRequests();
  EXPECT_EQ(dialog->KRMsgBox(u"text", 5, u"title", u"help", 6), 42);
  ASSERT_EQ(requests.size(), 1u);
  EXPECT_EQ(requests[0].Text, u"text");
  EXPECT_EQ(requests[0].Style, 5);
  EXPECT_EQ(requests[0].Title, u"title");
  EXPECT_EQ(requests[0].HelpFile, u"help");
  EXPECT_EQ(requests[0].Context, 6);
  EXPECT_FALSE(requests[0].Extra.has_value());
}

TEST_F(DialogService, OmittedArgumentsAreEmptyAndZero) {
  CatchRequests();
  dialog->KRMsgBox(u"text");
  EXPECT_EQ(requests.at(0).Style, 0);
  EXPECT_EQ(requests.at(0).Title, u"");
  EXPECT_EQ(requests.at(0).HelpFile, u"");
  EXPECT_EQ(requests.at(0).Context, 0);
}

TEST_F(DialogService, ExtendedMethodHandsFreeButtonsAndSecondsOver) {
  CatchRequests();
  EXPECT_EQ(dialog->KRMsgBoxEx(u"text", 1, u"title", u"help", 2, {u"a", u"b", u"c", 9}), 42);
  ASSERT_TRUE(requests.at(0).Extra.has_value());
  EXPECT_EQ(requests[0].Extra->Button1, u"a");
  EXPECT_EQ(requests[0].Extra->Button2, u"b");
  EXPECT_EQ(requests[0].Extra->Button3, u"c");
  EXPECT_EQ(requests[0].Extra->AutoActivation, 9);
}

TEST_F(DialogService, MethodWithoutItsDialogIsNotImplemented) {
  apartment.Dialogs = {};
  EXPECT_EQ(StatusOf([this] { dialog->KRMsgBox(u"m"); }), 0x80004001u);
  EXPECT_EQ(StatusOf([this] { dialog->KRMsgBoxEx(u"m", 0, u"", u"", 0, {}); }), 0x80004001u);
}

TEST_F(DialogService, FreeTextsReachTheBoxBeforeTheStandardTexts) {
  // A set-up in the other order would put OK in the place of the free text.
  EXPECT_EQ(Show({.Style = 0, .Button1 = u"Start"},
                 [](Operator& op) {
                   EXPECT_EQ(op.Get<ui::KRXKey>(u"keyButton(0)").Caption(), u"Start");
                   op.Click(u"keyButton(0)");
                 }),
            11);
}

TEST_F(DialogService, SettingsMadeThroughOneObjectHoldForBoxesOfAnother) {
  const auto second = KRXDialog::Create(apartment);
  second->Settings().ButtonMinHeight = 900;
  Show({}, [](Operator& op) {
    EXPECT_EQ(op.Get(u"keyButton(0)").Height(), 900);
    op.Click(u"keyClose");
  });
}

TEST_F(DialogService, NothingIsCarriedFromOneCallToTheNext) {
  Show({.Button1 = u"A", .Button2 = u"B", .AutoActivation = 1},
       [](Operator& op) { op.Click(u"keyButton(1)"); });
  Show({}, [](Operator& op) {
    EXPECT_EQ(op.Get<ui::KRXKey>(u"keyButton(0)").Caption(), u"OK");
    EXPECT_FALSE(op.Get(u"keyButton(1)").Visible());
    op.Wait(std::chrono::hours(1));
    EXPECT_TRUE(op.Form().Visible());
    op.Click(u"keyClose");
  });
}

TEST_F(DialogService, EmptyTitleAfterTheResetIsError91) {
  KRXDialog::Create(apartment).reset();
  EXPECT_EQ(StatusOf([this] { Open({.Title = u""}); }), kObjectNotSet);
}

TEST_F(DialogService, BoxWithATitleWorksAfterTheResetWithTheLastSettings) {
  dialog->Settings().ButtonMinHeight = 777;
  KRXDialog::Create(apartment).reset();
  Show({}, [](Operator& op) {
    EXPECT_EQ(op.Get(u"keyButton(0)").Height(), 777);
    EXPECT_EQ(op.Get<ui::KRXIndex>(u"idxCaption").Font().Name, u"KRDialogsCaption");
    op.Click(u"keyClose");
  });
}

TEST_F(DialogService, OtherObjectMayEndWhileABoxIsOpen) {
  auto second = KRXDialog::Create(apartment);
  EXPECT_EQ(Show({.Style = 4},
                 [&](Operator& op) {
                   second.reset();
                   EXPECT_EQ(apartment.Shared.DialogService, nullptr);
                   op.Click(u"keyButton(1)");
                 }),
            7);
}

TEST_F(DialogService, ObjectMayEndWhileItsOwnBoxIsOpen) {
  auto second = KRXDialog::Create(apartment);
  platform.Expect(u"FMessageBox", [&](Operator& op) {
    second.reset();
    op.Click(u"keyButton(0)");
  });
  EXPECT_EQ(second->KRMsgBox(u"m", 4, u"t"), 6);
}

TEST_F(DialogService, FailingNameOfTheHostApplicationReachesTheCaller) {
  dialog->SetHostApp(std::make_shared<FakeApplication>(log, u"Panel"));
  // The name is the call behind both services, six fonts and the texts OK and Help.
  log.FailCall(1 + 12 + 1 + 2 + 1, false);
  const auto error = ErrorOf([this] { Open({.Title = u""}); });
  ASSERT_TRUE(error);
  EXPECT_EQ(log.Entries().at(16), "EXEName");
  EXPECT_EQ(error->Description(), CallLog::FailureOf(17).Description());
}

TEST_F(DialogService, ApplicationMayBeReplacedWhileItIsAskedForItsName) {
  struct Restless : host::Application {
    explicit Restless(KRXDialog& to_change) : dialog(to_change) {}
    String EXEName() override {
      name = u"Panel";
      dialog.SetHostApp(nullptr);
      return name;
    }
    KRXDialog& dialog;
    String name;
  };
  dialog->SetHostApp(std::make_shared<Restless>(*dialog));
  Show({.Title = u""}, [](Operator& op) {
    EXPECT_EQ(op.Get<ui::KRXIndex>(u"idxCaption").Text(), u"Panel");
    op.Click(u"keyClose");
  });
}

}  // namespace krx::test
