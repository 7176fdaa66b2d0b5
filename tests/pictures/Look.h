#pragma once

#include <KorvelRuntime.h>

#include <array>
#include <string>
#include <vector>

#include "client/Dialogs.h"

namespace krx::pictures {

// One way for the dialogs to look; with a resolution it is a row of the table that all are shown
// in.
struct Look {
  bool German = false;
  bool Panel = false;  // larger fonts, buttons and captions
  int Theme = 0;       // of kThemes

  // What the caller of a dialog says in the language.
  const wchar_t* Say(const wchar_t* english, const wchar_t* german) const {
    return German ? german : english;
  }
};

inline constexpr std::array<const char*, 4> kThemes{"light", "dark", "grey", "high-contrast"};

// All of them, in the order of their pictures.
std::vector<Look> Looks();

// LANGUAGE-SETTING-DPI-THEME
std::string NameOf(const Look& look, int dpi);

// Whether a look in a resolution is among the quarter that a scene is shown in: over the quarters
// each comes once, and in each of them every pair of language, setting, resolution and theme does.
bool InQuarter(const Look& look, int dpi, int quarter);

// Has the dialogs that are opened next look like that.
class Looking {
 public:
  // Throws when the runtime has no such settings.
  explicit Looking(client::Dialogs& dialogs);

  void Take(const Look& look) const;
  // The keyboard on the screen, and seconds on buttons that press themselves.
  void Show(bool keyboard, bool seconds) const;

 private:
  client::Dialogs& dialogs_;
  com::ComPtr<IRuntimeSettings> runtime_;
  com::ComPtr<IPanelSettings> panel_;
};

}  // namespace krx::pictures
