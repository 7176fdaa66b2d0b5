#include "support/FormTest.h"

#include <random>

// At 8 points a character is 80 twips wide; 60 % of a work area of 15360 are 9216 twips, which hold
// 115 characters (9200).
namespace krx::test {

namespace {

constexpr std::size_t kFitting = 115;

// Wraps at `limit` code points a line.
String Wrapped(StringView text, std::size_t limit) {
  headless::HeadlessPlatform platform;
  const Font font{u"x", 8};
  return ui::WrapLines(text, [&](StringView line) {
    return platform.MeasureText(font, line).Width <= static_cast<float>(limit) * 80;
  });
}

std::size_t CodePoints(StringView text) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < text.size(); ++i, ++count) {
    const bool pair =
        (text[i] & 0xFC00) == 0xD800 && i + 1 < text.size() && (text[i + 1] & 0xFC00) == 0xDC00;
    if (pair) ++i;
  }
  return count;
}

}  // namespace

class KRXIndex : public FormTest {
 protected:
  KRXIndex() { index.Font = krx::Font{u"x", 8}; }
  String Shown(String text) {
    index.Text = std::move(text);
    return index.DisplayedText();
  }

  ui::KRXIndex index{form, u"idxSample"};
};

TEST_F(KRXIndex, ShowsAShortTextAsItStands) {
  EXPECT_EQ(Shown(u"Hello world"), u"Hello world");
  EXPECT_EQ(Shown(u""), u"");
}

TEST_F(KRXIndex, ShowsBackslashAndNAsALineBreak) {
  EXPECT_EQ(Shown(u"a\\nb\\n\\nc"), u"a\nb\n\nc");
}

TEST_F(KRXIndex, OtherBackslashesAreShown) {
  EXPECT_EQ(Shown(u"C:\\temp\\N \\"), u"C:\\temp\\N \\");
}

TEST_F(KRXIndex, RealLineBreaksAreShownAsLineFeeds) {
  EXPECT_EQ(Shown(u"a\r\nb\rc\nd"), u"a\nb\nc\nd");
}

TEST_F(KRXIndex, LineOfSixtyPercentOfTheWorkAreaStays) {
  const String line(kFitting, u'a');
  EXPECT_EQ(Shown(line), line);
  EXPECT_EQ(Shown(line + u'a'), line + u"\na");
}

TEST_F(KRXIndex, BreaksAtTheLastBlankThatFits) {
  const String first(60, u'a');
  const String second(60, u'b');
  EXPECT_EQ(Shown(first + u' ' + second), first + u'\n' + second);
  EXPECT_EQ(Shown(u"x " + first + u' ' + second), u"x " + first + u'\n' + second);
}

TEST_F(KRXIndex, BlankRightBehindTheFittingPartEndsTheLine) {
  const String first(kFitting, u'a');
  EXPECT_EQ(Shown(first + u" bbb"), first + u"\nbbb");
}

TEST_F(KRXIndex, EncodedBreaksStartAFreshLine) {
  const String line(kFitting, u'a');
  EXPECT_EQ(Shown(line + u"\\n" + line), line + u'\n' + line);
}

TEST_F(KRXIndex, FollowsTheWorkAreaAndTheFont) {
  platform.Area = {0, 0, 8000, 6000};  // 4800 twips: 60 characters of 80
  EXPECT_EQ(Shown(String(61, u'a')), String(60, u'a') + u"\na");
  index.Font = krx::Font{u"x", 16};  // 30 characters of 160
  EXPECT_EQ(Shown(String(31, u'a')), String(30, u'a') + u"\na");
}

TEST_F(KRXIndex, LeavesOutWhatItsRoomDoesNotHold) {
  index.Room = Size{800, 2 * 192};  // 10 characters, 2 lines
  EXPECT_EQ(Shown(u"0123456789"), u"0123456789");
  EXPECT_EQ(Shown(u"0123456789a"), u"012345678\u2026");
  EXPECT_EQ(Shown(u"a\\nb"), u"a\nb");
  EXPECT_EQ(Shown(u"a\\nb\\nc"), u"a\nb\u2026");
  EXPECT_EQ(index.WholeText(), u"a\nb\nc");
}

// Ten lines of 192, of which a height of 600 shows three.
TEST_F(KRXIndex, ScrollsBetweenItsFirstLineAndItsLast) {
  index.Scrolls = true;
  index.Height = 600;
  index.Text = u"0\\n1\\n2\\n3\\n4\\n5\\n6\\n7\\n8\\n9";
  EXPECT_EQ(index.LineCount(), 10);
  EXPECT_EQ(index.LinesInSight(), 3);
  const std::vector<std::pair<int, int>> walk{{-5, 0}, {4, 4}, {7, 7}, {8, 7}, {1000, 7}};
  for (const auto& [to, at] : walk) {
    index.ScrollTo(to);
    EXPECT_EQ(index.TopLine(), at);
  }
}

TEST_F(KRXIndex, PageKeysScrollItFromTheButtonsAndArrowsOnceItHasTheFocus) {
  index.Scrolls = true;
  index.TabStop = true;
  index.Height = 600;
  index.Text = u"0\\n1\\n2\\n3\\n4\\n5\\n6\\n7\\n8\\n9";
  form.txtName.Enabled = false;
  Show(form, [this](Operator& op) {
    EXPECT_EQ(op.Focus(), u"keyOne");
    const std::vector<std::pair<int, int>> keys{
        {ui::kKeyPageDown, 3}, {ui::kKeyEnd, 7}, {ui::kKeyPageUp, 4}, {ui::kKeyHome, 0}};
    for (const auto& [key, top] : keys) {
      op.Press(key);
      EXPECT_EQ(index.TopLine(), top);
      EXPECT_EQ(op.Focus(), u"keyOne");
    }
    op.Press(ui::kKeyDown);
    EXPECT_EQ(op.Focus(), u"keyTwo");
    EXPECT_EQ(index.TopLine(), 0);
    index.SetFocus();
    for (const auto& [key, top] : std::vector<std::pair<int, int>>{
             {ui::kKeyDown, 1}, {ui::kKeyDown, 2}, {ui::kKeyUp, 1}, {ui::kKeyPageDown, 4}}) {
      op.Press(key);
      EXPECT_EQ(index.TopLine(), top);
    }
    EXPECT_EQ(op.Focus(), u"idxSample");
  });
}

TEST_F(KRXIndex, LeavesTheKeysOfATextBoxAlone) {
  index.Scrolls = true;
  index.Height = 600;
  index.Text = u"0\\n1\\n2\\n3\\n4\\n5";
  Show(form, [this](Operator& op) {
    EXPECT_EQ(op.Focus(), u"txtName");
    op.Press(ui::kKeyEnd);
    EXPECT_EQ(index.TopLine(), 0);
  });
}

TEST_F(KRXIndex, HasNoAccessKeys) {
  EXPECT_EQ(Shown(u"a & b"), u"a & b");
  EXPECT_EQ(index.AccessKey(), 0);
  EXPECT_FALSE(index.CanFocus());
}

TEST(WrapLines, LongWordsBreakInside) {
  EXPECT_EQ(Wrapped(u"abcdefgh", 3), u"abc\ndef\ngh");
  EXPECT_EQ(Wrapped(u"ab cdefgh", 3), u"ab\ncde\nfgh");
}

TEST(WrapLines, OneBlankIsLostAtABreak) {
  EXPECT_EQ(Wrapped(u"ab cd", 3), u"ab\ncd");
  EXPECT_EQ(Wrapped(u"ab  cd", 3), u"ab \ncd");
  EXPECT_EQ(Wrapped(u"a b c d", 3), u"a b\nc d");
}

TEST(WrapLines, LeadingBlankIsNoPlaceToBreak) {
  EXPECT_EQ(Wrapped(u" abcd", 3), u" ab\ncd");
}

TEST(WrapLines, AtLeastOneCodePointStaysOnALine) {
  EXPECT_EQ(Wrapped(u"abc", 0), u"a\nb\nc");
  EXPECT_EQ(Wrapped(u"\U0001F600\U0001F601", 0), u"\U0001F600\n\U0001F601");
}

TEST(WrapLines, SurrogatePairsStayWhole) {
  EXPECT_EQ(Wrapped(u"a\U0001F600\U0001F601b", 2), u"a\U0001F600\n\U0001F601b");
  EXPECT_EQ(Wrapped(u"\U0001F600\U0001F601\U0001F602", 1), u"\U0001F600\n\U0001F601\n\U0001F602");
}

TEST(WrapLines, BlankAtTheEndStartsNoLine) {
  EXPECT_EQ(Wrapped(u"abc ", 3), u"abc");
  EXPECT_EQ(Wrapped(u"abc def ", 3), u"abc\ndef");
}

// Characters that are measured to wrap a text of this length.
std::size_t Measured(std::size_t length, StringView word) {
  String text;
  while (text.size() < length)
    text += word;
  std::size_t measured = 0;
  ui::WrapLines(text, [&](StringView line) {
    measured += line.size();
    return line.size() <= 100;
  });
  return measured;
}

// However long the text is, each of its characters is measured some times and no more.
TEST(WrapLines, MeasuresAsMuchMoreAsTheTextIsLonger) {
  for (const StringView word : {u"word ", u"x", u"a rather long line with a break at its end\n"}) {
    const std::size_t measured = Measured(10'000, word);
    EXPECT_LE(measured, 20 * 10'000u) << ToUtf8(word);
    EXPECT_LE(Measured(160'000, word), 17 * measured) << ToUtf8(word);
  }
}

TEST(CutLines, EndsWhatDoesNotFitWithAnEllipsis) {
  const auto cut = [](StringView text, std::size_t limit) {
    return ui::CutLines(text, [limit](StringView line) { return line.size() <= limit; });
  };
  EXPECT_EQ(cut(u"abcdef", 6), u"abcdef");
  EXPECT_EQ(cut(u"abcdefg", 6), u"abcde\u2026");
  EXPECT_EQ(cut(u"abcdefg\nab\n\nabcdefgh", 6), u"abcde\u2026\nab\n\nabcde\u2026");
  EXPECT_EQ(cut(u"abc", 1), u"a\u2026");  // one character at least
  EXPECT_EQ(cut(u"abcd\U0001F600\U0001F601", 6), u"abcd\u2026");
  EXPECT_EQ(cut(u"", 0), u"");
}

TEST(CutLines, LooksAtNoMoreOfALineThanIsShown) {
  std::size_t measured = 0;
  ui::CutLines(String(1'000'000, u'x'), [&](StringView line) {
    measured += line.size();
    return line.size() <= 100;
  });
  EXPECT_LE(measured, 5'000u);
}

TEST(WrapLines, EmptyLinesStay) {
  EXPECT_EQ(Wrapped(u"\n\na\n", 1), u"\n\na\n");
}

// Nothing is lost but the blanks at breaks, at most one at each and none that starts its line; the
// end of a line is a break too. Both texts are walked together.
void ExpectSameButBlanksAtBreaks(StringView before, StringView after) {
  std::size_t i = 0;
  const auto ends_line = [&] {
    return i < before.size() && before[i] == u' ' &&
           (i + 1 == before.size() || before[i + 1] == u'\n');
  };
  for (const char16_t unit : after) {
    if (ends_line() && unit != u' ') ++i;
    const bool matches = i < before.size() && before[i] == unit;
    if (matches) {
      ++i;
    } else {
      ASSERT_EQ(unit, u'\n') << "something was added";
      if (i < before.size() && before[i] == u' ') ++i;
    }
  }
  if (ends_line()) ++i;
  EXPECT_EQ(i, before.size()) << "something was lost";
}

TEST(WrapLines, RandomTextsFitAndLoseNothing) {
  std::mt19937 random{7};
  const StringView alphabet[] = {u"a", u"b", u" ", u"\n", u"\U0001F600", u"\u00E4"};
  for (int round = 0; round < 3000; ++round) {
    String text;
    for (auto left = random() % 40; left > 0; --left)
      text += alphabet[random() % 6];
    const std::size_t limit = random() % 8;
    const String wrapped = Wrapped(text, limit);
    SCOPED_TRACE(ToUtf8(text) + " at " + std::to_string(limit));
    ExpectSameButBlanksAtBreaks(text, wrapped);
    StringView rest = wrapped;
    for (;;) {
      const std::size_t end = rest.find(u'\n');
      EXPECT_LE(CodePoints(rest.substr(0, end)), std::max<std::size_t>(limit, 1));
      if (end == StringView::npos) break;
      rest.remove_prefix(end + 1);
    }
    if (testing::Test::HasFailure()) return;
  }
}

TEST(WrapLines, BreaksALongTextIntoAsFewLinesAsItsWordsAllow) {
  // Greedy: the first word of a line would not have fitted on the line before.
  std::mt19937 random{8};
  for (int round = 0; round < 1000; ++round) {
    String text(1 + random() % 4, u'a');
    for (auto words = random() % 12; words > 0; --words)
      text += u' ' + String(1 + random() % 4, u'a');
    const String wrapped = Wrapped(text, 6);
    for (std::size_t at = wrapped.find(u'\n'); at != String::npos;
         at = wrapped.find(u'\n', at + 1)) {
      const std::size_t begin = wrapped.rfind(u'\n', at - 1) + 1;  // npos + 1 is the beginning
      const std::size_t word = std::min(wrapped.find_first_of(u" \n", at + 1), wrapped.size());
      EXPECT_GT(at - begin + word - at, 6u) << ToUtf8(wrapped);
    }
    if (testing::Test::HasFailure()) return;
  }
}

}  // namespace krx::test
