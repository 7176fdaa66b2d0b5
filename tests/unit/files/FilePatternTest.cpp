#include "folders/FilePattern.h"

#include <gtest/gtest.h>

#include "ports/headless/HeadlessPlatform.h"

namespace krx::test {
namespace {

struct PatternCase {
  StringView Pattern;
  std::vector<StringView> Matching;
  std::vector<StringView> Others;
};

class FilePatternTest : public testing::Test {
 protected:
  folders::FilePattern Pattern(StringView text) const { return {text, platform_.Folding()}; }

 private:
  headless::HeadlessPlatform platform_;
};

TEST_F(FilePatternTest, MatchesAsPeopleExpect) {
  const PatternCase cases[] = {
      {u"*.txt", {u"a.txt", u"A.TXT", u".txt", u"a.b.txt"}, {u"a.txt2", u"atxt", u"a.bmp", u""}},
      {u"*.bmp;*.gif", {u"a.bmp", u"b.GIF"}, {u"a.bm", u"gif"}},
      {u" *.bmp ; *.gif ;;", {u"a.bmp", u"b.gif"}, {u"a.txt", u""}},
      {u"", {u"a", u"a.b", u""}, {}},
      {u";; ;", {u"a", u"a.b"}, {}},
      {u"*", {u"a", u"a.b"}, {}},
      {u"*.*", {u"readme", u"a.b", u".profile"}, {}},
      {u"*.", {u"readme", u"end."}, {u"a.b"}},
      {u"read*.*", {u"readme", u"read.me"}, {u"thread"}},
      {u"readme.*", {u"readme", u"README.txt"}, {u"readme2", u"readme2.txt"}},
      {u"?.txt", {u"a.txt", u"\U0001F600.txt"}, {u".txt", u"ab.txt"}},
      {u"a?", {u"ab", u"a."}, {u"a", u"abc"}},
      {u"a*b*c", {u"abc", u"aXbYc", u"abbcc", u"abcbc"}, {u"ab", u"acb", u"abcd"}},
      {u"\u00c4\u03a3*", {u"\u00e4\u03c3.txt"}, {u"a\u03c3"}},
      {u"\u0141\u00d3D\u0179*", {u"\u0142\u00f3d\u017a.txt"}, {u"lodz.txt"}},
      {u"exact", {u"EXACT"}, {u"exact.txt", u"inexact"}},
      {u"**", {u"", u"a"}, {}},
  };
  for (const PatternCase& c : cases) {
    const folders::FilePattern pattern = Pattern(c.Pattern);
    for (const StringView name : c.Matching)
      EXPECT_TRUE(pattern.Matches(name)) << ToUtf8(c.Pattern) << " / " << ToUtf8(name);
    for (const StringView name : c.Others)
      EXPECT_FALSE(pattern.Matches(name)) << ToUtf8(c.Pattern) << " / " << ToUtf8(name);
  }
}

TEST_F(FilePatternTest, ManyStarsTakeNoExponentialTime) {
  String stars;
  for (int i = 0; i < 60; ++i)
    stars += u"*a";
  const folders::FilePattern pattern = Pattern(stars + u"b");
  EXPECT_FALSE(pattern.Matches(String(5000, u'a')));  // with exponential time this never ends
}

}  // namespace
}  // namespace krx::test
