#include "service/KRXDialog.h"

#include <utility>

#include "base/Error.h"
#include "files/FDirectorySelectTouch.h"
#include "files/FFileSelect.h"
#include "files/FFileSelectTouch.h"
#include "files/FSelectDirectory.h"
#include "msgbox/FMessageBox.h"
#include "service/MessageBoxStyle.h"
#include "service/Skip.h"
#include "users/FAddUser.h"
#include "users/FChangePassword.h"
#include "users/FLogOn.h"
#include "users/FLogOnCombo.h"
#include "users/FUser.h"
#include "users/FWhoAmI.h"

namespace krx::service {

namespace {

// The application object of the library itself.
class LibraryApplication : public host::Application {
 public:
  String EXEName() override { return u"KRXDialogs"; }
};

}  // namespace

std::shared_ptr<KRXDialog> KRXDialog::Create(Apartment& apartment) {
  std::shared_ptr<KRXDialog> dialog(new KRXDialog(apartment));
  if (!apartment.Shared.DialogService) dialog->Initialise();
  return dialog;
}

KRXDialog::~KRXDialog() {
  const std::shared_ptr<Apartment> apartment = apartment_.lock();
  if (!apartment) return;
  // Moved out first: letting the first object go ends in this destructor again.
  const auto application = std::exchange(apartment->Shared.HostApplication, nullptr);
  const auto service = std::exchange(apartment->Shared.DialogService, nullptr);
}

Apartment& KRXDialog::TheApartment() const {
  const std::shared_ptr<Apartment> apartment = apartment_.lock();
  if (!apartment) throw ObjectNotSet();
  return *apartment;
}

void KRXDialog::Initialise() {
  TheApartment().Shared = SharedSettings{
      .DialogService = shared_from_this(),
      .HostApplication = std::make_shared<LibraryApplication>(),
      .FontClassCaption = u"KRDialogsCaption",
      .FontClassText = u"KRDialogsText",
      .FontClassButton = u"KRDialogsButton",
      .FontClassInput = u"KRDialogsInput",
      .ButtonMinHeight = 0,
      .CaptionMinHeight = 0,
  };
}

void KRXDialog::SetHostApp(std::shared_ptr<host::Application> application) {
  TheApartment().Shared.HostApplication = std::move(application);
}

std::int32_t KRXDialog::KRMsgBox(String text, std::int32_t style, String title, String help_file,
                                 std::int32_t context) {
  return msgbox::FMessageBox(TheApartment())
      .Ask({std::move(text), style, std::move(title), std::move(help_file), context, std::nullopt});
}

std::int32_t KRXDialog::KRMsgBoxEx(String text, std::int32_t style, String title, String help_file,
                                   std::int32_t context, FreeButtons extra) {
  return msgbox::FMessageBox(TheApartment())
      .Ask({std::move(text), style, std::move(title), std::move(help_file), context,
            std::move(extra)});
}

bool KRXDialog::NoticeIsAcknowledged() {
  host::Runtime& runtime = TheApartment().Runtime;
  MessageBoxRequest box;
  Skip([&] { box.Text = runtime.ReadLogOnNotice(); });
  if (box.Text.empty()) return true;
  Skip([&] { box.Title = runtime.CreateTextService()->GetText(u"capLogon", host::kUserTexts); });
  box.Style = kOKCancel | kInformation;
  box.WhenClosed = kCancel;
  return msgbox::FMessageBox(TheApartment()).Ask(box) == kOK;
}

bool KRXDialog::KRUserLogOn() {
  return NoticeIsAcknowledged() && users::FLogOn(TheApartment()).LogOn();
}

bool KRXDialog::KRUserLogOnCombo() {
  return NoticeIsAcknowledged() && users::FLogOnCombo(TheApartment()).LogOn();
}

void KRXDialog::KRWhoAmI() {
  users::FWhoAmI(TheApartment()).WhoAmI();
}

void KRXDialog::KRChangePassword() {
  users::FChangePassword(TheApartment()).ChangePassword();
}

bool KRXDialog::KRAddUser() {
  return users::FAddUser(TheApartment()).AddUser();
}

void KRXDialog::KRUser() {
  users::FUser(TheApartment()).ShowUsers();
}

String KRXDialog::KRSelectDirectory(const DirectoryRequest& request) {
  return files::FSelectDirectory(TheApartment()).SelectDirectory(request);
}

String KRXDialog::KRSelectDirectoryTouch(const DirectoryRequest& request) {
  return files::FDirectorySelectTouch(TheApartment()).SelectDirectory(request);
}

String KRXDialog::KRSaveFileAs(const FileRequest& request) {
  return files::FFileSelect(TheApartment()).SelectFile(request, kFileSave);
}

String KRXDialog::KROpenFile(const FileRequest& request) {
  return files::FFileSelect(TheApartment()).SelectFile(request, kFileOpen);
}

String KRXDialog::KROpenFileTouch(const FileRequest& request) {
  return files::FFileSelectTouch(TheApartment()).OpenFile(request);
}

}  // namespace krx::service
