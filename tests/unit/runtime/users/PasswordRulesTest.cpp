#include "runtime/users/passwords/PasswordRules.h"

#include <gtest/gtest.h>

#include "runtime/core/KorvelError.h"
#include "runtime/users/passwords/CommonPasswords.h"
#include "runtime/users/rules/Names.h"
#include "support/TestCryptography.h"

namespace krx::test {
namespace {

using runtime::JudgePassword;
using runtime::PasswordVerdict;
using runtime::RefusedPasswords;
using runtime::UserRules;

PasswordVerdict Judge(StringView password, StringView user = u"anna",
                      const RefusedPasswords& refused = {}) {
  return JudgePassword(UserRules(), refused, user, Password(password));
}

TEST(PasswordRulesTest, LengthIsCountedInCodePoints) {
  String smileys;
  for (int i = 0; i < 7; ++i)
    smileys += u"\U0001F600";
  EXPECT_EQ(Judge(smileys), PasswordVerdict::InvalidLength);
  smileys += u"\U0001F600";
  EXPECT_EQ(Judge(smileys), PasswordVerdict::Accepted);
  while (runtime::CountCodePoints(smileys) < 128)
    smileys += u"\U0001F600";
  EXPECT_EQ(Judge(smileys), PasswordVerdict::Accepted);
  EXPECT_EQ(Judge(smileys + u"x"), PasswordVerdict::InvalidLength);
}

TEST(PasswordRulesTest, TheBoundsAre8And128) {
  EXPECT_EQ(Judge(u""), PasswordVerdict::InvalidLength);
  EXPECT_EQ(Judge(u"zkwmtqx"), PasswordVerdict::InvalidLength);
  EXPECT_EQ(Judge(u"zkwmtqxy"), PasswordVerdict::Accepted);
  EXPECT_EQ(Judge(String(128, u'z')), PasswordVerdict::Accepted);
  EXPECT_EQ(Judge(String(129, u'z')), PasswordVerdict::InvalidLength);
}

TEST(PasswordRulesTest, TheUserNameIsNoPassword) {
  EXPECT_EQ(Judge(u"annabella", u"annabella"), PasswordVerdict::NotAccepted);
  EXPECT_EQ(Judge(u"J\u00DCRGEN M.", u"J\u00FCrgen M."), PasswordVerdict::NotAccepted);
  EXPECT_EQ(Judge(u"annabella", u"annabell"), PasswordVerdict::Accepted);
}

TEST(PasswordRulesTest, CommonPasswordsAreRefusedInAnyCase) {
  for (const StringView common :
       {u"12345678", u"password", u"PASSWORD", u"Passwort123", u"qwertzuiop", u"Administrator"})
    EXPECT_EQ(Judge(common), PasswordVerdict::NotAccepted) << ToUtf8(common);
}

TEST(PasswordRulesTest, ThousandsOfCommonPasswordsAreRefused) {
  std::string_view rest = runtime::CommonPasswords();
  std::string_view before;
  int long_enough = 0;
  UserRules rules;
  rules.MinimumLength = 1;
  while (!rest.empty()) {
    const std::string_view word = rest.substr(0, rest.find('\n'));
    ASSERT_LT(before, word);
    before = word;
    rest.remove_prefix(word.size() + 1);
    String text(word.begin(), word.end());
    text[0] = text[0] >= u'a' && text[0] <= u'z' ? static_cast<char16_t>(text[0] - 32) : text[0];
    ASSERT_EQ(JudgePassword(rules, {}, u"anna", Password(text)), PasswordVerdict::NotAccepted)
        << word;
    if (Judge(text) == PasswordVerdict::NotAccepted) ++long_enough;
  }
  EXPECT_GE(long_enough, 3000);
}

TEST(PasswordRulesTest, WhatIsOnlyLikeACommonPasswordIsAccepted) {
  for (const StringView other :
       {u"qwertzuiopq", u"password\u00E9", u"zzzzzzzzzzzzzzzzzz", u"!!!!!!!!", u"sunshine\n",
        u"sunshine\nsunshine1", u"passwor\u0164"})
    EXPECT_EQ(Judge(other), PasswordVerdict::Accepted) << ToUtf8(other);
}

TEST(PasswordRulesTest, APlantMayRefuseItsOwnListAlone) {
  UserRules rules;
  rules.RefuseCommonPasswords = 0;
  const RefusedPasswords plant(u"list", "kesselhaus 3");
  for (const StringView common : {u"12345678", u"sunshine", u"Passwort123"})
    EXPECT_EQ(JudgePassword(rules, plant, u"anna", Password(common)), PasswordVerdict::Accepted);
  EXPECT_EQ(JudgePassword(rules, plant, u"anna", Password(u"Kesselhaus 3")),
            PasswordVerdict::NotAccepted);
}

TEST(PasswordRulesTest, APlantAddsPasswordsInATextFile) {
  const RefusedPasswords plant(u"list",
                               "\xEF\xBB\xBF# our names\r\n\r\nkesselhaus 3\r\n\xC3\x96lpumpe 7");
  EXPECT_EQ(Judge(u"Kesselhaus 3", u"anna", plant), PasswordVerdict::NotAccepted);
  EXPECT_EQ(Judge(u"\u00F6lpumpe 7", u"anna", plant), PasswordVerdict::NotAccepted);
  EXPECT_EQ(Judge(u"# our names", u"anna", plant), PasswordVerdict::Accepted);
  EXPECT_EQ(Judge(u"12345678", u"anna", plant), PasswordVerdict::NotAccepted);
}

TEST(PasswordRulesTest, AListThatIsNoTextIsRefusedWithItsLine) {
  try {
    const RefusedPasswords refused(u"list", "good\n\xFF\n");
    FAIL();
  } catch (const Error& failure) {
    EXPECT_EQ(failure.Description(), u"list, line 2: the line is not UTF-8");
  }
}

TEST(PasswordHashTest, EqualPasswordsHaveDifferentHashes) {
  TestCryptography crypto;
  const runtime::PasswordHash first = HashPassword(crypto, Password(u"secret"), 1000);
  const runtime::PasswordHash second = HashPassword(crypto, Password(u"secret"), 1000);
  EXPECT_NE(first.Salt, second.Salt);
  EXPECT_NE(first.Key, second.Key);
  EXPECT_TRUE(Matches(crypto, Password(u"secret"), first));
  EXPECT_TRUE(Matches(crypto, Password(u"secret"), second));
  EXPECT_FALSE(Matches(crypto, Password(u"Secret"), first));
}

TEST(PasswordHashTest, EveryUnitOfALongPasswordCounts) {
  TestCryptography crypto;
  const String text(128, u'z');
  const runtime::PasswordHash hash = HashPassword(crypto, Password(text), 1000);
  for (std::size_t i = 0; i < text.size(); ++i) {
    String other = text;
    other[i] = u'\u017A';  // the same low byte
    ASSERT_FALSE(Matches(crypto, Password(other), hash)) << i;
  }
  EXPECT_FALSE(Matches(crypto, Password(text.substr(1)), hash));
  EXPECT_FALSE(Matches(crypto, Password(text + u"z"), hash));
}

TEST(PasswordHashTest, LoneSurrogatesAreToldApart) {
  TestCryptography crypto;
  const runtime::PasswordHash hash = HashPassword(crypto, Password(u"\xD800"), 1000);
  EXPECT_FALSE(Matches(crypto, Password(u"\xD801"), hash));
  EXPECT_FALSE(Matches(crypto, Password(u"\uFFFD"), hash));
}

TEST(PasswordHashTest, TheDerivationGivesThePublishedResult) {
  // RFC 7914, section 11: P="passwd", S="salt", c=1, first 32 of 64 bytes.
  TestCryptography crypto;
  const std::uint8_t password[] = {'p', 'a', 's', 's', 'w', 'd'};
  const std::uint8_t salt[] = {'s', 'a', 'l', 't'};
  std::vector<std::uint8_t> key(8);
  crypto.DeriveKey(password, salt, 1, key);
  EXPECT_EQ(key, (std::vector<std::uint8_t>{0x55, 0xAC, 0x04, 0x6E, 0x56, 0xE3, 0x08, 0x9F}));
}

TEST(NamesTest, CaseIsFoldedForLatinGreekAndCyrillicLetters) {
  const std::pair<StringView, StringView> equal[] = {
      {u"anna", u"ANNA"},
      {u"\u00E4\u00F6\u00FC\u00FF", u"\u00C4\u00D6\u00DC\u0178"},
      {u"\u0161\u0173\u017E\u0142", u"\u0160\u0172\u017D\u0141"},
      {u"\u03B1\u03C9\u03AC\u03CE\u03CC\u03C3", u"\u0391\u03A9\u0386\u038F\u038C\u03C2"},
      {u"\u0436\u044F\u0451\u045F\u0491", u"\u0416\u042F\u0401\u040F\u0490"},
  };
  for (const auto& [small, capital] : equal)
    EXPECT_TRUE(runtime::EqualIgnoringCase(small, capital)) << ToUtf8(small);
  const std::pair<StringView, StringView> different[] = {
      {u"\u00D7", u"\u00F7"}, {u"[", u"{"},        {u"@", u"`"},      {u"\u0131", u"i"},
      {u"a", u"\u00E4"},      {u"anna", u"annab"}, {u"\u00DF", u"ss"}};
  for (const auto& [left, right] : different)
    EXPECT_FALSE(runtime::EqualIgnoringCase(left, right)) << ToUtf8(left);
}

}  // namespace
}  // namespace krx::test
