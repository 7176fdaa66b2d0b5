#include "service/KRXDialog.h"

#include <utility>

#include "base/Error.h"

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

template <class Entry, class... Args>
auto KRXDialog::Open(Entry DialogTable::*entry, Args&&... args) const {
  Apartment& apartment = TheApartment();
  const Entry& dialog = apartment.Dialogs.*entry;
  if (!dialog) throw NotImplemented();
  return dialog(apartment, std::forward<Args>(args)...);
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
  const MessageBoxRequest request{std::move(text),      style,   std::move(title),
                                  std::move(help_file), context, std::nullopt};
  return Open(&DialogTable::MessageBox, request);
}

std::int32_t KRXDialog::KRMsgBoxEx(String text, std::int32_t style, String title, String help_file,
                                   std::int32_t context, FreeButtons extra) {
  const MessageBoxRequest request{std::move(text),      style,   std::move(title),
                                  std::move(help_file), context, std::move(extra)};
  return Open(&DialogTable::MessageBox, request);
}

bool KRXDialog::KRUserLogOn() {
  return Open(&DialogTable::LogOn);
}

bool KRXDialog::KRUserLogOnCombo() {
  return Open(&DialogTable::LogOnCombo);
}

void KRXDialog::KRWhoAmI() {
  Open(&DialogTable::WhoAmI);
}

void KRXDialog::KRChangePassword() {
  Open(&DialogTable::ChangePassword, std::nullopt);
}

bool KRXDialog::KRAddUser() {
  return Open(&DialogTable::AddUser);
}

void KRXDialog::KRUser() {
  Open(&DialogTable::User);
}

String KRXDialog::KRSelectDirectory(DirectoryRequest request) {
  return Open(&DialogTable::SelectDirectory, std::move(request));
}

String KRXDialog::KRSelectDirectoryTouch(DirectoryRequest request) {
  return Open(&DialogTable::SelectDirectoryTouch, std::move(request));
}

String KRXDialog::KRSaveFileAs(FileRequest request) {
  return Open(&DialogTable::SelectFile, std::move(request), kFileSave);
}

String KRXDialog::KROpenFile(FileRequest request) {
  return Open(&DialogTable::SelectFile, std::move(request), kFileOpen);
}

String KRXDialog::KROpenFileTouch(FileRequest request) {
  return Open(&DialogTable::SelectFileTouch, std::move(request));
}

}  // namespace krx::service
