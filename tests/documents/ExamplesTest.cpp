// The scripts in the documents use members that exist, with as many arguments as these take.

#include "documents/Examples.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "documents/Checkout.h"
#include "documents/Interface.h"
#include "documents/Markdown.h"

namespace krx::tests {
namespace {

// What is wrong with a use; empty when nothing is.
std::string Complaint(const Use& use, const std::vector<Member>& members) {
  const auto member = std::find_if(members.begin(), members.end(),
                                   [&](const Member& one) { return one.Name == use.Member; });
  if (member == members.end()) return use.Member + " does not exist";
  if (use.Assigned) return member->IsProperty ? "" : use.Member + " cannot be set";
  if (use.Arguments < member->Required()) return use.Member + " has too few arguments";
  if (use.Arguments > member->Parameters.size()) return use.Member + " has too many arguments";
  return {};
}

const std::vector<Member>& TheMembers() {
  static const auto members = Members(ReadText(Checkout() / "src/automation/KRXDialogs.idl"));
  return members;
}

class ScriptOf : public ::testing::TestWithParam<Example> {};

TEST_P(ScriptOf, UsesMembersAsTheyAre) {
  for (const Use& use : Uses(GetParam().Whole()))
    EXPECT_EQ(Complaint(use, TheMembers()), "");
}

INSTANTIATE_TEST_SUITE_P(Documents, ScriptOf, ::testing::ValuesIn(Examples(Checkout())),
                         [](const auto& test) { return test.param.Name(); });

TEST(Scripts, TellWhatTheyUse) {
  const std::string script =
      "Set a = CreateObject(\"KRXDialogs.KRXDialog\")\n"
      "a.ButtonMinHeight = 900 ' a.KRUser\n"
      "WScript.Echo a.ButtonMinHeight, 2\n"
      "If a.KRMsgBox(\"a, (b\", f(1, 2), _\n"
      "              \"a.KRUser\") = 6 Then\n"
      "  a.KRMsgBox \"x\", 3\n"
      "  a.KRUser\n"
      "End If\n";
  const std::vector<Use> uses = Uses(script);
  EXPECT_EQ(uses[0], (Use{"ButtonMinHeight", true, 0}));
  EXPECT_EQ(uses[1], (Use{"ButtonMinHeight", false, 0}));
  EXPECT_EQ(uses[2], (Use{"KRMsgBox", false, 3}));
  EXPECT_EQ(uses[uses.size() - 2], (Use{"KRMsgBox", false, 2}));
  EXPECT_EQ(uses.back(), (Use{"KRUser", false, 0}));
}

TEST(Scripts, AreComplainedOf) {
  EXPECT_EQ(Complaint({"KRMsgBox", false, 0}, TheMembers()), "KRMsgBox has too few arguments");
  EXPECT_EQ(Complaint({"KRMsgBox", false, 6}, TheMembers()), "KRMsgBox has too many arguments");
  EXPECT_EQ(Complaint({"KRMsgBox", true, 0}, TheMembers()), "KRMsgBox cannot be set");
  EXPECT_EQ(Complaint({"KRInputBox", false, 1}, TheMembers()), "KRInputBox does not exist");
  EXPECT_EQ(Complaint({"KRMsgBox", false, 5}, TheMembers()), "");
  EXPECT_EQ(Complaint({"ButtonMinHeight", true, 0}, TheMembers()), "");
}

}  // namespace
}  // namespace krx::tests
