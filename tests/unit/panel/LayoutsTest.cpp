// The keyboard layouts that the dialogs bring along, and what their format refuses.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "Layouts.h"
#include "panel/KeyboardLayout.h"
#include "support/Print.h"

namespace krx::panel {
namespace {

using test::LayoutText;

std::vector<LayoutRow> RowsOf(const std::string& name) {
  return ParseLayout(LayoutText(name)).Rows;
}

void Collect(const KeyboardLayout& layout, bool spare, std::set<String>& characters) {
  for (const LayoutRow& row : layout.Rows) {
    if (row.Spare && !spare) continue;
    for (const LayoutKey& key : row.Keys) {
      if (key.Act == Act::Space) characters.insert(u" ");
      for (const Characters& state : {key.Plain, key.Shifted}) {
        if (key.Act != Act::Type) continue;
        characters.insert(state.Own);
        characters.insert(state.Held.begin(), state.Held.end());
      }
    }
  }
}

// What can be typed with this layout for letters and the pages that every keyboard has.
std::set<String> Reachable(const std::string& name, bool spare) {
  std::set<String> characters;
  for (const std::string& page : {name, std::string("symbols"), std::string("accents")})
    Collect(ParseLayout(LayoutText(page)), spare, characters);
  return characters;
}

// Without holding a key, as beside a password.
std::set<String> WithoutHolding(const std::string& name) {
  std::set<String> characters;
  for (const std::string& page : {name, std::string("symbols"), std::string("accents")}) {
    for (const LayoutRow& row : RowsOf(page)) {
      for (const LayoutKey& key : row.Keys) {
        if (!row.Spare && key.Act == Act::Type) characters.insert({key.Plain.Own, key.Shifted.Own});
      }
    }
  }
  return characters;
}

class Layouts : public testing::TestWithParam<const char*> {};

TEST_P(Layouts, AllRowsFillTheWidth) {
  for (const char* const page : {GetParam(), "symbols", "accents"}) {
    const KeyboardLayout layout = ParseLayout(LayoutText(page));
    EXPECT_EQ(4u, layout.RowCount(false)) << page;
    EXPECT_EQ(5u, layout.RowCount(true)) << page;
    for (const LayoutRow& row : layout.Rows) {
      float width = 0;
      for (const LayoutKey& key : row.Keys)
        width += key.Width;
      EXPECT_FLOAT_EQ(13, width) << page;
    }
  }
}

TEST_P(Layouts, EveryPlainCharacterIsReachableOnTheLowestScreenAlsoInAPassword) {
  const std::set<String> characters = WithoutHolding(GetParam());
  for (char16_t unit = u'!'; unit <= u'~'; ++unit)
    EXPECT_TRUE(characters.contains(String(1, unit))) << ToUtf8(String(1, unit));
}

TEST_P(Layouts, WhatASpareRowHasIsFoundElsewhereToo) {
  const std::set<String> without = Reachable(GetParam(), false);
  for (const String& character : Reachable(GetParam(), true)) {
    const bool dash_or_quote = character.front() >= 0x2000;
    EXPECT_TRUE(without.contains(character) || dash_or_quote) << ToUtf8(character);
  }
}

TEST_P(Layouts, NamesEveryKeyThatBearsASign) {
  const KeyboardLayout letters = ParseLayout(LayoutText(GetParam()));
  EXPECT_FALSE(letters.Names.at(u"keyboard").empty());
  for (const char* const page : {GetParam(), "symbols", "accents"}) {
    for (const LayoutRow& row : RowsOf(page)) {
      for (const LayoutKey& key : row.Keys) {
        if (key.Act == Act::Type || key.Act == Act::Page) continue;
        EXPECT_TRUE(letters.Names.contains(String(NameOf(key.Act)))) << ToUtf8(NameOf(key.Act));
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Languages, Layouts, testing::Values("de", "en", "us", "fr"),
                         [](const auto& test) { return std::string(test.param); });

TEST(LayoutsOfLanguages, HaveTheirLettersWithoutHoldingAKey) {
  const auto has = [](const char* name, StringView letters) {
    std::set<String> own;
    for (const LayoutRow& row : RowsOf(name))
      for (const LayoutKey& key : row.Keys)
        own.insert({key.Plain.Own, key.Shifted.Own});
    return std::all_of(letters.begin(), letters.end(),
                       [&](char16_t letter) { return own.contains(String(1, letter)); });
  };
  EXPECT_TRUE(has("de", u"äöüÄÖÜß"));
  EXPECT_TRUE(has("fr", u"éèçàù"));
  EXPECT_TRUE(has("en", u"£#~"));
  EXPECT_TRUE(has("us", u"$#@~"));
}

TEST(LayoutsOfLanguages, DifferInTheOrderOfTheirLetters) {
  const auto row = [](const char* name) {
    String letters;
    const LayoutRow top = RowsOf(name)[1];
    for (const LayoutKey& key : top.Keys)
      letters += key.Plain.Own;
    return letters.substr(0, 6);
  };
  EXPECT_EQ(u"qwertz", row("de"));
  EXPECT_EQ(u"qwerty", row("en"));
  EXPECT_EQ(u"qwerty", row("us"));
  EXPECT_EQ(u"azerty", row("fr"));
}

constexpr const char* kRow = "row: {page} {hide} {space} {backspace} {enter}\n";

std::string Refusal(const std::string& text) {
  try {
    ParseLayout(text);
  } catch (const LayoutError& error) {
    return error.what();
  }
  return "taken";
}

TEST(LayoutFormat, TakesAPlantsOwnLayout) {
  const KeyboardLayout layout = ParseLayout(
      "\xEF\xBB\xBF# mine\r\ntitle = ABC\r\nrow: aA:\xC3\xA0\xC3\xA2:\xC3\x80 .: 1:\xC2\xB9 :: "
      "{{\r\n" +
      std::string(kRow));
  EXPECT_EQ(u"ABC", layout.Page);
  const auto& keys = layout.Rows[0].Keys;
  EXPECT_EQ(u"a", keys[0].Plain.Own);
  EXPECT_EQ(u"A", keys[0].Shifted.Own);
  EXPECT_THAT(keys[0].Plain.Held, testing::ElementsAre(u"à", u"â"));
  EXPECT_THAT(keys[0].Shifted.Held, testing::ElementsAre(u"À"));
  EXPECT_EQ(u":", keys[1].Shifted.Own);
  EXPECT_EQ(u"1", keys[2].Shifted.Own);
  EXPECT_THAT(keys[2].Shifted.Held, testing::ElementsAre(u"¹"));
  EXPECT_EQ(u":", keys[3].Plain.Own);
  EXPECT_EQ(u"{", keys[4].Plain.Own);
}

TEST(LayoutFormat, RefusesWithLineAndReason) {
  const std::string row = kRow;
  EXPECT_EQ("taken", Refusal("title = A\n" + row));
  EXPECT_EQ("line 1: the file is not UTF-8", Refusal("title = \xFF\n" + row));
  EXPECT_EQ("line 2: neither a row nor a name, \"=\" and a text", Refusal("title = A\nrows\n"));
  EXPECT_EQ("line 2: title is named twice", Refusal("title = A\ntitle = B\n" + row));
  EXPECT_EQ("line 3: the row is as wide as 6.5 keys, the first one as 5",
            Refusal("title = A\n" + row + "row: a b c d e {tab*1.5}\n"));
  EXPECT_EQ("line 1: no key is called escape", Refusal("row: {escape}\n"));
  EXPECT_EQ("line 1: 0.1 is no width of a key", Refusal("row: {tab*0.1}\n"));
  EXPECT_EQ("line 1: 1x is no width", Refusal("row: {tab*1x}\n"));
  EXPECT_EQ("line 1: a key has two characters, then \":\"", Refusal("row: abc\n"));
  EXPECT_EQ("line 1: what a key offers when it is held", Refusal("row: aA:x:y:z\n"));
  EXPECT_EQ("line 1: the row has no keys", Refusal("row:\n"));
  EXPECT_EQ("line 2: the layout has no title", Refusal("# nothing\n" + row));
  EXPECT_EQ("line 2: no row that is always there has the key {hide}",
            Refusal("title = A\nrow: {page} {space} {backspace} {enter}\n"));
  EXPECT_EQ("line 2: no row that is always there has the key {page}",
            Refusal("title = A\nspare: {page} {hide} {space} {backspace} {enter}\n"));
  EXPECT_EQ("line 1: the line contains a control character", Refusal("title = \x01\n" + row));
}

// Any piece of a layout, cut off anywhere, is taken or refused.
TEST(LayoutFormat, SurvivesCuts) {
  const std::string text = LayoutText("fr");
  ASSERT_FALSE(text.empty());
  int refused = 0;
  for (std::size_t length = 0; length < text.size(); ++length)
    refused += Refusal(text.substr(0, length)) != "taken" ? 1 : 0;
  EXPECT_GT(refused, static_cast<int>(text.size()) - 40) << "all but the last row's end";
}

}  // namespace
}  // namespace krx::panel
