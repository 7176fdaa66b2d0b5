#include "base/String.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <limits>

#include "support/Errors.h"

namespace krx {

using test::kTypeMismatch;
using test::StatusOf;

TEST(String, NumbersAreWrittenInDecimal) {
  EXPECT_EQ(ToString(0), u"0");
  EXPECT_EQ(ToString(13), u"13");
  EXPECT_EQ(ToString(std::numeric_limits<std::int32_t>::min()), u"-2147483648");
}

TEST(String, DecimalTextsAreRead) {
  EXPECT_EQ(ToLong(u"0"), 0);
  EXPECT_EQ(ToLong(u"-7"), -7);
  EXPECT_EQ(ToLong(u"0000000013"), 13);
  EXPECT_EQ(ToLong(u"2147483647"), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(ToLong(u"-2147483648"), std::numeric_limits<std::int32_t>::min());
}

TEST(String, AnythingElseIsATypeMismatch) {
  for (const StringView text : {u"", u"-", u"--1", u"1-", u"+1", u" 1", u"1 ", u"1.0", u"a", u"0x1",
                                u"2147483648", u"-2147483649", u"99999999999", u"\u0661"}) {
    EXPECT_EQ(StatusOf([&] { ToLong(text); }), kTypeMismatch) << ToUtf8(text);
  }
}

TEST(String, EveryCodePointLengthBecomesUtf8) {
  EXPECT_EQ(ToUtf8(u"A\u007F"), "A\x7F");
  EXPECT_EQ(ToUtf8(u"\u0080\u07FF"), "\xC2\x80\xDF\xBF");
  EXPECT_EQ(ToUtf8(u"\u0800\uFFFF"), "\xE0\xA0\x80\xEF\xBF\xBF");
  EXPECT_EQ(ToUtf8(u"\U00010000\U0010FFFF"), "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
}

TEST(String, LoneSurrogatesBecomeTheReplacementCharacter) {
  const String high(1, char16_t{0xD83D});
  const String low(1, char16_t{0xDE00});
  EXPECT_EQ(ToUtf8(high), "\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf8(low), "\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf8(high + u"a"),
            "\xEF\xBF\xBD"
            "a");
  EXPECT_EQ(ToUtf8(low + high), "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf8(high + low), "\xF0\x9F\x98\x80");
}

TEST(String, EveryOccurrenceIsReplacedOnce) {
  EXPECT_EQ(ReplaceAll(u"abab", u"ab", u"x"), u"xx");
  EXPECT_EQ(ReplaceAll(u"aaa", u"a", u"aa"), u"aaaaaa");
  EXPECT_EQ(ReplaceAll(u"aaa", u"aa", u"b"), u"ba");
  EXPECT_EQ(ReplaceAll(u"abc", u"x", u"y"), u"abc");
  EXPECT_EQ(ReplaceAll(u"abc", u"b", u""), u"ac");
  EXPECT_EQ(ReplaceAll(u"", u"a", u"b"), u"");
}

// Processor time for a text of so many line feeds, the best of some rounds.
double TimeToReplace(std::size_t count) {
  const String text(count, u'\n');
  double best = 1e9;
  for (int round = 0; round < 7; ++round) {
    const std::clock_t begin = std::clock();
    EXPECT_EQ(ReplaceAll(text, u"\n", u"\\n").size(), 2 * count);
    best = std::min(best, static_cast<double>(std::clock() - begin));
  }
  return best;
}

// A text 32 times as long takes about 32 times as long, not 32 * 32 = 1024 times.
TEST(String, ReplacingGrowsWithTheText) {
  EXPECT_LT(TimeToReplace(128'000) / TimeToReplace(4'000), 250);
}

}  // namespace krx
