#include "runtime/core/TextTable.h"

#include <random>

#include <gtest/gtest.h>

#include "FakeTexts.h"
#include "runtime/core/KorvelError.h"

namespace krx::runtime {
namespace {

TextTable TableOf(std::string_view bytes) {
  TextTable table;
  table.Add(u"test.txt", bytes);
  return table;
}

String TextOf(std::string_view bytes, StringView key = u"Key") {
  const TextTable table = TableOf(bytes);
  const String* text = table.Find(key, -105);
  return text == nullptr ? u"<none>" : *text;
}

TEST(TextTable, ReadsGroupKeyAndText) {
  const TextTable table = TableOf("-105 Yes = &Ja\n-103 lblName=&Name\n7 Cancel& = Nein\n");
  EXPECT_EQ(3u, table.Entries().size());
  EXPECT_EQ(u"&Ja", *table.Find(u"Yes", -105));
  EXPECT_EQ(u"&Name", *table.Find(u"lblName", -103));
  EXPECT_EQ(u"Nein", *table.Find(u"Cancel&", 7));
  EXPECT_EQ(nullptr, table.Find(u"Yes", -103));
  EXPECT_EQ(nullptr, table.Find(u"yes", -105));
}

TEST(TextTable, SkipsCommentsEmptyLinesAndBlanksAround) {
  EXPECT_EQ(u"a  b",
            TextOf("# note = none\n\n   \t\n  # -105 Key = no\n\t-105 \t Key\t=\t a  b \t\n"));
  EXPECT_EQ(u"a # b", TextOf("-105 Key = a # b"));
  EXPECT_TRUE(TableOf("").Entries().empty());
}

TEST(TextTable, ReadsWindowsLineEndsAndAByteOrderMark) {
  EXPECT_EQ(u"one", TextOf("\xEF\xBB\xBF-105 Key = one\r\n-105 Other = two\r\n"));
  EXPECT_EQ(u"two", TextOf("-105 Key = one\r\n-105 Other = two\r", u"Other"));
}

TEST(TextTable, KeepsEqualsSignsOfTheText) {
  EXPECT_EQ(u"a = b", TextOf("-105 Key = a = b"));
}

TEST(TextTable, ReadsLineBreaksAndBackslashes) {
  EXPECT_EQ(u"a\nb", TextOf("-105 Key = a\\nb"));
  EXPECT_EQ(u"C:\\new", TextOf("-105 Key = C:\\\\new"));
}

TEST(TextTable, ReadsEveryPlaneOfUnicode) {
  EXPECT_EQ(u"\u00C4\u20AC\U0001F600", TextOf("-105 Key = \xC3\x84\xE2\x82\xAC\xF0\x9F\x98\x80"));
  EXPECT_EQ(u"ja", TextOf("-105 \xC3\x9C = ja", u"\u00DC"));
}

TEST(TextTable, ReplacesTextsByThoseOfALaterFile) {
  TextTable table = TableOf("-105 Yes = a\n-105 No = b\n");
  table.Add(u"later.txt", "-105 Yes = c\n-105 Maybe = d\n");
  EXPECT_EQ(u"c", *table.Find(u"Yes", -105));
  EXPECT_EQ(u"b", *table.Find(u"No", -105));
  EXPECT_EQ(u"d", *table.Find(u"Maybe", -105));
}

TEST(TextTable, StaysAsItWasWhenAFileIsRefused) {
  TextTable table = TableOf("-105 Yes = a\n");
  EXPECT_THROW(table.Add(u"later.txt", "-105 Yes = b\n-105 No = c\nnonsense\n"), Error);
  EXPECT_EQ(1u, table.Entries().size());
  EXPECT_EQ(u"a", *table.Find(u"Yes", -105));
}

TEST(TextTable, NamesFileLineAndReasonOfARefusal) {
  const struct {
    std::string Bytes;
    String Place;
  } malformed[] = {
      {"nonsense", u"line 1: \"=\" is missing between key and text"},
      {"# a\n\n-105 Key", u"line 3: \"=\" is missing between key and text"},
      {"\r\n-105 Key =  \t", u"line 2: the text is empty"},
      {"-105 Key =", u"line 1: the text is empty"},
      {"= text", u"line 1: the line does not begin with the number of a text group"},
      {"Key = text", u"line 1: the line does not begin with the number of a text group"},
      {"-105x Key = text", u"line 1: the line does not begin with the number of a text group"},
      {"+105 Key = text", u"line 1: the line does not begin with the number of a text group"},
      {"99999999999 Key = a", u"line 1: the line does not begin with the number of a text group"},
      {"-105 = text", u"line 1: the key is missing"},
      {"-105 two keys = text", u"line 1: the key contains a blank"},
      {"-105 Key = a\n-105 No = b\n-105 Key = c", u"line 3: the key stands already in line 1"},
      {"-105 Key = a\\tb", u"line 1: after \"\\\" only \"n\" or \"\\\" may stand"},
      {"-105 Key = a\\", u"line 1: after \"\\\" only \"n\" or \"\\\" may stand"},
      {std::string("-105 Key = a\0b", 14), u"line 1: the line contains a control character"},
      {"-105 Key = a\rb", u"line 1: the line contains a control character"},
      {"-105 K\x01y = a", u"line 1: the line contains a control character"},
      {"-105 Key = \xC4nderung", u"line 1: the line is not UTF-8"},
      {"-105 \xFF = a", u"line 1: the line is not UTF-8"},
      {"-105 Key = \xC0\x80", u"line 1: the line is not UTF-8"},          // overlong
      {"-105 Key = \xE0\x82\x80", u"line 1: the line is not UTF-8"},      // overlong
      {"-105 Key = \xED\xA0\x80", u"line 1: the line is not UTF-8"},      // surrogate
      {"-105 Key = \xF4\x90\x80\x80", u"line 1: the line is not UTF-8"},  // beyond Unicode
      {"-105 Key = \xE2\x82", u"line 1: the line is not UTF-8"},          // cut off
  };
  for (const auto& [bytes, place] : malformed) {
    const Error error = FailureOf([&bytes = bytes] { TableOf(bytes); });
    EXPECT_EQ(u"test.txt, " + place, error.Description()) << bytes;
    EXPECT_EQ(kMalformedTexts, error.Status());
    EXPECT_EQ(u"KorvelRuntime", error.Source());
  }
}

// Whatever a file holds, it is read or refused with its name and a line; the sanitizers watch.
TEST(TextTable, ReadsOrRefusesAnyBytes) {
  constexpr std::string_view kPieces[] = {
      "-105", " ",    "=",        "\n",       "\r\n", "Key",  "\\n",          "\\",       "#",
      "\t",   "\xC3", "\xC3\xA4", "\xE2\x82", "\0",   "-103", "\xEF\xBB\xBF", "\xF0\x9F", "7"};
  std::mt19937 random(20240229);
  int read = 0;
  for (int round = 0; round < 20000; ++round) {
    std::string bytes;
    for (std::size_t left = random() % 24; left > 0; --left) {
      if (random() % 8 == 0) {
        bytes += static_cast<char>(random() & 0xFF);
      } else {
        bytes += kPieces[random() % std::size(kPieces)];
      }
    }
    try {
      const TextTable table = TableOf(bytes);
      for (const auto& [name, text] : table.Entries()) {
        EXPECT_FALSE(name.second.empty());
        EXPECT_FALSE(text.empty());
      }
      ++read;
    } catch (const Error& error) {
      EXPECT_EQ(kMalformedTexts, error.Status());
      EXPECT_TRUE(error.Description().starts_with(u"test.txt, line "));
    }
  }
  EXPECT_GT(read, 100) << "the bytes are too wild to reach the reading of texts";
}

}  // namespace
}  // namespace krx::runtime
