#include "client/Dialogs.h"

namespace krx::client {

Dialogs::Dialogs() {
  CoCreateInstance(__uuidof(KRXDialog), nullptr, CLSCTX_INPROC_SERVER, __uuidof(IKRXDialog),
                   dialogs_.PutVoid());
}

HRESULT Dialogs::MsgBox(const std::wstring& text, long style, const std::wstring& title,
                        long& result) {
  const BasicString text_argument(text);
  const BasicString title_argument(title);
  return dialogs_->KRMsgBox(text_argument, style, title_argument, nullptr, 0, &result);
}

std::wstring ErrorText() {
  com::ComPtr<IErrorInfo> error;
  if (GetErrorInfo(0, error.Put()) != S_OK) return {};
  BSTR description = nullptr;
  error->GetDescription(&description);
  const std::wstring text = description ? description : L"";
  SysFreeString(description);
  return text;
}

}  // namespace krx::client
