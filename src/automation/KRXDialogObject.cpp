#include "automation/KRXDialogObject.h"

#include "automation/HostApplication.h"
#include "com/Text.h"
#include "com/Variant.h"

namespace krx::automation {

using service::SharedSettings;

KRXDialogObject::KRXDialogObject() : dialog_(service::KRXDialog::Create(apartment_.Service())) {}

template <class Body>
HRESULT KRXDialogObject::Run(Body&& body) noexcept {
  return Guard([&] {
    if (!apartment_.OnItsThread()) com::Check(RPC_E_WRONG_THREAD);
    body();
    return S_OK;
  });
}

// Settings

HRESULT KRXDialogObject::GetSetting(String SharedSettings::*setting, BSTR* value) {
  return Run([&] {
    com::Answer(value, [&] { return com::Bstr(dialog_->Settings().*setting).Detach(); });
  });
}

HRESULT KRXDialogObject::PutSetting(String SharedSettings::*setting, BSTR value) {
  return Run([&] { dialog_->Settings().*setting = com::FromBstr(value); });
}

HRESULT KRXDialogObject::GetSetting(Twips SharedSettings::*setting, float* value) {
  return Run([&] { com::Answer(value, [&] { return dialog_->Settings().*setting; }); });
}

HRESULT KRXDialogObject::PutSetting(Twips SharedSettings::*setting, const float* value) {
  return Run([&] {
    if (!value) com::Refuse(E_POINTER);
    dialog_->Settings().*setting = *value;
  });
}

HRESULT KRXDialogObject::get_FontClassCaption(BSTR* Value) {
  return GetSetting(&SharedSettings::FontClassCaption, Value);
}
HRESULT KRXDialogObject::put_FontClassCaption(BSTR Value) {
  return PutSetting(&SharedSettings::FontClassCaption, Value);
}
HRESULT KRXDialogObject::get_FontClassText(BSTR* Value) {
  return GetSetting(&SharedSettings::FontClassText, Value);
}
HRESULT KRXDialogObject::put_FontClassText(BSTR Value) {
  return PutSetting(&SharedSettings::FontClassText, Value);
}
HRESULT KRXDialogObject::get_FontClassButton(BSTR* Value) {
  return GetSetting(&SharedSettings::FontClassButton, Value);
}
HRESULT KRXDialogObject::put_FontClassButton(BSTR Value) {
  return PutSetting(&SharedSettings::FontClassButton, Value);
}
HRESULT KRXDialogObject::get_FontClassInput(BSTR* Value) {
  return GetSetting(&SharedSettings::FontClassInput, Value);
}
HRESULT KRXDialogObject::put_FontClassInput(BSTR Value) {
  return PutSetting(&SharedSettings::FontClassInput, Value);
}
HRESULT KRXDialogObject::get_ButtonMinHeight(float* Value) {
  return GetSetting(&SharedSettings::ButtonMinHeight, Value);
}
HRESULT KRXDialogObject::put_ButtonMinHeight(float* Value) {
  return PutSetting(&SharedSettings::ButtonMinHeight, Value);
}
HRESULT KRXDialogObject::get_CaptionMinHeight(float* Value) {
  return GetSetting(&SharedSettings::CaptionMinHeight, Value);
}
HRESULT KRXDialogObject::put_CaptionMinHeight(float* Value) {
  return PutSetting(&SharedSettings::CaptionMinHeight, Value);
}

HRESULT KRXDialogObject::SetHostApp(IDispatch** HostApp) {
  return Run([&] {
    if (!HostApp) com::Refuse(E_POINTER);
    dialog_->SetHostApp(*HostApp ? std::make_shared<HostApplication>(**HostApp) : nullptr);
  });
}

// Message boxes

HRESULT KRXDialogObject::KRMsgBox(BSTR Text, LONG Style, BSTR Title, BSTR HelpFile, LONG Context,
                                  LONG* Result) {
  return Run([&] {
    com::Answer(Result, [&] {
      return dialog_->KRMsgBox(com::FromBstr(Text), Style, com::FromBstr(Title),
                               com::FromBstr(HelpFile), Context);
    });
  });
}

HRESULT KRXDialogObject::KRMsgBoxEx(BSTR Text, LONG Style, BSTR Title, BSTR HelpFile, LONG Context,
                                    BSTR Button1, BSTR Button2, BSTR Button3, LONG AutoActivation,
                                    KRMsgBoxResult* Result) {
  return Run([&] {
    com::EmptyResults(Result);
    service::FreeButtons extra{com::FromBstr(Button1), com::FromBstr(Button2),
                               com::FromBstr(Button3), AutoActivation};
    *Result = static_cast<KRMsgBoxResult>(
        dialog_->KRMsgBoxEx(com::FromBstr(Text), Style, com::FromBstr(Title),
                            com::FromBstr(HelpFile), Context, std::move(extra)));
  });
}

// User dialogs

HRESULT KRXDialogObject::KRUserLogOn(VARIANT_BOOL* Result) {
  return Run(
      [&] { com::Answer(Result, [&] { return com::ToVariantBool(dialog_->KRUserLogOn()); }); });
}
HRESULT KRXDialogObject::KRUserLogOnCombo(VARIANT_BOOL* Result) {
  return Run([&] {
    com::Answer(Result, [&] { return com::ToVariantBool(dialog_->KRUserLogOnCombo()); });
  });
}
HRESULT KRXDialogObject::KRWhoAmI() {
  return Run([&] { dialog_->KRWhoAmI(); });
}
HRESULT KRXDialogObject::KRChangePassword() {
  return Run([&] { dialog_->KRChangePassword(); });
}

HRESULT KRXDialogObject::KRAddUser(VARIANT_BOOL* Result) {
  return Run(
      [&] { com::Answer(Result, [&] { return com::ToVariantBool(dialog_->KRAddUser()); }); });
}
HRESULT KRXDialogObject::KRUser() {
  return Run([&] { dialog_->KRUser(); });
}

// Directories and files

HRESULT KRXDialogObject::SelectDirectory(DirectoryMethod method, BSTR start_directory,
                                         VARIANT_BOOL allow_change_up, BSTR title, BSTR* result) {
  return Run([&] {
    com::EmptyResults(result);
    const service::DirectoryRequest request{com::FromBstr(start_directory),
                                            allow_change_up != VARIANT_FALSE, com::FromBstr(title)};
    *result = com::Bstr((*dialog_.*method)(request)).Detach();
  });
}

HRESULT KRXDialogObject::SelectFile(FileMethod method, BSTR file_name, BSTR start_directory,
                                    BSTR filter, VARIANT_BOOL allow_change_up, BSTR title,
                                    BSTR* result) {
  return Run([&] {
    com::EmptyResults(result);
    const service::FileRequest request{com::FromBstr(file_name), com::FromBstr(start_directory),
                                       com::FromBstr(filter), allow_change_up != VARIANT_FALSE,
                                       com::FromBstr(title)};
    *result = com::Bstr((*dialog_.*method)(request)).Detach();
  });
}

HRESULT KRXDialogObject::KRSelectDirectory(BSTR StartDirectory, VARIANT_BOOL AllowChangeUp,
                                           BSTR Title, BSTR* Result) {
  return SelectDirectory(&service::KRXDialog::KRSelectDirectory, StartDirectory, AllowChangeUp,
                         Title, Result);
}
HRESULT KRXDialogObject::KRSelectDirectoryTouch(BSTR StartDirectory, VARIANT_BOOL AllowChangeUp,
                                                BSTR Title, BSTR* Result) {
  return SelectDirectory(&service::KRXDialog::KRSelectDirectoryTouch, StartDirectory, AllowChangeUp,
                         Title, Result);
}
HRESULT KRXDialogObject::KRSaveFileAs(BSTR FileName, BSTR StartDirectory, BSTR Filter,
                                      VARIANT_BOOL AllowChangeUp, BSTR Title, BSTR* Result) {
  return SelectFile(&service::KRXDialog::KRSaveFileAs, FileName, StartDirectory, Filter,
                    AllowChangeUp, Title, Result);
}
HRESULT KRXDialogObject::KROpenFile(BSTR FileName, BSTR StartDirectory, BSTR Filter,
                                    VARIANT_BOOL AllowChangeUp, BSTR Title, BSTR* Result) {
  return SelectFile(&service::KRXDialog::KROpenFile, FileName, StartDirectory, Filter,
                    AllowChangeUp, Title, Result);
}
HRESULT KRXDialogObject::KROpenFileTouch(BSTR FileName, BSTR StartDirectory, BSTR Filter,
                                         VARIANT_BOOL AllowChangeUp, BSTR Title, BSTR* Result) {
  return SelectFile(&service::KRXDialog::KROpenFileTouch, FileName, StartDirectory, Filter,
                    AllowChangeUp, Title, Result);
}

}  // namespace krx::automation
