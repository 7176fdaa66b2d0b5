#include <gtest/gtest.h>

#include <random>

#include "host/UserManager.h"
#include "runtime/users/directory/Escaping.h"
#include "runtime/users/directory/Judgement.h"
#include "runtime/users/directory/PasswordWire.h"

namespace krx::test {
namespace {

using namespace runtime;
using Verdict = DirectoryVerdict;

DirectoryAnswer Refused(std::string diagnostic) {
  return {49, std::move(diagnostic), {}};
}

DirectoryAnswer WithPolicy(std::int32_t code, std::string_view control) {
  return {code, {}, std::string(control)};
}

std::string Text(const SecretBytes& bytes) {
  return {bytes.Bytes().begin(), bytes.Bytes().end()};
}

TEST(BindAnswerTest, ActiveDirectoryHidesItsReasonInTheDiagnosticText) {
  const std::pair<const char*, Verdict> recorded[] = {
      {"525", Verdict::UnknownUser}, {"52e", Verdict::WrongPassword}, {"530", Verdict::Deactivated},
      {"531", Verdict::Deactivated}, {"532", Verdict::Expired},       {"533", Verdict::Deactivated},
      {"701", Verdict::Deactivated}, {"773", Verdict::MustRenew},     {"775", Verdict::LockedOut},
  };
  for (const auto& [number, verdict] : recorded) {
    EXPECT_EQ(JudgeBind(Refused("80090308: LdapErr: DSID-0C09044E, comment: AcceptSecurityContext "
                                "error, data " +
                                std::string(number) + ", v2580")),
              verdict)
        << number;
  }
  EXPECT_EQ(JudgeBind(Refused("80090308: LdapErr: DSID-0C0903A9, comment: AcceptSecurityContext "
                              "error, data 569, v1db1")),
            std::nullopt);
  EXPECT_EQ(JudgeBind(Refused("invalid credentials, data zzz")), Verdict::WrongPassword);
}

TEST(BindAnswerTest, ThePasswordPolicyControlSaysMoreThanTheCode) {
  EXPECT_EQ(JudgeBind(WithPolicy(0, {"\x30\x00", 2})), Verdict::Right);
  EXPECT_EQ(JudgeBind(WithPolicy(49, {"\x30\x00", 2})), Verdict::WrongPassword);
  EXPECT_EQ(JudgeBind(WithPolicy(49, {"\x30\x03\x81\x01\x00", 5})), Verdict::Expired);
  EXPECT_EQ(JudgeBind(WithPolicy(49, {"\x30\x03\x81\x01\x01", 5})), Verdict::LockedOut);
  EXPECT_EQ(JudgeBind(WithPolicy(0, {"\x30\x03\x81\x01\x02", 5})), Verdict::MustRenew);
  // Two log-ons left to change an expired password.
  EXPECT_EQ(JudgeBind(WithPolicy(0, {"\x30\x05\xA0\x03\x81\x01\x02", 7})), Verdict::Expired);
  // It will expire, in 600 seconds.
  EXPECT_EQ(JudgeBind(WithPolicy(0, {"\x30\x06\xA0\x04\x80\x02\x02\x58", 8})), Verdict::Right);
}

TEST(BindAnswerTest, OtherCodesAreTheUsersOrTheServersAffair) {
  EXPECT_EQ(JudgeBind({0, {}, {}}), Verdict::Right);
  EXPECT_EQ(JudgeBind({32, {}, {}}), Verdict::UnknownUser);
  EXPECT_EQ(JudgeBind({19, {}, {}}), Verdict::LockedOut);
  EXPECT_EQ(JudgeBind({48, {}, {}}), Verdict::WrongPassword);
  for (const std::int32_t code : {1, 8, 13, 50, 51, 52, 53, 80})
    EXPECT_EQ(JudgeBind({code, {}, {}}), std::nullopt) << code;
  EXPECT_THROW(RequireSuccess({51, {}, {}}, u"it"), DirectorySilence);
  EXPECT_THROW(RequireSuccess({52, {}, {}}, u"it"), DirectorySilence);
  try {
    RequireSuccess({13, "confidentiality required", {}}, u"it");
    FAIL();
  } catch (const DirectorySilence&) {
    FAIL() << "this server has answered";
  } catch (const Error& failure) {
    EXPECT_EQ(failure.Description(), u"it: code 13, confidentiality required");
    EXPECT_EQ(failure.Status(), kDirectoryFailure);
  }
}

TEST(AnswerTextTest, ADiagnosticIsToldAsFarAsItCanBeRead) {
  EXPECT_EQ(Describe({13, "", {}}), u"code 13");
  EXPECT_EQ(Describe({13, "no", {}}), u"code 13, no");
  EXPECT_EQ(Describe({13, "\xFF", {}}), u"code 13");
  EXPECT_EQ(Describe({13, std::string(300, '\x80'), {}}), u"code 13");
  // It is cut between characters, wherever that is.
  for (std::size_t before = 0; before < 4; ++before) {
    std::string longest(before, 'x');
    while (longest.size() < 1000)
      longest += "\u20AC";
    const String told = Describe({13, longest, {}});
    EXPECT_GT(told.size(), 50u) << before;
    EXPECT_LT(told.size(), longest.size() / 2) << before;
    EXPECT_EQ(told.back(), u'\u20AC') << before;
  }
}

TEST(AnswerTextTest, EveryVerdictHasItsWords) {
  const std::pair<Verdict, StringView> words[] = {
      {Verdict::Right, u"password right"},
      {Verdict::UnknownUser, u"unknown user"},
      {Verdict::WrongPassword, u"wrong password"},
      {Verdict::Deactivated, u"user is deactivated"},
      {Verdict::LockedOut, u"user is locked out"},
      {Verdict::Expired, u"password has expired"},
      {Verdict::MustRenew, u"password must be renewed"}};
  for (const auto& [verdict, text] : words)
    EXPECT_EQ(Describe(verdict), text);
}

TEST(AnswerTextTest, AServerThatRunsOutOfTimeHasNotAnswered) {
  EXPECT_TRUE(IsUnavailable({3, {}, {}}));
  EXPECT_FALSE(IsUnavailable({0, {}, {}}));
}

TEST(ChangeAnswerTest, RefusalsOfANewPasswordBecomeTheirCodes) {
  const auto judged = [](char error) {
    return JudgeChange(WithPolicy(19, std::string("\x30\x03\x81\x01", 4) + error));
  };
  EXPECT_EQ(JudgeChange({0, {}, {}}), host::ChangePasswordSucceeded);
  EXPECT_EQ(judged(3), host::ChangePasswordUnableToSave);
  EXPECT_EQ(judged(4), host::ChangePasswordCallFailed);
  EXPECT_EQ(judged(5), host::ChangePasswordNotAccepted);
  EXPECT_EQ(judged(6), host::ChangePasswordInvalidLength);
  EXPECT_EQ(judged(7), host::ChangePasswordNotAccepted);
  EXPECT_EQ(judged(8), host::ChangePasswordNotAccepted);
  EXPECT_EQ(judged(9), host::ChangePasswordInvalidLength);
  EXPECT_EQ(JudgeChange({19, "00000056: AtrErr: DSID-03191083, #1:", {}}),
            host::ChangePasswordInvalidPassword);
  EXPECT_EQ(JudgeChange({19, "0000052D: AtrErr: DSID-03191083, #1:", {}}),
            host::ChangePasswordNotAccepted);
  EXPECT_EQ(JudgeChange({50, {}, {}}), host::ChangePasswordUnableToSave);
  EXPECT_EQ(JudgeChange({53, {}, {}}), host::ChangePasswordUnableToSave);
  EXPECT_EQ(JudgeChange({49, {}, {}}), host::ChangePasswordInvalidPassword);
  EXPECT_EQ(JudgeChange({32, {}, {}}), host::ChangePasswordUnknownUser);
  EXPECT_EQ(JudgeChange({1, {}, {}}), host::ChangePasswordCallFailed);
}

TEST(PolicyControlTest, BytesThatAreNoneAreNone) {
  const std::string_view broken[] = {
      "",
      {"\x30", 1},
      {"\x30\x01", 2},
      {"\x31\x00", 2},
      {"\x30\x80\x00\x00", 4},
      {"\x30\x03\x81\x01", 4},
      {"\x30\x03\x81\x01\x0A", 5},
      {"\x30\x02\x81\x00", 4},
      {"\x30\x06\x81\x04\x00\x00\x00\x01", 8},  // a code of four bytes
      {"\x30\x02\xA0\x00", 4},
      {"\x30\x84\xFF\xFF\xFF\xFF", 6},
      {"\x30\x03\x04\x01\x00", 5},
  };
  for (const std::string_view bytes : broken)
    EXPECT_FALSE(ParsePolicyControl(bytes).has_value()) << bytes.size();
  EXPECT_TRUE(ParsePolicyControl({"\x30\x81\x03\x81\x01\x01", 6}).has_value());
  std::mt19937 random(11);
  for (int run = 0; run < 100'000; ++run) {
    std::string bytes(random() % 12, '\0');
    for (char& byte : bytes)
      byte = random() % 4 == 0 ? static_cast<char>(random())
                               : "\x30\x03\x81\x01\xA0\x02"[random() % 6];
    ParsePolicyControl(bytes);
  }
}

TEST(PasswordWireTest, ARequestNamesUserAndBothPasswords) {
  EXPECT_EQ(Text(ModifyPasswordRequest(u"uid=e", Password(u"a\u00E4"), Password(u"\U0001F511"))),
            std::string("\x30\x12\x80\x05uid=e\x81\x03"
                        "a\xC3\xA4\x82\x04\xF0\x9F\x94\x91",
                        20));
  const std::string longer =
      Text(ModifyPasswordRequest(u"", Password(String(200, u'x')), Password(u"y")));
  EXPECT_EQ(longer.substr(0, 10), std::string("\x30\x82\x00\xD1\x80\x00\x81\x82\x00\xC8", 10));
  EXPECT_EQ(longer.size(), 4u + 209u);
}

TEST(PasswordWireTest, CodePointsHaveOneToFourBytesAndLoneSurrogatesAreReplaced) {
  const auto bytes = [](String text) { return Text(Utf8Of(Password(text))); };
  EXPECT_EQ(bytes(u"a\u00E4\u20AC\U0001F511\uFFFD"), "a\u00E4\u20AC\U0001F511\uFFFD");
  EXPECT_EQ(bytes(u"\uE000"), "\uE000") << "right behind the surrogates";
  const String alone[] = {String(1, 0xD83D), String(1, 0xDD11), {0xD83D, u'a'},
                          {0xD83D, 0xE000},  {0xDD11, 0xDD11},  {0xD83D, 0xD83D}};
  for (const String& text : alone)
    EXPECT_TRUE(bytes(text).starts_with("\uFFFD"));
  EXPECT_EQ(bytes({0xD83D, u'a'}), "\uFFFDa");
}

TEST(PasswordWireTest, ActiveDirectoryTakesUtf16InQuotationMarks) {
  EXPECT_EQ(Text(QuotedPassword(Password(u"a\u20AC"))), std::string("\"\0a\0\xAC\x20\"\0", 8));
}

TEST(EscapingTest, AValueInAFilterStaysOneValue) {
  EXPECT_EQ(EscapedForFilter(u"eva"), u"eva");
  EXPECT_EQ(EscapedForFilter(u"*()\\"), u"\\2a\\28\\29\\5c");
  EXPECT_EQ(EscapedForFilter(StringView(u"a\0b\n", 4)), u"a\\00b\\0a");
  EXPECT_EQ(EscapedForFilter(u"M\u00FCller"), u"M\u00FCller");
  EXPECT_EQ(FilledFilter(u"(&(uid={user})(x={dn}))", u"{dn}*", u"uid=a(b)"),
            u"(&(uid={dn}\\2a)(x=uid=a\\28b\\29))");
}

TEST(EscapingTest, AValueInADistinguishedNameStaysOneValue) {
  EXPECT_EQ(EscapedForDn(u"eva"), u"eva");
  EXPECT_EQ(EscapedForDn(u"a,b+c\"d\\e<f>g;h=i"), u"a\\,b\\+c\\\"d\\\\e\\<f\\>g\\;h\\=i");
  EXPECT_EQ(EscapedForDn(u"#a#"), u"\\#a#");
  EXPECT_EQ(EscapedForDn(u" a b "), u"\\ a b\\ ");
  EXPECT_EQ(EscapedForDn(u"a\tb"), u"a\\09b");
  EXPECT_EQ(FilledBindName(u"uid={user},dc=plant", u"a,dc=evil", u""),
            u"uid=a\\,dc\\=evil,dc=plant");
  EXPECT_EQ(FilledBindName(u"{user}@plant", u"eva", u""), u"eva@plant");
  EXPECT_EQ(FilledBindName(u"{dn}", u"eva", u"uid=eva"), u"uid=eva");
}

TEST(EscapingTest, ANameIsTakenFromADistinguishedNameWhereItIsPlain) {
  EXPECT_EQ(FirstValueOf(u"uid=eva,ou=people", "uid"), u"eva");
  EXPECT_EQ(FirstValueOf(u"UID=eva", "uid"), u"eva");
  EXPECT_EQ(FirstValueOf(u"UID = eva", "uid"), u"");
  EXPECT_EQ(FirstValueOf(u"uid=a\\,b\\+c,ou=people", "uid"), u"a,b+c");
  EXPECT_EQ(FirstValueOf(u"cn=eva,ou=people", "uid"), u"");
  EXPECT_EQ(FirstValueOf(u"uid=eva+cn=x,ou=people", "uid"), u"");
  EXPECT_EQ(FirstValueOf(u"uid=M\\C3\\BCller", "uid"), u"");
  EXPECT_EQ(FirstValueOf(u"uid=eva\\", "uid"), u"");
  EXPECT_EQ(FirstValueOf(u"uid=a+b,ou=people", "uid"), u"") << "of several values";
  EXPECT_EQ(FirstValueOf(u"eva", "uid"), u"");
}

TEST(EscapingTest, DistinguishedNamesAreComparedWithoutBlanksAndCase) {
  EXPECT_EQ(ComparableDn(u"CN = Chefs , DC=Plant"), ComparableDn(u"cn=chefs,dc=plant"));
  EXPECT_NE(ComparableDn(u"cn=a b,dc=plant"), ComparableDn(u"cn=ab,dc=plant"));
  EXPECT_NE(ComparableDn(u"cn=a\\,dc=plant"), ComparableDn(u"cn=a,dc=plant"));
  EXPECT_EQ(ComparableDn(u"cn=a\\ ,dc=plant"), u"cn=a\\ ,dc=plant") << "an escaped blank stays";
  EXPECT_EQ(ComparableDn(u"cn=\\ a"), u"cn=\\ a");
  EXPECT_EQ(ComparableDn(u"cn=a\\\\ , dc=plant"), u"cn=a\\\\,dc=plant") << "behind a backslash";
}

}  // namespace
}  // namespace krx::test
