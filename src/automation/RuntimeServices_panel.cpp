#include <ole2.h>

#include <algorithm>
#include <optional>

#include "KorvelRuntime.h"
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

}  // namespace

PanelSettings RuntimeServices::ReadPanelSettings() {
  PanelSettings read;
  com::ComPtr<IPanelSettings> settings;
  if (FAILED(CoCreateInstance(__uuidof(::PanelSettings), nullptr,
                              CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, __uuidof(IPanelSettings),
                              settings.PutVoid()))) {
    return read;
  }
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

}  // namespace krx::automation
