#include "msgbox/FMessageBox.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <vector>

#include "base/Error.h"
#include "host/TextService.h"
#include "service/Layout.h"
#include "service/MKRXDialog.h"
#include "service/MessageBoxStyle.h"
#include "service/Skip.h"

namespace krx::msgbox {

namespace {

using service::MaxValue;
using service::MeasureTextHeight;
using service::MeasureTextWidth;

// Lengths of this form in twips.
constexpr Twips kIconLeft = 180;       // also the form's margin and the gap between buttons
constexpr Twips kIconSize = 480;       // 32 pixels at 96 dpi, the size of the stock icons
constexpr Twips kMessagePadding = 30;  // added to the message text's width and height
constexpr Twips kTextToBar = 90;       // from the widest line of a message that scrolls to its bar
constexpr Twips kNarrowestButton = 1215;
constexpr Twips kTextToButtons = 1.5f;  // in icon-left distances
constexpr Twips kHelpExtraGap = 0.5f;   // in icon-left distances

constexpr int kSecond = 1000;  // milliseconds

struct StandardButton {
  StringView Key;
  std::int32_t Result;
};

// Buttons of the sets 0 to 5, left to right. Set 5 looks its Cancel text up under another key than
// sets 1 and 3; this is meant.
const std::array<std::vector<StandardButton>, 6> kButtonSets{{
    {{u"OK", service::kOK}},
    {{u"OK", service::kOK}, {u"Cancel", service::kCancel}},
    {{u"Abort", service::kAbort}, {u"Retry", service::kRetry}, {u"Ignore", service::kIgnore}},
    {{u"Yes", service::kYes}, {u"No", service::kNo}, {u"Cancel", service::kCancel}},
    {{u"Yes", service::kYes}, {u"No", service::kNo}},
    {{u"Retry", service::kRetry}, {u"Cancel&", service::kCancel}},
}};

// Results of the sets until the default button's result replaces them; 0: the set gives none.
constexpr std::array<std::int32_t, 6> kProvisionalResults{
    service::kOK, service::kCancel, 0, service::kCancel, 0, service::kCancel};

// Identifier of the stock icon for a style; 0 for none.
int StockIconOf(std::int32_t style) {
  switch (style & service::kIconBits) {
    case service::kCritical:
      return ui::kStopIcon;
    case service::kQuestion:
      return ui::kQuestionIcon;
    case service::kExclamation:
      return ui::kExclamationIcon;
    case service::kInformation:
      return ui::kInformationIcon;
    default:
      return 0;
  }
}

}  // namespace

FMessageBox::FMessageBox(service::Apartment& apartment)
    : DialogForm(apartment, u"FMessageBox", host::kDialogTexts) {
  picIcon.Place({kIconLeft, 0, kIconSize, kIconSize});
  idxMessage.Left = picIcon.Left() + picIcon.Width() + kIconLeft;
  tmrAutoActivation.Interval = kSecond;

  for (ui::KRXKey& key : keyButton) {
    key.Click = [this, &key] { Answer(key); };
  }
  // Two characters, not the function key: this box is meant to send them so.
  // Where no keys can be sent, as to a locked session, the box waits for its answer all the same.
  keyHelp.Click = [this] { service::Skip([this] { ThePlatform().SendKeys(u"F1"); }); };
  keyClose.Click = [this] { Unload(); };
  tmrAutoActivation.Tick = [this] { CountDown(); };
}

std::int32_t FMessageBox::Ask(const service::MessageBoxRequest& request) {
  DisplayIcon(request.Style);
  SetFonts();
  if (const auto& extra = request.Extra)
    SetTextsEx(extra->Button1, extra->Button2, extra->Button3, extra->AutoActivation);
  SetTexts(request.Text, request.Style, request.Title, request.HelpFile, request.Context);
  if (request.WhenClosed) Result = *request.WhenClosed;
  CalcPositions();
  ShowModal();
  return Result;
}

void FMessageBox::DisplayIcon(std::int32_t enmStyle) {
  if (const int icon = StockIconOf(enmStyle)) {
    picIcon.DrawIcon(ThePlatform().LoadStockIcon(icon), 0, 0);
  } else {
    picIcon.Visible = false;
    idxMessage.Left = picIcon.Left();
  }
  DefaultKey(enmStyle).TabIndex = 0;
}

void FMessageBox::SetFonts() {
  idxCaption.FontClass = Shared().FontClassCaption;
  idxMessage.FontClass = Shared().FontClassText;
  for (ui::KRXKey* const key : Row())
    key->FontClass = Shared().FontClassButton;
}

void FMessageBox::SetTextsEx(const String& sButton1, const String& sButton2, const String& sButton3,
                             std::int32_t lAutoActivation) {
  const std::array texts{&sButton1, &sButton2, &sButton3};
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (texts[i]->empty()) continue;
    keyButton[i].Caption = *texts[i];
    keyButton[i].Tag = ToString(service::kFirstFreeButton + static_cast<std::int32_t>(i));
  }
  if (lAutoActivation > 0) {
    seconds_left_ = seconds_at_first_ = lAutoActivation;
    tmrAutoActivation.Enabled = true;
  }
}

void FMessageBox::SetTexts(const String& sText, std::int32_t enmStyle, const String& sTitle,
                           const String& sHelpFile, std::int32_t) {
  SetStandardButtons(enmStyle & service::kButtonSetBits);
  for (ui::KRXKey& key : keyButton)
    key.Visible = !key.Caption().empty();

  keyHelp.Caption = Text(u"Help");
  if (sHelpFile.empty()) {
    keyHelp.Visible = false;
    keyHelp.Caption = String();
  }

  if (!sTitle.empty()) {
    SetCaption(service::EncodeLineBreaks(sTitle));
  } else if (const auto application = Shared().HostApplication) {
    // Held while it answers: it may be replaced in the meantime.
    SetCaption(application->EXEName());
  } else {
    throw ObjectNotSet();
  }
  idxMessage.Text = service::EncodeLineBreaks(sText);
  SetDefault(enmStyle);
}

void FMessageBox::SetStandardButtons(std::int32_t button_set) {
  if (button_set >= static_cast<std::int32_t>(kButtonSets.size())) return;
  const auto set = static_cast<std::size_t>(button_set);
  if (const std::int32_t result = kProvisionalResults[set]) Result = result;
  // Only the single OK leaves a free caption in place.
  if (set == 0 && !keyButton[0].Caption().empty()) return;
  const auto& buttons = kButtonSets[set];
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    keyButton[i].Caption = Text(buttons[i].Key);
    keyButton[i].Tag = ToString(buttons[i].Result);
  }
}

void FMessageBox::SetDefault(std::int32_t style) {
  ui::KRXKey& key = DefaultKey(style);
  key.TabIndex = 0;
  const bool answerable = std::any_of(keyButton.begin(), keyButton.end(),
                                      [](const ui::KRXKey& k) { return k.Visible(); });
  // A box that nobody can answer is shown all the same; without a code its result is 0.
  Result = answerable || !key.Tag.empty() ? ToLong(key.Tag) : 0;
  if (Panel.ShowCountdown && tmrAutoActivation.Enabled() && key.Visible()) BeginSeconds(key);
}

ui::KRXKey& FMessageBox::DefaultKey(std::int32_t style) {
  const auto position =
      static_cast<std::size_t>((style & service::kDefaultBits) / service::kDefaultButton2);
  return position < keyButton.size() ? keyButton[position] : keyHelp;
}

void FMessageBox::CalcPositions() {
  SizeCaption();
  picIcon.Top = idxCaption.Height() + picIcon.Left();
  idxMessage.Top = picIcon.Top();
  const Twips row_height = SizeButtons();
  SizeMessage(row_height > 0 ? kTextToButtons * kIconLeft + row_height + kIconLeft : kIconLeft);

  const Twips block_bottom = picIcon.Top() + MaxValue({picIcon.Height(), idxMessage.Height()});
  const Twips row_top = block_bottom + kTextToButtons * kIconLeft;
  const Twips row_width = PlaceButtons(row_top);
  const Twips caption_width = MeasureTextWidth(idxCaption) + kMessagePadding + keyClose.Width() +
                              service::kCloseKeyMargin + 2 * kIconLeft;
  const Twips message_width = idxMessage.Left() + idxMessage.Width() + kIconLeft;
  Width = MaxValue({caption_width, message_width, row_width});

  Twips bottom = block_bottom;
  for (ui::KRXKey* const key : Row()) {
    if (!key->Visible()) continue;
    key->Left = key->Left() + (Width() - row_width) / 2;
    bottom = row_top + key->Height();
  }
  Height = bottom + kIconLeft;
  PlaceCaption();
}

// A message that is too high for the screen, with what stands below it, is scrolled.
void FMessageBox::SizeMessage(Twips below) {
  const Twips wanted =
      MaxValue({MeasureTextHeight(idxMessage) + kMessagePadding, picIcon.Height()});
  const Twips room =
      ThePlatform().WorkArea().Height - service::kFormEdges - idxMessage.Top() - below;
  const bool scrolls = wanted > room;
  idxMessage.TabStop = scrolls;
  idxMessage.Height = wanted;
  idxMessage.Width = MeasureTextWidth(idxMessage) + kMessagePadding;
  if (scrolls) {
    const Twips line = idxMessage.LineHeight();
    const Twips lines = std::max(1.0f, std::floor((room - kMessagePadding) / line));
    idxMessage.Height = lines * line + kMessagePadding;
    idxMessage.Width = idxMessage.Width() + kTextToBar + ThePlatform().ScrollBarWidth();
    idxMessage.TabIndex = static_cast<int>(TabOrder().size());  // behind the buttons
  }
  idxMessage.Scrolls = scrolls;
  idxMessage.ScrollTo(scrolls ? idxMessage.TopLine() : 0);
}

// Returns the height of the row, 0 for none.
Twips FMessageBox::SizeButtons() {
  // Wide enough for every second to come, so that no button ever moves.
  if (counting_) ShowSeconds(String(ToString(seconds_at_first_).size(), u'0'));
  Twips height = 0;
  for (ui::KRXKey* const key : Row()) {
    if (!key->Visible()) continue;
    const Twips needed = service::ButtonHeight(MeasureTextHeight(*key), Shared().ButtonMinHeight);
    height = MaxValue({height, needed});
    key->Width = MaxValue({MeasureTextWidth(*key) + service::kButtonPadding, kNarrowestButton});
  }
  if (counting_) ShowSeconds(ToString(seconds_left_));
  for (ui::KRXKey* const key : Row())
    key->Height = height;
  return height;
}

// Returns the width of the row, the form's margins on both sides included.
Twips FMessageBox::PlaceButtons(Twips top) {
  const auto row = Row();
  Twips x = service::PlaceRow(std::span(row).first(keyButton.size()), kIconLeft, top, kIconLeft);
  if (keyHelp.Visible()) x += kHelpExtraGap * kIconLeft;
  return service::PlaceRow(std::span(row).last(1), x, top, kIconLeft);
}

void FMessageBox::Answer(const ui::KRXKey& key) {
  Result = ToLong(key.Tag);
  Unload();
}

}  // namespace krx::msgbox
