// Asks a question and prints the answer. Bound early through the header that is generated from the
// component's interface description.

#include <KRXDialogs.h>

#include <cstdio>

namespace {

HRESULT AskToStart(KRMsgBoxResult& answer) {
  IKRXDialog* dialogs = nullptr;
  HRESULT status = CoCreateInstance(__uuidof(KRXDialog), nullptr, CLSCTX_INPROC_SERVER,
                                    __uuidof(IKRXDialog), reinterpret_cast<void**>(&dialogs));
  if (FAILED(status)) return status;
  const BSTR text = SysAllocString(L"Start the pump?");
  const BSTR title = SysAllocString(L"Pump");
  long result = 0;
  status = dialogs->KRMsgBox(text, 4 + 32, title, nullptr, 0, &result);
  answer = static_cast<KRMsgBoxResult>(result);
  SysFreeString(title);
  SysFreeString(text);
  dialogs->Release();
  return status;
}

}  // namespace

int main() {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  KRMsgBoxResult answer{};
  const HRESULT status = AskToStart(answer);
  CoUninitialize();
  if (FAILED(status)) return 1;
  std::puts(answer == krYes ? "The pump starts." : "Nothing happens.");
  return 0;
}
