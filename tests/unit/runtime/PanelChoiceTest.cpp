#include "runtime/core/PanelChoice.h"

#include <gtest/gtest.h>

#include <limits>

#include "base/Error.h"

namespace krx::runtime {
namespace {

TEST(PanelChoiceTest, AKeyboardComesWithAFingerUntilThePlantChooses) {
  const krx::PanelSettings settings = PanelChoice().Read();
  EXPECT_EQ(KeyboardUse::Touch, settings.Keyboard);
  EXPECT_EQ(Theme::Light, settings.Theme);
  EXPECT_FALSE(settings.ShowCountdown);
  EXPECT_EQ(0.0, settings.FirstAnswerDelay);
}

TEST(PanelChoiceTest, EveryNameIsUnderstoodAndSaidAgain) {
  for (const StringView name : {u"touch", u"always", u"never"}) {
    PanelChoice choice;
    choice.SetKeyboard(name);
    EXPECT_EQ(String(name), String(NameOf(choice.Read().Keyboard)));
  }
  for (const StringView name : {u"light", u"dark", u"grey", u"high-contrast"}) {
    PanelChoice choice;
    choice.SetTheme(name);
    EXPECT_EQ(String(name), String(NameOf(choice.Read().Theme)));
  }
}

TEST(PanelChoiceTest, CaseDoesNotMatter) {
  PanelChoice choice;
  choice.SetTheme(u"Dark");
  choice.SetKeyboard(u"ALWAYS");
  EXPECT_EQ(Theme::Dark, choice.Read().Theme);
  EXPECT_EQ(KeyboardUse::Always, choice.Read().Keyboard);
}

TEST(PanelChoiceTest, WhatIsNoValueIsRefusedAndChangesNothing) {
  PanelChoice choice;
  choice.SetTheme(u"dark");
  choice.SetFirstAnswerDelay(0.5);
  EXPECT_THROW(choice.SetTheme(u"pink"), Error);
  EXPECT_THROW(choice.SetKeyboard(u""), Error);
  EXPECT_THROW(choice.SetFirstAnswerDelay(-0.1), Error);
  EXPECT_THROW(choice.SetFirstAnswerDelay(1.01), Error);
  EXPECT_THROW(choice.SetFirstAnswerDelay(std::numeric_limits<double>::quiet_NaN()), Error);
  EXPECT_EQ(Theme::Dark, choice.Read().Theme);
  EXPECT_EQ(KeyboardUse::Touch, choice.Read().Keyboard);
  EXPECT_EQ(0.5, choice.Read().FirstAnswerDelay);
}

TEST(PanelChoiceTest, TheLimitsOfTheDelayAreTaken) {
  PanelChoice choice;
  choice.SetFirstAnswerDelay(1);
  EXPECT_EQ(1.0, choice.Read().FirstAnswerDelay);
  choice.SetFirstAnswerDelay(0);
  EXPECT_EQ(0.0, choice.Read().FirstAnswerDelay);
}

}  // namespace
}  // namespace krx::runtime
