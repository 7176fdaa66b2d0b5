// The file in which a plant writes down what its panels are like.
#include "runtime/core/PanelFile.h"

#include <gtest/gtest.h>

#include "base/Error.h"
#include "runtime/core/KorvelError.h"
#include "runtime/core/PanelChoice.h"

namespace krx::runtime {
namespace {

krx::PanelSettings Read(std::string_view text) {
  return ReadPanelFile(u"x.conf", text, PanelChoice::kDefaults);
}

std::string Refusal(std::string_view text) {
  try {
    Read(text);
  } catch (const Error& error) {
    EXPECT_EQ(kMalformedTexts, error.Status());
    return ToUtf8(error.Description());
  }
  return "taken";
}

TEST(PanelFileTest, SetsWhatItNames) {
  const krx::PanelSettings all = Read(
      "\xEF\xBB\xBF# panels of hall 3\r\nKeyboard = always\r\nTheme=Dark\nShowCountdown = true\n\n"
      "FirstAnswerDelay = 0.25");
  EXPECT_EQ(KeyboardUse::Always, all.Keyboard);
  EXPECT_EQ(Theme::Dark, all.Theme);
  EXPECT_TRUE(all.ShowCountdown);
  EXPECT_EQ(0.25, all.FirstAnswerDelay);
  const krx::PanelSettings one = Read("Theme = grey\n");
  EXPECT_EQ(KeyboardUse::Touch, one.Keyboard);
  EXPECT_EQ(Theme::Grey, one.Theme);
  EXPECT_EQ(KeyboardUse::Touch, Read("").Keyboard);
}

TEST(PanelFileTest, RefusesWithFileLineAndReason) {
  EXPECT_EQ("x.conf, line 2: \"=\" is missing", Refusal("\nKeyboard always\n"));
  EXPECT_EQ("x.conf, line 1: there is no setting \"Keybord\"", Refusal("Keybord = touch\n"));
  EXPECT_EQ("x.conf, line 2: Theme is set twice", Refusal("Theme = dark\nTheme = dark\n"));
  EXPECT_EQ(
      "x.conf, line 1: Theme is \"light\", \"dark\", \"grey\" or \"high-contrast\", not \"pink\"",
      Refusal("Theme = pink\n"));
  EXPECT_EQ("x.conf, line 1: ShowCountdown is \"true\" or \"false\", not \"1\"",
            Refusal("ShowCountdown = 1\n"));
  for (const char* const number : {"", "x", "0.5s", "1e-1"})
    EXPECT_EQ("x.conf, line 1: FirstAnswerDelay is a number, not \"" + std::string(number) + "\"",
              Refusal("FirstAnswerDelay = " + std::string(number)));
  for (const char* const number : {"2", "-0.1", "nan"})
    EXPECT_EQ("x.conf, line 1: FirstAnswerDelay is 0 to 1 second",
              Refusal("FirstAnswerDelay = " + std::string(number)));
  EXPECT_EQ("x.conf, line 1: the line is not UTF-8", Refusal("Theme = \xFF\n"));
}

TEST(PanelFileTest, AFaultyBeginningIsTriedAgainUntilItIsMended) {
  int asked = 0;
  PanelChoice choice([&] {
    ++asked;
    return Read(asked < 3 ? "Theme = pink" : "Theme = dark");
  });
  EXPECT_THROW(choice.Read(), Error);
  EXPECT_THROW(choice.SetTheme(u"grey"), Error);
  EXPECT_EQ(Theme::Dark, choice.Read().Theme);
  choice.SetTheme(u"grey");
  EXPECT_EQ(Theme::Grey, choice.Read().Theme);
  EXPECT_EQ(3, asked) << "read once it is good";
}

}  // namespace
}  // namespace krx::runtime
