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

template <class Function, class... Args>
auto Open(const Function& dialog, Args&&... args) {
  if (!dialog) throw NotImplemented();
  return dialog(std::forward<Args>(args)...);
}

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
  const MessageBoxRequest request{std::move(text),      style,   std::move(title),
                                  std::move(help_file), context, std::nullopt};
  Apartment& apartment = TheApartment();
  return Open(apartment.Dialogs.MessageBox, apartment, request);
}

std::int32_t KRXDialog::KRMsgBoxEx(String text, std::int32_t style, String title, String help_file,
                                   std::int32_t context, FreeButtons extra) {
  const MessageBoxRequest request{std::move(text),      style,   std::move(title),
                                  std::move(help_file), context, std::move(extra)};
  Apartment& apartment = TheApartment();
  return Open(apartment.Dialogs.MessageBox, apartment, request);
}

bool KRXDialog::KRUserLogOn() {
  Apartment& apartment = TheApartment();
  return Open(apartment.Dialogs.LogOn, apartment);
}

bool KRXDialog::KRUserLogOnCombo() {
  Apartment& apartment = TheApartment();
  return Open(apartment.Dialogs.LogOnCombo, apartment);
}

void KRXDialog::KRWhoAmI() {
  Apartment& apartment = TheApartment();
  Open(apartment.Dialogs.WhoAmI, apartment);
}

void KRXDialog::KRChangePassword() {
  Apartment& apartment = TheApartment();
  Open(apartment.Dialogs.ChangePassword, apartment, std::nullopt);
}

}  // namespace krx::service
