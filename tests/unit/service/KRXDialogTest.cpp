#include "service/KRXDialog.h"

#include <chrono>

#include "support/DialogTest.h"

namespace krx::test {

using service::KRXDialog;

class DialogService : public MessageBoxTest {
 protected:
  // The next box, and what it shows.
  void ExpectBox(Script check) {
    platform.Expect(u"FMessageBox", [check = std::move(check)](Operator& op) {
      EXPECT_EQ(op.Get<ui::KRXIndex>(u"idxMessage").Text(), u"text");
      check(op);
      op.Click(u"keyButton(0)");
    });
  }
  static StringView CaptionOf(Operator& op, StringView key) {
    return op.Get<ui::KRXKey>(key).Caption();
  }
};

TEST_F(DialogService, SimpleMethodHandsItsArgumentsOver) {
  ExpectBox([](Operator& op) {
    EXPECT_EQ(op.Get<ui::KRXIndex>(u"idxCaption").Text(), u"title");
    EXPECT_EQ(op.Get<ui::PictureBox>(u"picIcon").Picture()->Icon.Id, ui::kQuestionIcon);
    EXPECT_EQ(CaptionOf(op, u"keyButton(0)"), u"Retry");
    EXPECT_TRUE(op.Get(u"keyHelp").Visible());
  });
  EXPECT_EQ(dialog->KRMsgBox(u"text", kRetryCancel + kQuestion, u"title", u"help", 6), 4);
}

TEST_F(DialogService, OmittedArgumentsAreEmptyAndZero) {
  ExpectBox([](Operator& op) {
    EXPECT_EQ(op.Get<ui::KRXIndex>(u"idxCaption").Text(), u"KRXDialogs");
    EXPECT_FALSE(op.Get(u"picIcon").Visible());
    EXPECT_EQ(CaptionOf(op, u"keyButton(0)"), u"OK");
    EXPECT_FALSE(op.Get(u"keyHelp").Visible());
    op.Wait(std::chrono::hours(1));
    EXPECT_TRUE(op.Form().Visible()) << "it answers itself";
  });
  EXPECT_EQ(dialog->KRMsgBox(u"text"), 1);
}

TEST_F(DialogService, ExtendedMethodHandsFreeButtonsAndSecondsOver) {
  platform.Expect(u"FMessageBox", [](Operator& op) {
    EXPECT_EQ(CaptionOf(op, u"keyButton(0)"), u"a");
    EXPECT_EQ(CaptionOf(op, u"keyButton(1)"), u"b");
    EXPECT_EQ(CaptionOf(op, u"keyButton(2)"), u"c");
    EXPECT_TRUE(op.Get(u"keyHelp").Visible());
    op.Wait(std::chrono::milliseconds(8999));
    EXPECT_TRUE(op.Form().Visible());
    op.Wait(std::chrono::milliseconds(1));
  });
  EXPECT_EQ(dialog->KRMsgBoxEx(u"text", 0, u"title", u"help", 2, {u"a", u"b", u"c", 9}), 11);
}

TEST_F(DialogService, FreeTextsReachTheBoxBeforeTheStandardTexts) {
  // A set-up in the other order would put OK in the place of the free text.
  EXPECT_EQ(Show({.Style = kOKOnly, .Button1 = u"Start"},
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
  EXPECT_EQ(Show({.Style = kYesNo},
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
