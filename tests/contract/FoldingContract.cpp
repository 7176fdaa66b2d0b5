#include <gtest/gtest.h>

#include "Port.h"

namespace krx::test {

namespace {

class FoldingContract : public testing::Test {
 protected:
  String Fold(StringView text) const { return port->Platform().Folding()(text); }

  const std::unique_ptr<Port> port = MakePort();
};

TEST_F(FoldingContract, LettersOfEveryScriptAreTheSameInBothCases) {
  const std::pair<StringView, StringView> same[] = {
      {u"AZ", u"az"},
      {u"\u00c4\u00d6\u00dc", u"\u00e4\u00f6\u00fc"},                          // German
      {u"\u0141\u017b\u0179\u0104", u"\u0142\u017c\u017a\u0105"},              // Polish
      {u"\u017d\u0160\u010c\u0158", u"\u017e\u0161\u010d\u0159"},              // Czech
      {u"\u0386\u0388\u0389\u038c\u03ab", u"\u03ac\u03ad\u03ae\u03cc\u03cb"},  // Greek
      {u"\u01a0\u01af\u1ea0\u1ed8\u1ef4", u"\u01a1\u01b0\u1ea1\u1ed9\u1ef5"},  // Vietnamese
      {u"\u0401\u0416\u040b\u0490", u"\u0451\u0436\u045b\u0491"},              // Cyrillic
      {u"\u0531\u0556", u"\u0561\u0586"},                                      // Armenian
      {u"\u03a3\u03c2", u"\u03c3\u03c3"},                                      // final sigma
      {u"\u212a\u212b", u"k\u00e5"},  // Kelvin and Angstrom signs
  };
  for (const auto& [upper, lower] : same)
    EXPECT_EQ(ToUtf8(Fold(upper)), ToUtf8(Fold(lower)));
}

TEST_F(FoldingContract, OtherCharactersStayApart) {
  const std::pair<StringView, StringView> apart[] = {
      {u"o", u"\u00f6"},      {u"\u00df", u"ss"}, {u"I", u"\u0131"}, {u"i", u"\u0130"},
      {u"\u00d7", u"\u00f7"}, {u"[", u"{"},       {u"@", u"`"},      {u"\u0141", u"L"},
  };
  for (const auto& [a, b] : apart)
    EXPECT_NE(ToUtf8(Fold(a)), ToUtf8(Fold(b)));
}

TEST_F(FoldingContract, TextsKeepTheirLengthWhateverTheyConsistOf) {
  for (const StringView text : {u"", u"\u00df\u0130", u"\U0001F600", u"\xd83d", u"\xde00 a"})
    EXPECT_EQ(Fold(text).size(), text.size());
  EXPECT_EQ(Fold(u"\U0001F600"), u"\U0001F600");
  EXPECT_EQ(Fold(u"\xd83d"), u"\xd83d") << "half a character";
}

}  // namespace

}  // namespace krx::test
