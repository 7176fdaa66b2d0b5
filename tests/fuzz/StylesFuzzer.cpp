#include <array>
#include <bit>
#include <cmath>

#include "Plant.h"
#include "Source.h"
#include "ports/headless/Operator.h"
#include "service/KRXDialog.h"
#include "service/MessageBoxStyle.h"
#include "ui/Keyboard.h"

// Message boxes of any style, text, buttons and settings, beside what their documents promise of
// their answers.

namespace krx::fuzz {
namespace {

using headless::Operator;
using namespace krx::service;

constexpr StringView kWords[] = {u"\n",
                                 u"\r\n",
                                 u"&",
                                 u"&&",
                                 u"a word ",
                                 u"\\n",
                                 u"\xD83D\xDE00",
                                 u"Wide enough for more than one line of a message box, it may be ",
                                 u"@key",
                                 u"large",
                                 u"KRDialogsText",
                                 u"\t",
                                 u"x"};

struct Box {
  std::int32_t Style;
  String Text;
  String Title;
  String HelpFile;
  FreeButtons Extra;
};

Box BoxOf(Source& source) {
  Box box;
  box.Style = source.Coin() ? source.Whole<std::int32_t>() : source.Byte() | source.Byte() << 8;
  box.Text = source.Text(kWords);
  box.Title = source.Text(kWords);
  if (box.Title.empty() && source.Byte() < 250) box.Title = u"title";
  box.HelpFile = source.Coin() ? u"help" : u"";
  for (String* const button : {&box.Extra.Button1, &box.Extra.Button2, &box.Extra.Button3})
    *button = source.Text(kWords);
  box.Extra.AutoActivation = source.NumberNearEnds<std::int32_t>();
  return box;
}

// The result of each button, left to right; 0 where there is none.
std::array<std::int32_t, 3> AnswersOf(const Box& box) {
  constexpr std::array<std::array<std::int32_t, 3>, 6> kSets{{{kOK, 0, 0},
                                                              {kOK, kCancel, 0},
                                                              {kAbort, kRetry, kIgnore},
                                                              {kYes, kNo, kCancel},
                                                              {kYes, kNo, 0},
                                                              {kRetry, kCancel, 0}}};
  const auto set = static_cast<std::size_t>(box.Style & kButtonSetBits);
  std::array<std::int32_t, 3> answers{};
  if (set < kSets.size()) answers = kSets[set];
  const std::array free{&box.Extra.Button1, &box.Extra.Button2, &box.Extra.Button3};
  for (std::size_t i = 0; i < free.size(); ++i) {
    if (!free[i]->empty() && (answers[i] == 0 || set == 0))
      answers[i] = kFirstFreeButton + static_cast<std::int32_t>(i);
  }
  return answers;
}

void SetUp(Source& source, SharedSettings& settings) {
  settings.FontClassCaption = source.Text(kWords);
  settings.FontClassText = source.Text(kWords);
  settings.FontClassButton = source.Text(kWords);
  settings.ButtonMinHeight = std::bit_cast<float>(source.Whole<std::uint32_t>());
  settings.CaptionMinHeight = std::bit_cast<float>(source.Whole<std::uint32_t>());
}

// Ends the box by one of its buttons or otherwise; returns what it has to answer.
std::int32_t End(Operator& op, const std::array<std::int32_t, 3>& answers, std::int32_t by_default,
                 std::size_t choice) {
  if (choice < answers.size() && answers[choice] != 0) {
    op.Click(u"keyButton(" + ToString(static_cast<std::int32_t>(choice)) + u")");
    return answers[choice];
  }
  if (choice == 3)
    op.Click(u"keyClose");
  else
    op.Press(ui::kKeyEscape);
  return by_default;
}

void Show(Source& source) {
  headless::HeadlessPlatform platform;
  Plant runtime;
  Apartment apartment(platform, runtime);
  const auto dialog = KRXDialog::Create(apartment);
  if (source.Coin()) SetUp(source, dialog->Settings());
  const std::size_t choice = source.Below(5);
  const Box box = BoxOf(source);
  const std::array<std::int32_t, 3> answers = AnswersOf(box);
  const auto position = static_cast<std::size_t>((box.Style & kDefaultBits) / kDefaultButton2);
  const std::int32_t by_default = position < answers.size() ? answers[position] : 0;
  const bool any = answers != std::array<std::int32_t, 3>{};
  std::int32_t expected = 0;
  platform.Expect(u"FMessageBox", [&](Operator& op) {
    Require(!any || by_default != 0);
    expected = End(op, answers, by_default, choice);
  });
  std::int32_t result = 0;
  const bool shown = Allowed([&] {
    result = dialog->KRMsgBoxEx(box.Text, box.Style, box.Title, box.HelpFile, 0, box.Extra);
  });
  if (shown) {
    Require(platform.Complaints().empty());
    Require(result == expected);
  }
}

}  // namespace
}  // namespace krx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  krx::fuzz::Source source(data, size);
  krx::fuzz::Show(source);
  return 0;
}
