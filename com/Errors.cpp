#include "com/Errors.h"

#include <ole2.h>
#include <windows.h>

#include <array>
#include <cstdio>
#include <memory>
#include <new>

#include "com/ComPtr.h"
#include "com/Module.h"
#include "com/Text.h"

namespace krx::com {

namespace {

constexpr HRESULT kInternalError = static_cast<HRESULT>(0x800A0033);

struct Texts {
  StringView Source;
  StringView Description;
  StringView HelpFile = {};
  DWORD HelpContext = 0;
};

void SetTexts(ICreateErrorInfo& info, REFIID iid, const Texts& texts) {
  info.SetGUID(iid);
  info.SetSource(Bstr(texts.Source).Get());
  info.SetDescription(Bstr(texts.Description).Get());
  if (!texts.HelpFile.empty()) info.SetHelpFile(Bstr(texts.HelpFile).Get());
  info.SetHelpContext(texts.HelpContext);
}

// Leaves the texts with the thread; without memory for them the bare status has to do, and no older
// error object may stand in for ours.
void SetThreadError(REFIID iid, const Texts& texts) noexcept {
  ComPtr<IErrorInfo> error;
  try {
    ComPtr<ICreateErrorInfo> info;
    if (SUCCEEDED(CreateErrorInfo(info.Put()))) {
      SetTexts(*info, iid, texts);
      error = info.As<IErrorInfo>();
    }
  } catch (const std::bad_alloc&) {
    error.Reset();
  }
  SetErrorInfo(0, error.Get());
}

HRESULT Report(REFIID iid, const Error& error, StringView help_file, DWORD help_context) noexcept {
  SetThreadError(iid, {error.Source(), error.Description(), help_file, help_context});
  // A failure that names a success status must still fail at the client.
  const auto status = static_cast<HRESULT>(error.Status());
  return FAILED(status) ? status : E_FAIL;
}

HRESULT ReportInternal(REFIID iid, std::string_view what) noexcept {
  try {
    const String text(what.begin(), what.end());
    SetThreadError(iid, {ModuleName(), u"Internal error: " + text});
  } catch (...) {
    SetErrorInfo(0, nullptr);
  }
  return kInternalError;
}

bool DescribesErrors(IUnknown* object, REFIID iid) {
  const auto support = ComPtr<IUnknown>(object).As<ISupportErrorInfo>();
  return support && support->InterfaceSupportsErrorInfo(iid) == S_OK;
}

template <class Getter>
String Get(Getter&& getter) {
  Bstr text;
  getter(text.Put());
  return text.Text();
}

ObjectError FromErrorInfo(HRESULT status, IErrorInfo& info) {
  DWORD help_context = 0;
  info.GetHelpContext(&help_context);
  String description = Get([&](BSTR* text) { info.GetDescription(text); });
  if (description.empty()) description = SystemMessage(status);
  return ObjectError(status, std::move(description), Get([&](BSTR* text) { info.GetSource(text); }),
                     Get([&](BSTR* text) { info.GetHelpFile(text); }), help_context);
}

String Take(BSTR& text) {
  Bstr owned;
  *owned.Put() = std::exchange(text, nullptr);
  return owned.Text();
}

}  // namespace

String SystemMessage(HRESULT status) {
  wchar_t* text = nullptr;
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
      nullptr, static_cast<DWORD>(status), 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
  const std::unique_ptr<wchar_t, decltype(&LocalFree)> owned(text, &LocalFree);
  String message = FromWide(std::wstring_view(text, length));
  while (!message.empty() && message.back() <= u' ')
    message.pop_back();
  if (!message.empty()) return message;
  std::array<char, 16> number{};
  std::snprintf(number.data(), number.size(), "0x%08lX", static_cast<unsigned long>(status));
  return u"Error " + String(number.data(), number.data() + 10);
}

void Refuse(HRESULT status) {
  throw Error(static_cast<std::uint32_t>(status), SystemMessage(status));
}

void Check(HRESULT status) {
  if (FAILED(status)) Refuse(status);
}

void CheckCall(HRESULT status, IUnknown* object, REFIID iid) {
  if (SUCCEEDED(status)) return;
  ComPtr<IErrorInfo> info;
  if (DescribesErrors(object, iid) && GetErrorInfo(0, info.Put()) == S_OK) {
    throw FromErrorInfo(status, *info);
  }
  Check(status);
}

ObjectError FromExcepInfo(EXCEPINFO& info) {
  if (info.pfnDeferredFillIn) std::exchange(info.pfnDeferredFillIn, nullptr)(&info);
  const String source = Take(info.bstrSource);
  String description = Take(info.bstrDescription);
  const String help_file = Take(info.bstrHelpFile);
  // Such a failure is given by a status or, in its place, by the bare number of a runtime error.
  HRESULT status = info.scode;
  constexpr DWORD kRuntimeErrors = 0x800A0000;
  const DWORD of_number = kRuntimeErrors + info.wCode;
  if (info.wCode != 0) status = static_cast<HRESULT>(of_number);
  if (SUCCEEDED(status)) status = E_FAIL;
  if (description.empty()) description = SystemMessage(status);
  return ObjectError(status, std::move(description), source, help_file, info.dwHelpContext);
}

HRESULT ReportException(REFIID iid) noexcept {
  try {
    throw;
  } catch (const ObjectError& error) {
    return Report(iid, error, error.HelpFile(), error.HelpContext());
  } catch (const Error& error) {
    return Report(iid, error, {}, 0);
  } catch (const std::bad_alloc&) {
    SetErrorInfo(0, nullptr);
    return E_OUTOFMEMORY;
  } catch (const std::exception& exception) {
    return ReportInternal(iid, exception.what());
  } catch (...) {
    return ReportInternal(iid, "unknown exception");
  }
}

}  // namespace krx::com
