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
  // Moved out first: letting the first object go ends in this destructor again.
  const auto application = std::exchange(apartment_.Shared.HostApplication, nullptr);
  const auto service = std::exchange(apartment_.Shared.DialogService, nullptr);
}

void KRXDialog::Initialise() {
  apartment_.Shared = SharedSettings{
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
  apartment_.Shared.HostApplication = std::move(application);
}

std::int32_t KRXDialog::KRMsgBox(String text, std::int32_t style, String title, String help_file,
                                 std::int32_t context) {
  const MessageBoxRequest request{std::move(text),      style,   std::move(title),
                                  std::move(help_file), context, std::nullopt};
  return Open(apartment_.Dialogs.MessageBox, apartment_, request);
}

std::int32_t KRXDialog::KRMsgBoxEx(String text, std::int32_t style, String title, String help_file,
                                   std::int32_t context, FreeButtons extra) {
  const MessageBoxRequest request{std::move(text),      style,   std::move(title),
                                  std::move(help_file), context, std::move(extra)};
  return Open(apartment_.Dialogs.MessageBox, apartment_, request);
}

bool KRXDialog::KRUserLogOn() { return Open(apartment_.Dialogs.LogOn, apartment_); }

bool KRXDialog::KRUserLogOnCombo() { return Open(apartment_.Dialogs.LogOnCombo, apartment_); }

void KRXDialog::KRWhoAmI() { Open(apartment_.Dialogs.WhoAmI, apartment_); }

void KRXDialog::KRChangePassword() {
  Open(apartment_.Dialogs.ChangePassword, apartment_, std::nullopt);
}

}  // namespace krx::service
