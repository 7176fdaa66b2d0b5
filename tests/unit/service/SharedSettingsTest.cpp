#include <memory>

#include "service/KRXDialog.h"
#include "support/DialogTest.h"

namespace krx::test {

using service::KRXDialog;

class SharedSettings : public DialogTest {
 protected:
  const service::SharedSettings& shared = apartment.Shared;

  void ExpectDefaults() {
    EXPECT_EQ(shared.FontClassCaption, u"KRDialogsCaption");
    EXPECT_EQ(shared.FontClassText, u"KRDialogsText");
    EXPECT_EQ(shared.FontClassButton, u"KRDialogsButton");
    EXPECT_EQ(shared.FontClassInput, u"KRDialogsInput");
    EXPECT_EQ(shared.ButtonMinHeight, 0);
    EXPECT_EQ(shared.CaptionMinHeight, 0);
    ASSERT_TRUE(shared.HostApplication);
    EXPECT_EQ(shared.HostApplication->EXEName(), u"KRXDialogs");
  }
};

TEST_F(SharedSettings, FirstObjectSetsTheDefaults) {
  ExpectDefaults();
  EXPECT_EQ(shared.DialogService, dialog);
}

TEST_F(SharedSettings, AreEmptyBeforeTheFirstObject) {
  const service::Apartment fresh(platform, runtime);
  EXPECT_EQ(fresh.Shared.DialogService, nullptr);
  EXPECT_EQ(fresh.Shared.HostApplication, nullptr);
}

TEST_F(SharedSettings, AreTheSameThroughEveryObject) {
  const auto second = KRXDialog::Create(apartment);
  second->Settings().FontClassButton = u"Own";
  second->Settings().ButtonMinHeight = 700;
  EXPECT_EQ(dialog->Settings().FontClassButton, u"Own");
  EXPECT_EQ(dialog->Settings().ButtonMinHeight, 700);
  EXPECT_EQ(&dialog->Settings(), &second->Settings());
}

TEST_F(SharedSettings, LaterObjectsChangeNothing) {
  int live = log.LiveApplications;
  dialog->SetHostApp(std::make_shared<FakeApplication>(log, u"Panel"));
  dialog->Settings().FontClassText = u"Own";
  const auto second = KRXDialog::Create(apartment);
  EXPECT_EQ(shared.FontClassText, u"Own");
  EXPECT_EQ(shared.HostApplication->EXEName(), u"Panel");
  EXPECT_EQ(shared.DialogService, dialog);
  EXPECT_EQ(log.LiveApplications, live + 1);
}

TEST_F(SharedSettings, FirstObjectLivesOnWithoutItsClient) {
  const std::weak_ptr<KRXDialog> first = dialog;
  dialog.reset();
  EXPECT_FALSE(first.expired());
  dialog = KRXDialog::Create(apartment);
  EXPECT_EQ(shared.DialogService, first.lock());
}

TEST_F(SharedSettings, EndOfASecondObjectClearsServiceAndApplicationAtOnce) {
  KRXDialog::Create(apartment).reset();
  EXPECT_EQ(shared.DialogService, nullptr);
  EXPECT_EQ(shared.HostApplication, nullptr);
}

TEST_F(SharedSettings, FontClassesAndHeightsStayUntilTheNextObject) {
  dialog->Settings().FontClassInput = u"Own";
  dialog->Settings().CaptionMinHeight = 400;
  KRXDialog::Create(apartment).reset();
  EXPECT_EQ(dialog->Settings().FontClassInput, u"Own");
  EXPECT_EQ(dialog->Settings().CaptionMinHeight, 400);
}

TEST_F(SharedSettings, NextObjectAfterAnEndStartsFromTheDefaults) {
  dialog->SetHostApp(std::make_shared<FakeApplication>(log, u"Panel"));
  auto& settings = dialog->Settings();
  settings.FontClassCaption = u"Own";
  settings.FontClassText = u"Own";
  settings.FontClassButton = u"Own";
  settings.FontClassInput = u"Own";
  settings.ButtonMinHeight = settings.CaptionMinHeight = 99;
  KRXDialog::Create(apartment).reset();
  const auto next = KRXDialog::Create(apartment);
  ExpectDefaults();
  EXPECT_EQ(shared.DialogService, next);
  EXPECT_EQ(log.LiveApplications, 0);
}

TEST_F(SharedSettings, FirstObjectEndsWithASecondOneWhenItsClientHasGone) {
  const std::weak_ptr<KRXDialog> first = dialog;
  auto second = KRXDialog::Create(apartment);
  dialog.reset();
  second.reset();
  EXPECT_TRUE(first.expired());
  EXPECT_EQ(shared.DialogService, nullptr);
}

TEST_F(SharedSettings, SurvivingObjectMayGiveAHostApplicationAfterAReset) {
  KRXDialog::Create(apartment).reset();
  dialog->SetHostApp(std::make_shared<FakeApplication>(log, u"Panel"));
  EXPECT_EQ(shared.HostApplication->EXEName(), u"Panel");
  const auto next = KRXDialog::Create(apartment);
  EXPECT_EQ(shared.HostApplication->EXEName(), u"KRXDialogs");
}

TEST_F(SharedSettings, HostApplicationIsKeptUntilItIsReplacedOrCleared) {
  dialog->SetHostApp(std::make_shared<FakeApplication>(log, u"A"));
  EXPECT_EQ(log.LiveApplications, 1);
  dialog->SetHostApp(std::make_shared<FakeApplication>(log, u"B"));
  EXPECT_EQ(log.LiveApplications, 1);
  EXPECT_EQ(shared.HostApplication->EXEName(), u"B");
  KRXDialog::Create(apartment).reset();
  EXPECT_EQ(log.LiveApplications, 0);
}

TEST_F(SharedSettings, AnyValueIsStoredAsGiven) {
  auto& settings = dialog->Settings();
  settings.FontClassCaption = u"";
  settings.FontClassText = String(u"a\0b", 3);
  settings.ButtonMinHeight = -1.5f;
  settings.CaptionMinHeight = 3.4e38f;
  EXPECT_EQ(shared.FontClassCaption, u"");
  EXPECT_EQ(shared.FontClassText, String(u"a\0b", 3));
  EXPECT_EQ(shared.ButtonMinHeight, -1.5f);
  EXPECT_EQ(shared.CaptionMinHeight, 3.4e38f);
}

TEST_F(SharedSettings, TwoApartmentsNeverTouchEachOthers) {
  service::Apartment other(platform, runtime);
  auto foreign = KRXDialog::Create(other);
  foreign->Settings().FontClassText = u"Own";
  KRXDialog::Create(other).reset();
  ExpectDefaults();
  EXPECT_EQ(other.Shared.DialogService, nullptr);
}

TEST_F(SharedSettings, ObjectMayOutliveItsApartment) {
  auto passing = std::make_unique<service::Apartment>(platform, runtime);
  auto left_over = KRXDialog::Create(*passing);
  passing.reset();
  EXPECT_EQ(StatusOf([&] { left_over->KRMsgBox(u"m"); }), kObjectNotSet);
  EXPECT_EQ(StatusOf([&] { left_over->KRMsgBoxEx(u"m", 0, u"", u"", 0, {}); }), kObjectNotSet);
  EXPECT_EQ(StatusOf([&] { left_over->SetHostApp(nullptr); }), kObjectNotSet);
  EXPECT_EQ(StatusOf([&] { left_over->Settings(); }), kObjectNotSet);
  left_over.reset();
}

TEST_F(SharedSettings, ApartmentThatEndsLetsItsObjectAndApplicationGo) {
  auto passing = std::make_unique<service::Apartment>(platform, runtime);
  std::weak_ptr<KRXDialog> first;
  {
    const auto created = KRXDialog::Create(*passing);
    created->SetHostApp(std::make_shared<FakeApplication>(log, u"Panel"));
    first = created;
  }
  passing.reset();
  EXPECT_TRUE(first.expired());
  EXPECT_EQ(log.LiveApplications, 0);
}

}  // namespace krx::test
