#include <ole2.h>

#include <algorithm>
#include <optional>

#include "KorvelRuntime.h"
#include "automation/LateMember.h"
#include "automation/RuntimeServices.h"
#include "com/ComPtr.h"
#include "com/Text.h"

namespace krx::automation {

namespace {

template <class Value>
std::optional<Value> Asked(IPanelSettings& settings,
                           HRESULT (STDMETHODCALLTYPE IPanelSettings::*get)(BSTR*),
                           std::optional<Value> (*named)(StringView)) {
  com::Bstr name;
  if (FAILED((settings.*get)(name.Put()))) return std::nullopt;
  return named(name.Text());
}

// Whether a program of its own may have the class. Asking COM for one without is dear, and a newer
// Wine keeps two handles of every such question.
bool HasProgram(REFCLSID id) {
  HKEY key = nullptr;
  const std::wstring path = L"CLSID\\" + com::ToWide(id) + L"\\LocalServer32";
  if (RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
    return false;
  RegCloseKey(key);
  return true;
}

com::ComPtr<IPanelSettings> Settings() {
  com::ComPtr<IPanelSettings> settings;
  const auto create = [&](DWORD where) {
    return CoCreateInstance(__uuidof(::PanelSettings), nullptr, where, __uuidof(IPanelSettings),
                            settings.PutVoid());
  };
  if (FAILED(create(CLSCTX_INPROC_SERVER)) && HasProgram(__uuidof(::PanelSettings))) {
    create(CLSCTX_LOCAL_SERVER);
  }
  return settings;
}

}  // namespace

PanelSettings RuntimeServices::ReadPanelSettings() {
  PanelSettings read;
  const com::ComPtr<IPanelSettings> settings = Settings();
  if (!settings) return read;
  read.Keyboard = Asked(*settings.Get(), &IPanelSettings::get_Keyboard, KeyboardUseNamed)
                      .value_or(read.Keyboard);
  read.Theme = Asked(*settings.Get(), &IPanelSettings::get_Theme, ThemeNamed).value_or(read.Theme);
  VARIANT_BOOL countdown = VARIANT_FALSE;
  if (SUCCEEDED(settings->get_ShowCountdown(&countdown))) {
    read.ShowCountdown = countdown != VARIANT_FALSE;
  }
  double delay = 0;
  if (SUCCEEDED(settings->get_FirstAnswerDelay(&delay)) && delay >= 0) {
    read.FirstAnswerDelay = std::min(delay, kLongestAnswerDelay);
  }
  return read;
}

String RuntimeServices::ReadLogOnNotice() {
  const com::ComPtr<IDispatch> settings = Settings().As<IDispatch>();
  if (!settings) return {};
  const com::Variant notice = LateMember(settings, L"LogOnNotice").Read();
  return notice.Get().vt == VT_BSTR ? com::FromBstr(notice.Get().bstrVal) : String();
}

}  // namespace krx::automation
