#pragma once

#include <array>

#include "service/DialogForm.h"
#include "service/MessageBoxRequest.h"
#include "ui/Timer.h"

namespace krx::msgbox {

// The message box: standard or free buttons, icon, help, and closing by itself with the default
// button's result.
class FMessageBox : public service::DialogForm {
 public:
  explicit FMessageBox(service::Apartment& apartment);

  ui::KRXIndex idxMessage{*this, u"idxMessage"};
  ui::PictureBox picIcon{*this, u"picIcon"};
  std::array<ui::KRXKey, 3> keyButton{
      {{*this, u"keyButton(0)"}, {*this, u"keyButton(1)"}, {*this, u"keyButton(2)"}}};
  ui::KRXKey keyHelp{*this, u"keyHelp"};
  ui::Timer tmrAutoActivation{*this, u"tmrAutoActivation"};

  // Shows the box and returns the result code of its answer.
  std::int32_t Ask(const service::MessageBoxRequest& request);

  // Set-up, in the order in which Ask calls it. The icon and the default button come
  // from the style.
  void DisplayIcon(std::int32_t enmStyle);
  void SetFonts();
  // Free buttons and the seconds to auto-activation (0 and below: never).
  void SetTextsEx(const String& sButton1, const String& sButton2, const String& sButton3,
                  std::int32_t lAutoActivation);
  // Texts, standard buttons and the default result; runtime error 13 when the default button of a
  // box with answers has no result code.
  void SetTexts(const String& sText, std::int32_t enmStyle, const String& sTitle,
                const String& sHelpFile, std::int32_t lContext);
  void CalcPositions() override;

  String Announcement() const override { return idxMessage.WholeText(); }
  // Caption, text and buttons between lines of dashes, as the platform's own box copies them.
  String CopiedText() const override;

  // Result code of the button that closed the box; before any click the default button's.
  std::int32_t Result = 0;

 private:
  std::array<const ui::KRXKey*, 4> Row() const {
    return {&keyButton[0], &keyButton[1], &keyButton[2], &keyHelp};
  }
  std::array<ui::KRXKey*, 4> Row() {
    return {&keyButton[0], &keyButton[1], &keyButton[2], &keyHelp};
  }
  ui::KRXKey& DefaultKey(std::int32_t style);
  void SetStandardButtons(std::int32_t button_set);
  void SetDefault(std::int32_t style);
  void SizeMessage(Twips below);
  Twips SizeButtons();
  Twips PlaceButtons(Twips top);
  void Answer(const ui::KRXKey& key);
  void CountDown();

  void BeginSeconds(ui::KRXKey& key);
  void ShowSeconds(StringView seconds);

  std::int32_t seconds_left_ = 0;
  std::int32_t seconds_at_first_ = 0;
  ui::KRXKey* counting_ = nullptr;  // shows the seconds behind its caption
  String counted_caption_;
};

}  // namespace krx::msgbox
