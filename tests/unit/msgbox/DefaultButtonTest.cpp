#include "support/DialogTest.h"

namespace krx::test {

class FMessageBoxDefault : public MessageBoxTest {
 protected:
  std::uint32_t FailureOf(const BoxCall& call) {
    return StatusOf([&] { Open(call); });
  }
  String FocusOf(const BoxCall& call) {
    String focus;
    Show(call, [&](Operator& op) {
      focus = op.Focus();
      op.Click(u"keyClose");
    });
    return focus;
  }
};

TEST_F(FMessageBoxDefault, ClosedBoxReturnsTheDefaultButtonsCode) {
  EXPECT_EQ(ResultWhenClosed({.Style = kAbortRetryIgnore}), 3);
  EXPECT_EQ(ResultWhenClosed({.Style = kAbortRetryIgnore + kDefaultButton2}), 4);
  EXPECT_EQ(ResultWhenClosed({.Style = kAbortRetryIgnore + kDefaultButton3}), 5);
  EXPECT_EQ(ResultWhenClosed({.Style = kYesNo + kDefaultButton3, .Button3 = u"Later"}), 13);
}

TEST_F(FMessageBoxDefault, DefaultButtonHasTheFocusWhenTheBoxOpens) {
  EXPECT_EQ(FocusOf({.Style = kAbortRetryIgnore}), u"keyButton(0)");
  EXPECT_EQ(FocusOf({.Style = kAbortRetryIgnore + kDefaultButton2}), u"keyButton(1)");
  EXPECT_EQ(FocusOf({.Style = kAbortRetryIgnore + kDefaultButton3}), u"keyButton(2)");
  EXPECT_EQ(FocusOf({.Style = 6 + kDefaultButton4, .HelpFile = u"h"}), u"keyHelp");
}

TEST_F(FMessageBoxDefault, IconStepPutsTheDefaultButtonFirstInTheTabOrder) {
  const std::map<std::int32_t, String> names{{0, u"keyButton(0)"},
                                             {kDefaultButton2, u"keyButton(1)"},
                                             {kDefaultButton3, u"keyButton(2)"},
                                             {kDefaultButton4, u"keyHelp"}};
  for (const auto& [style, name] : names) {
    msgbox::FMessageBox form(apartment);
    form.DisplayIcon(style);
    EXPECT_EQ(form.TabOrder().front()->Name(), name);
  }
}

TEST_F(FMessageBoxDefault, ResultBeforeAnyClickIsTheDefaultButtons) {
  Show({.Style = kYesNoCancel + kDefaultButton3}, [](Operator& op) {
    EXPECT_EQ(dynamic_cast<msgbox::FMessageBox&>(op.Form()).Result, 2);
    op.Click(u"keyButton(0)");
  });
}

TEST_F(FMessageBoxDefault, ResultCanBeWrittenByTheCaller) {
  msgbox::FMessageBox form(apartment);
  form.Result = 42;
  EXPECT_EQ(form.Result, 42);
}

TEST_F(FMessageBoxDefault, SecondButtonOfASingleButtonIsATypeMismatch) {
  EXPECT_EQ(FailureOf({.Style = kDefaultButton2}), kTypeMismatch);
}

TEST_F(FMessageBoxDefault, DefaultWithoutACodeIsATypeMismatchInEverySet) {
  EXPECT_EQ(FailureOf({.Style = kOKOnly + kDefaultButton3}), kTypeMismatch);
  EXPECT_EQ(FailureOf({.Style = kOKCancel + kDefaultButton3}), kTypeMismatch);
  EXPECT_EQ(FailureOf({.Style = kYesNo + kDefaultButton3}), kTypeMismatch);
  EXPECT_EQ(FailureOf({.Style = kRetryCancel + kDefaultButton3}), kTypeMismatch);
}

TEST_F(FMessageBoxDefault, HelpAsDefaultIsATypeMismatchOnceThereIsAnAnswer) {
  for (std::int32_t set = 0; set <= 5; ++set) {
    EXPECT_EQ(FailureOf({.Style = set + kDefaultButton4}), kTypeMismatch) << set;
    EXPECT_EQ(FailureOf({.Style = set + kDefaultButton4, .HelpFile = u"h"}), kTypeMismatch) << set;
  }
  EXPECT_EQ(FailureOf({.Style = 6 + kDefaultButton4, .HelpFile = u"h", .Button2 = u"B"}),
            kTypeMismatch);
}

TEST_F(FMessageBoxDefault, FreeButtonsWithoutTheDefaultOneAreATypeMismatch) {
  EXPECT_EQ(FailureOf({.Style = 6, .Button2 = u"B"}), kTypeMismatch);
  EXPECT_EQ(FailureOf({.Style = 15 + kDefaultButton2, .Button1 = u"A"}), kTypeMismatch);
  EXPECT_EQ(FailureOf({.Style = 9 + kDefaultButton3, .Button1 = u"A"}), kTypeMismatch);
}

TEST_F(FMessageBoxDefault, FreeButtonMayBeTheDefaultOfASetWithoutButtons) {
  EXPECT_EQ(ResultWhenClosed({.Style = 6, .Button1 = u"A"}), 11);
  EXPECT_EQ(ResultWhenClosed({.Style = 7 + kDefaultButton2, .Button2 = u"B"}), 12);
  EXPECT_EQ(ResultWhenClosed({.Style = 15 + kDefaultButton3, .Button3 = u"C"}), 13);
}

TEST_F(FMessageBoxDefault, BoxWithoutAnswersIsShownAndItsResultIsZero) {
  for (std::int32_t set = 6; set <= 15; ++set) {
    for (const std::int32_t position : {0, kDefaultButton2, kDefaultButton3, kDefaultButton4}) {
      EXPECT_EQ(ResultWhenClosed({.Style = set + position}), 0);
      EXPECT_EQ(ResultWhenClosed({.Style = set + position, .HelpFile = u"h"}), 0);
    }
  }
}

TEST_F(FMessageBoxDefault, BoxWithoutAnswersHasNoFocusUnlessThereIsHelp) {
  EXPECT_EQ(FocusOf({.Style = 6}), u"");
  EXPECT_EQ(FocusOf({.Style = 6, .HelpFile = u"h"}), u"keyHelp");
}

TEST_F(FMessageBoxDefault, HiddenDefaultButtonThatCarriesACodeKeepsIt) {
  // A text service that knows no text hides the button; its code is there all the same.
  runtime.Texts[u"OK"] = u"";
  EXPECT_EQ(ResultWhenClosed({.Style = kOKOnly}), 1);
  runtime.Texts[u"Cancel"] = u"";
  EXPECT_EQ(ResultWhenClosed({.Style = kOKCancel + kDefaultButton2}), 2);
}

TEST_F(FMessageBoxDefault, NegativeStyleIsReadBitByBit) {
  // -1 has all bits: no set, no icon, help as default button.
  EXPECT_EQ(ResultWhenClosed({.Style = -1}), 0);
  EXPECT_EQ(FailureOf({.Style = -1, .Button1 = u"A"}), kTypeMismatch);
  // Bits 0 to 9 cleared: set 0, no icon, first button.
  EXPECT_EQ(ResultWhenClosed({.Style = -1024}), 1);
  EXPECT_EQ(ResultWhenClosed({.Style = std::numeric_limits<std::int32_t>::min() + 4}), 6);
}

TEST_F(FMessageBoxDefault, OtherBitsOfTheStyleDoNotMatter) {
  EXPECT_EQ(ResultWhenClosed({.Style = kYesNoCancel + 128 + 4096 + 16384 + 65536 + 0x100000}), 6);
}

TEST_F(FMessageBoxDefault, ProvisionalResultStaysWhereTheDefaultHasNoCode) {
  const auto left_behind = [this](std::int32_t style) {
    msgbox::FMessageBox form(apartment);
    EXPECT_EQ(StatusOf([&] { form.SetTexts(u"m", style, u"t", u"", 0); }), kTypeMismatch);
    return form.Result;
  };
  EXPECT_EQ(left_behind(0 + kDefaultButton3), 1);
  EXPECT_EQ(left_behind(1 + kDefaultButton3), 2);
  EXPECT_EQ(left_behind(2 + kDefaultButton4), 0);
  EXPECT_EQ(left_behind(3 + kDefaultButton4), 2);
  EXPECT_EQ(left_behind(4 + kDefaultButton3), 0);
  EXPECT_EQ(left_behind(5 + kDefaultButton3), 2);
}

}  // namespace krx::test
