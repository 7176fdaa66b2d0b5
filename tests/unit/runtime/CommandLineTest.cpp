#include "runtime/users/tool/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace krx::test {
namespace {

using runtime::CommandLine;
using runtime::ParseCommandLine;
using testing::ElementsAre;

TEST(CommandLineTest, ACommandHasItsNamesAndOptionsInAnyOrder) {
  const CommandLine line =
      ParseCommandLine({u"provision", u"--panel-account", u"panel", u"boss", u"--generate"});
  ASSERT_TRUE(line.Arguments);
  EXPECT_EQ(line.Command->Name, u"provision");
  EXPECT_THAT(line.Arguments->Names, ElementsAre(u"boss"));
  EXPECT_EQ(line.Arguments->PanelAccount, u"panel");
  EXPECT_TRUE(line.Arguments->Generates);
  EXPECT_EQ(ParseCommandLine({u"export-audit", u"-", u"--format", u"json"}).Arguments->Format,
            u"json");
}

TEST(CommandLineTest, WhatIsNoCommandLineIsNotCarriedOut) {
  using Words = std::vector<String>;
  for (const Words& words :
       {Words{}, Words{u""}, Words{u"Provision", u"boss"}, Words{u"provision"},
        Words{u"provision", u"boss", u"berta"}, Words{u"list", u"boss"},
        Words{u"unlock", u"boss", u"--generate"}, Words{u"provision", u"boss", u"--"},
        Words{u"provision", u"boss", u"--panel-account"}, Words{u"provision", u"boss", u"--panel"},
        Words{u"export-audit", u"file", u"--format", u"xml"}}) {
    const CommandLine line = ParseCommandLine(words);
    EXPECT_FALSE(line.Arguments) << testing::PrintToString(words);
    EXPECT_FALSE(line.Helps);
  }
}

TEST(CommandLineTest, HelpIsAboutTheCommandOrAllOfThem) {
  const CommandLine one = ParseCommandLine({u"reset", u"--help"});
  EXPECT_TRUE(one.Helps);
  EXPECT_FALSE(one.Arguments);
  EXPECT_EQ(UsageOf(one.Command), u"usage: krxusers reset USER\n");
  const CommandLine all = ParseCommandLine({u"--help", u"reset"});
  EXPECT_TRUE(all.Helps);
  EXPECT_EQ(all.Command, nullptr);
  for (const runtime::Command& command : runtime::Commands())
    EXPECT_NE(UsageOf(all.Command).find(u"  krxusers " + String(command.Name)), String::npos);
}

}  // namespace
}  // namespace krx::test
