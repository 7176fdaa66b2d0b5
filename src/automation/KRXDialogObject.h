#pragma once

#include "KRXDialogs.h"
#include "automation/ThreadApartment.h"
#include "com/DualObject.h"
#include "service/KRXDialog.h"

namespace krx::automation {

// The creatable class: a client's dialog service as a dual interface. Cancel is a result; every
// failure arrives as a status with an error object. Calls from a thread other than the one that
// created the object are refused (RPC_E_WRONG_THREAD).
class KRXDialogObject final : public com::DualObject<IKRXDialog> {
 public:
  // A new object with one reference for the caller.
  static IUnknown* Create() { return static_cast<IKRXDialog*>(new KRXDialogObject); }

  HRESULT STDMETHODCALLTYPE get_FontClassCaption(BSTR* Value) override;
  HRESULT STDMETHODCALLTYPE put_FontClassCaption(BSTR Value) override;
  HRESULT STDMETHODCALLTYPE get_FontClassText(BSTR* Value) override;
  HRESULT STDMETHODCALLTYPE put_FontClassText(BSTR Value) override;
  HRESULT STDMETHODCALLTYPE get_FontClassButton(BSTR* Value) override;
  HRESULT STDMETHODCALLTYPE put_FontClassButton(BSTR Value) override;
  HRESULT STDMETHODCALLTYPE get_FontClassInput(BSTR* Value) override;
  HRESULT STDMETHODCALLTYPE put_FontClassInput(BSTR Value) override;
  HRESULT STDMETHODCALLTYPE get_ButtonMinHeight(float* Value) override;
  HRESULT STDMETHODCALLTYPE put_ButtonMinHeight(float* Value) override;
  HRESULT STDMETHODCALLTYPE get_CaptionMinHeight(float* Value) override;
  HRESULT STDMETHODCALLTYPE put_CaptionMinHeight(float* Value) override;

  HRESULT STDMETHODCALLTYPE SetHostApp(IDispatch** HostApp) override;
  HRESULT STDMETHODCALLTYPE KRMsgBox(BSTR Text, LONG Style, BSTR Title, BSTR HelpFile, LONG Context,
                                     LONG* Result) override;
  HRESULT STDMETHODCALLTYPE KRMsgBoxEx(BSTR Text, LONG Style, BSTR Title, BSTR HelpFile,
                                       LONG Context, BSTR Button1, BSTR Button2, BSTR Button3,
                                       LONG AutoActivation, KRMsgBoxResult* Result) override;
  HRESULT STDMETHODCALLTYPE KRSelectDirectory(BSTR StartDirectory, VARIANT_BOOL AllowChangeUp,
                                              BSTR Title, BSTR* Result) override;
  HRESULT STDMETHODCALLTYPE KRSelectDirectoryTouch(BSTR StartDirectory, VARIANT_BOOL AllowChangeUp,
                                                   BSTR Title, BSTR* Result) override;
  HRESULT STDMETHODCALLTYPE KRSaveFileAs(BSTR FileName, BSTR StartDirectory, BSTR Filter,
                                         VARIANT_BOOL AllowChangeUp, BSTR Title,
                                         BSTR* Result) override;
  HRESULT STDMETHODCALLTYPE KROpenFile(BSTR FileName, BSTR StartDirectory, BSTR Filter,
                                       VARIANT_BOOL AllowChangeUp, BSTR Title,
                                       BSTR* Result) override;
  HRESULT STDMETHODCALLTYPE KROpenFileTouch(BSTR FileName, BSTR StartDirectory, BSTR Filter,
                                            VARIANT_BOOL AllowChangeUp, BSTR Title,
                                            BSTR* Result) override;
  HRESULT STDMETHODCALLTYPE KRUserLogOn(VARIANT_BOOL* Result) override;
  HRESULT STDMETHODCALLTYPE KRUserLogOnCombo(VARIANT_BOOL* Result) override;
  HRESULT STDMETHODCALLTYPE KRAddUser(VARIANT_BOOL* Result) override;
  HRESULT STDMETHODCALLTYPE KRWhoAmI() override;
  HRESULT STDMETHODCALLTYPE KRUser() override;
  HRESULT STDMETHODCALLTYPE KRChangePassword() override;

 private:
  KRXDialogObject();

  template <class Body>
  HRESULT Run(Body&& body) noexcept;
  HRESULT GetSetting(String service::SharedSettings::*setting, BSTR* value);
  HRESULT PutSetting(String service::SharedSettings::*setting, BSTR value);
  HRESULT GetSetting(Twips service::SharedSettings::*setting, float* value);
  HRESULT PutSetting(Twips service::SharedSettings::*setting, const float* value);
  // Hands a file request to one of the file methods and its path to the client.
  using FileMethod = String (service::KRXDialog::*)(const service::FileRequest&);
  HRESULT SelectFile(FileMethod method, BSTR file_name, BSTR start_directory, BSTR filter,
                     VARIANT_BOOL allow_change_up, BSTR title, BSTR* result);
  using DirectoryMethod = String (service::KRXDialog::*)(const service::DirectoryRequest&);
  HRESULT SelectDirectory(DirectoryMethod method, BSTR start_directory,
                          VARIANT_BOOL allow_change_up, BSTR title, BSTR* result);

  // The dialog service goes before its share in the apartment.
  ThreadApartment::Use apartment_;
  const std::shared_ptr<service::KRXDialog> dialog_;
};

}  // namespace krx::automation
