#include "Look.h"

#include <stdexcept>

#include "driver/Window.h"

namespace krx::pictures {

namespace {

using client::BasicString;

constexpr float kPanelButton = 900;   // twips
constexpr float kPanelCaption = 600;  // twips
constexpr int kFine = 192;            // the resolution beside 96

void Check(HRESULT status, const char* what) {
  if (status != S_OK) throw std::runtime_error(std::string(what) + " cannot be set");
}

template <class Interface>
com::ComPtr<Interface> Create(REFCLSID id) {
  com::ComPtr<Interface> object;
  CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface), object.PutVoid());
  if (!object) throw std::runtime_error("the runtime lacks a class of settings");
  return object;
}

}  // namespace

std::vector<Look> Looks() {
  std::vector<Look> looks;
  for (const bool german : {false, true})
    for (const bool panel : {false, true})
      for (int theme = 0; theme < static_cast<int>(kThemes.size()); ++theme)
        looks.push_back({german, panel, theme});
  return looks;
}

std::string NameOf(const Look& look, int dpi) {
  return std::string(look.German ? "de" : "en") + (look.Panel ? "-panel-" : "-desktop-") +
         std::to_string(dpi) + '-' + kThemes.at(static_cast<std::size_t>(look.Theme));
}

bool InQuarter(const Look& look, int dpi, int quarter) {
  const bool upper = look.Theme / 2 != 0;
  const bool odd = look.Theme % 2 != 0;
  const int own = 2 * (look.Panel ^ look.German ^ upper) + ((dpi == kFine) ^ look.German ^ odd);
  return own == quarter % 4;
}

Looking::Looking(client::Dialogs& dialogs)
    : dialogs_(dialogs),
      runtime_(Create<IRuntimeSettings>(__uuidof(RuntimeSettings))),
      panel_(Create<IPanelSettings>(__uuidof(PanelSettings))) {}

void Looking::Take(const Look& look) const {
  Check(runtime_->put_Language(BasicString(look.German ? L"de" : L"en")), "the language");
  const char* const theme = kThemes.at(static_cast<std::size_t>(look.Theme));
  Check(panel_->put_Theme(BasicString(drive::Widen(theme))), "the theme");
  const std::wstring prefix = look.Panel ? L"KRPanel" : L"KRDialogs";
  Check(dialogs_->put_FontClassCaption(BasicString(prefix + L"Caption")), "a font");
  Check(dialogs_->put_FontClassText(BasicString(prefix + L"Text")), "a font");
  Check(dialogs_->put_FontClassButton(BasicString(prefix + L"Button")), "a font");
  Check(dialogs_->put_FontClassInput(BasicString(prefix + L"Input")), "a font");
  float button = look.Panel ? kPanelButton : 0;
  float caption = look.Panel ? kPanelCaption : 0;
  Check(dialogs_->put_ButtonMinHeight(&button), "a height");
  Check(dialogs_->put_CaptionMinHeight(&caption), "a height");
}

void Looking::Show(bool keyboard, bool seconds) const {
  Check(panel_->put_Keyboard(BasicString(keyboard ? L"always" : L"never")), "the keyboard");
  Check(panel_->put_ShowCountdown(seconds ? VARIANT_TRUE : VARIANT_FALSE), "the countdown");
}

}  // namespace krx::pictures
