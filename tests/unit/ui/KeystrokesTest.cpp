#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

#include "support/Errors.h"
#include "ui/Keyboard.h"

namespace krx::ui {

void PrintTo(const Keystroke& key, std::ostream* out) {
  *out << "{code " << key.Code << " character " << static_cast<int>(key.Character) << " shift "
       << key.Shift << '}';
}

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::uint32_t kMalformed = 0x800A0000u + 5;

Keystroke Character(char16_t character, int shift = 0) {
  return {0, character, shift};
}
Keystroke Named(int code, int shift = 0) {
  return {code, 0, shift};
}

TEST(Keystrokes, CharactersStandForThemselves) {
  EXPECT_THAT(ParseKeystrokes(u"F1"), ElementsAre(Character(u'F'), Character(u'1')));
  EXPECT_THAT(ParseKeystrokes(u" [\u00E4"),
              ElementsAre(Character(u' '), Character(u'['), Character(u'\u00E4')));
  EXPECT_THAT(ParseKeystrokes(u""), IsEmpty());
}

TEST(Keystrokes, BracesNameAKeyInAnyCase) {
  EXPECT_THAT(ParseKeystrokes(u"{F1}"), ElementsAre(Named(112)));
  EXPECT_THAT(ParseKeystrokes(u"{f16}"), ElementsAre(Named(127)));
  EXPECT_THAT(ParseKeystrokes(u"{Enter}{esc}{TAB}"), ElementsAre(Named(13), Named(27), Named(9)));
  EXPECT_THAT(ParseKeystrokes(u"{BACKSPACE}{BS}{BKSP}"), ElementsAre(Named(8), Named(8), Named(8)));
  EXPECT_THAT(ParseKeystrokes(u"{PGUP}{PGDN}{END}{HOME}"),
              ElementsAre(Named(33), Named(34), Named(35), Named(36)));
  EXPECT_THAT(ParseKeystrokes(u"{LEFT}{UP}{RIGHT}{DOWN}"),
              ElementsAre(Named(37), Named(38), Named(39), Named(40)));
  EXPECT_THAT(ParseKeystrokes(u"{INSERT}{INS}{DELETE}{DEL}"),
              ElementsAre(Named(45), Named(45), Named(46), Named(46)));
}

TEST(Keystrokes, BracesEscapeACharacter) {
  EXPECT_THAT(ParseKeystrokes(u"{+}{^}{%}{~}{(}{)}{{}{}}{a}"),
              ElementsAre(Character(u'+'), Character(u'^'), Character(u'%'), Character(u'~'),
                          Character(u'('), Character(u')'), Character(u'{'), Character(u'}'),
                          Character(u'a')));
}

TEST(Keystrokes, NumberRepeatsTheKey) {
  EXPECT_THAT(ParseKeystrokes(u"{LEFT 3}"), ElementsAre(Named(37), Named(37), Named(37)));
  EXPECT_THAT(ParseKeystrokes(u"{x 2}"), ElementsAre(Character(u'x'), Character(u'x')));
  EXPECT_THAT(ParseKeystrokes(u"{x 0}"), IsEmpty());
  EXPECT_THAT(ParseKeystrokes(u"{  2}"), ElementsAre(Character(u' '), Character(u' ')));
  EXPECT_EQ(ParseKeystrokes(u"{x 1000}").size(), 1000u);
}

TEST(Keystrokes, MarksHoldShiftKeysForTheNextKey) {
  EXPECT_THAT(
      ParseKeystrokes(u"+a^b%c"),
      ElementsAre(Character(u'a', kShift), Character(u'b', kControl), Character(u'c', kAlt)));
  EXPECT_THAT(ParseKeystrokes(u"+^%{F4}x"),
              ElementsAre(Named(115, kShift | kControl | kAlt), Character(u'x')));
  EXPECT_THAT(ParseKeystrokes(u"~+~"), ElementsAre(Named(13), Named(13, kShift)));
}

TEST(Keystrokes, MarksHoldShiftKeysForAGroup) {
  EXPECT_THAT(ParseKeystrokes(u"+(ab)c"),
              ElementsAre(Character(u'a', kShift), Character(u'b', kShift), Character(u'c')));
  EXPECT_THAT(ParseKeystrokes(u"+(a^(b))"),
              ElementsAre(Character(u'a', kShift), Character(u'b', kShift | kControl)));
  EXPECT_THAT(ParseKeystrokes(u"()"), IsEmpty());
}

TEST(Keystrokes, MalformedNotationIsRuntimeError5) {
  for (const StringView notation :
       {u"+",      u"^",       u"%",        u"{",         u"{}",      u"}",    u")",       u"(",
        u"(a",     u"+(a",     u"(+)",      u"{F0}",      u"{F17}",   u"{F1",  u"{NOKEY}", u"{F1 }",
        u"{F1 x}", u"{F1 -1}", u"{x 1001}", u"{x 99999}", u"{F1  2}", u"{FX}", u"{F123}"}) {
    EXPECT_EQ(test::StatusOf([&] { ParseKeystrokes(notation); }), kMalformed) << ToUtf8(notation);
  }
}

TEST(Keystrokes, EndlessNestingIsMalformedAndNoOverflow) {
  const String nested(100000, u'(');
  EXPECT_EQ(test::StatusOf([&] { ParseKeystrokes(nested); }), kMalformed);
  const String shifts(100000, u'+');
  EXPECT_EQ(test::StatusOf([&] { ParseKeystrokes(shifts); }), kMalformed);
}

}  // namespace krx::ui
