// The keyboard on the screen at work: when it comes and goes, and what its keys do.
#include "Layouts.h"
#include "users/UsersTest.h"

namespace krx::test {

using std::chrono::milliseconds;

class ScreenKeyboard : public UsersTest {
 protected:
  ScreenKeyboard() {
    for (const char* const name : {"de", "en", "us", "fr", "symbols", "accents"})
      platform.Layouts[String(name, name + std::char_traits<char>::length(name))] =
          LayoutText(name);
    runtime.Texts[u"KeyboardLayout"] = u"de";
    runtime.Panel.Keyboard = KeyboardUse::Always;
  }

  bool InSight() const { return platform.Attached && platform.Attached->Visible(); }
  static void TapAll(Operator& op, StringView text) {
    for (const char16_t unit : text)
      op.Tap(unit == u' ' ? StringView(u"Leertaste") : StringView(&unit, 1));
  }
  static String Value(Operator& op, StringView box) { return op.Get<ui::TextBox>(box).Text(); }

  bool LogOn(Script script) {
    platform.Expect(u"FLogOn", std::move(script));
    return dialog->KRUserLogOn();
  }
};

TEST_F(ScreenKeyboard, LogsOn) {
  Users().LogOnCodes = {2};
  EXPECT_TRUE(LogOn([&](Operator& op) {
    TapAll(op, u"ännä");
    EXPECT_EQ(Value(op, u"txtName"), u"ännä");
    op.Tap(u"Eingabetaste");
    EXPECT_EQ(op.Focus(), u"txtPassword");
    op.Tap(u"Umschalttaste");
    TapAll(op, u"Sieben 7");
    EXPECT_EQ(Secret(op, u"txtPassword"), "Sieben 7");
    op.Tap(u"Eingabetaste");
  }));
  EXPECT_FALSE(InSight());
}

TEST_F(ScreenKeyboard, NothingOfItExistsWithNever) {
  for (const KeyboardUse use : {KeyboardUse::Never, KeyboardUse::Touch}) {
    runtime.Panel.Keyboard = use;
    EXPECT_FALSE(LogOn([&](Operator& op) {
      EXPECT_EQ(op.Form().Beside != nullptr, use == KeyboardUse::Touch);
      op.Type(u"anna");
      op.Click(u"keyCancel");
    }));
    EXPECT_EQ(platform.Attached, nullptr) << "no form, and no layout read";
  }
}

TEST_F(ScreenKeyboard, ComesWithAFingerAndStaysWithTheNextField) {
  runtime.Panel.Keyboard = KeyboardUse::Touch;
  LogOn([&](Operator& op) {
    EXPECT_FALSE(InSight());
    op.Touch(u"txtName");
    EXPECT_TRUE(InSight()) << "also in the field that had the focus";
    TapAll(op, u"anna");
    op.Tap(u"Eingabetaste");
    EXPECT_TRUE(InSight());
    op.Touch(u"keyCancel");
  });
}

TEST_F(ScreenKeyboard, AMouseSendsItAway) {
  runtime.Panel.Keyboard = KeyboardUse::Touch;
  LogOn([&](Operator& op) {
    op.Touch(u"txtPassword");
    EXPECT_TRUE(InSight());
    op.Form().Beside->Pressed(op.Get(u"txtName"), false);
    op.Get(u"txtName").SetFocus();
    op.Form().Beside->Settle();
    EXPECT_FALSE(InSight());
    op.Click(u"keyCancel");
  });
}

TEST_F(ScreenKeyboard, GoesWithTheFocusAndComesBack) {
  LogOn([&](Operator& op) {
    EXPECT_TRUE(InSight());
    op.Press(ui::kKeyTab);
    EXPECT_TRUE(InSight());
    op.Get(u"keyCancel").SetFocus();
    op.Form().Beside->Settle();
    EXPECT_FALSE(InSight());
    op.Touch(u"txtName");
    EXPECT_TRUE(InSight());
    op.Click(u"keyCancel");
  });
}

TEST_F(ScreenKeyboard, IsPutAwayByItsKeyUntilAFieldIsEnteredAgain) {
  LogOn([&](Operator& op) {
    op.Tap(u"Tastatur ausblenden");
    EXPECT_FALSE(InSight());
    op.Type(u"x");
    EXPECT_FALSE(InSight());
    op.Touch(u"txtName");
    EXPECT_TRUE(InSight());
    op.Tap(u"Tastatur ausblenden");
    op.Press(ui::kKeyTab);
    EXPECT_TRUE(InSight()) << "another field";
    op.Click(u"keyCancel");
  });
}

TEST_F(ScreenKeyboard, ShiftHoldsForOneCharacterAndCapsLockForLetters) {
  LogOn([&](Operator& op) {
    op.Tap(u"Umschalttaste");
    EXPECT_TRUE(op.BoardKey(u"Umschalttaste")->Latched());
    EXPECT_NE(op.BoardKey(u"Ä"), nullptr);
    TapAll(op, u"Äb");
    op.Tap(u"Feststelltaste");
    TapAll(op, u"CÖ1");  // digits stay digits
    op.Tap(u"Umschalttaste");
    TapAll(op, u"d");
    op.Tap(u"Feststelltaste");
    TapAll(op, u"e");
    EXPECT_EQ(Value(op, u"txtName"), u"ÄbCÖ1de");
    op.Click(u"keyCancel");
  });
}

TEST_F(ScreenKeyboard, HasPagesForSymbolsAndAccents) {
  LogOn([&](Operator& op) {
    op.Tap(u"123");
    TapAll(op, u"@5&");
    op.Tap(u"àéñ");
    TapAll(op, u"ñ");
    op.Tap(u"ABC");
    TapAll(op, u"a");
    EXPECT_EQ(Value(op, u"txtName"), u"@5&ña");
    op.Click(u"keyCancel");
  });
}

// The page of symbols has more keys than that of letters where the screen is low.
TEST_F(ScreenKeyboard, EveryKeyOfEveryPageGetsItsWindow) {
  platform.Area = {0, 0, 12000, 4500};
  LogOn([&](Operator& op) {
    EXPECT_EQ(op.BoardKey(u"1"), nullptr) << "no digits on the first page";
    for (const StringView next : {u"123", u"àéñ", u"ABC"}) {
      op.Tap(next);
      for (const ui::Control* const key : platform.Attached->TabOrder())
        EXPECT_EQ(key->Visible(), key->Visible() && key->ThePeer()) << ToUtf8(key->Name());
    }
    op.Click(u"keyCancel");
  });
}

TEST_F(ScreenKeyboard, AHeldKeyOffersItsAccents) {
  LogOn([&](Operator& op) {
    op.Tap(u"e", milliseconds(499));
    EXPECT_EQ(Value(op, u"txtName"), u"e") << "not held long enough";
    op.Tap(u"e", milliseconds(500));
    EXPECT_EQ(Value(op, u"txtName"), u"e") << "the choice is open";
    op.Tap(u"é");
    EXPECT_EQ(Value(op, u"txtName"), u"eé");
    EXPECT_EQ(op.BoardKey(u"é"), nullptr) << "gone again";
    op.Tap(u"e", milliseconds(500));
    TapAll(op, u"x");
    EXPECT_EQ(Value(op, u"txtName"), u"eéx") << "another key closes it";
    op.Click(u"keyCancel");
  });
}

TEST_F(ScreenKeyboard, AFingerThatSlidesToAnAccentChoosesIt) {
  LogOn([&](Operator& op) {
    ui::BoardKey& key = *op.BoardKey(u"e");
    key.MouseDown(ui::kLeftButton, 0, 0, 0);
    op.Wait(milliseconds(500));
    const ui::BoardKey& accent = *op.BoardKey(u"è");
    key.MouseUp(ui::kLeftButton, 0, accent.Left() + 10 - key.Left(), accent.Top() + 10 - key.Top());
    EXPECT_EQ(Value(op, u"txtName"), u"è");
    op.Click(u"keyCancel");
  });
}

TEST_F(ScreenKeyboard, AFingerThatSlidesOffTypesNothing) {
  LogOn([&](Operator& op) {
    ui::BoardKey& key = *op.BoardKey(u"e");
    key.MouseDown(ui::kLeftButton, 0, 0, 0);
    key.MouseUp(ui::kLeftButton, 0, -1, 0);
    EXPECT_EQ(Value(op, u"txtName"), u"");
    op.Click(u"keyCancel");
  });
}

TEST_F(ScreenKeyboard, TwoFingersTypeInTheOrderInWhichTheyCame) {
  LogOn([&](Operator& op) {
    ui::BoardKey& first = *op.BoardKey(u"a");
    ui::BoardKey& second = *op.BoardKey(u"n");
    first.MouseDown(ui::kLeftButton, 0, 0, 0);
    second.MouseDown(ui::kLeftButton, 0, 0, 0);
    first.MouseUp(ui::kLeftButton, 0, 0, 0);
    second.MouseUp(ui::kLeftButton, 0, 0, 0);
    EXPECT_EQ(Value(op, u"txtName"), u"an");
    op.Click(u"keyCancel");
  });
}

// 400 ms until the first repetition, then one each 60 ms: at 0, 400, 460 and 520.
TEST_F(ScreenKeyboard, BackspaceRepeats) {
  LogOn([&](Operator& op) {
    TapAll(op, u"abcdef");
    op.Tap(u"Rücktaste", milliseconds(520));
    EXPECT_EQ(Value(op, u"txtName"), u"ab");
    op.Tap(u"Links");
    op.Tap(u"Rücktaste");
    EXPECT_EQ(Value(op, u"txtName"), u"b");
    op.Click(u"keyCancel");
  });
}

TEST_F(ScreenKeyboard, BesideAPasswordNothingTellsWhichKeyIsPressed) {
  LogOn([&](Operator& op) {
    EXPECT_FALSE(op.BoardKey(u"a")->Discreet);
    op.Get(u"txtPassword").SetFocus();
    op.Form().Beside->Settle();
    EXPECT_TRUE(op.BoardKey(u"a")->Discreet);
    op.Tap(u"e", milliseconds(2000));
    EXPECT_EQ(op.BoardKey(u"é"), nullptr) << "no accents pop up";
    EXPECT_EQ(Secret(op, u"txtPassword"), "e");
    op.Tap(u"123");
    EXPECT_TRUE(op.BoardKey(u"@")->Discreet) << "on other pages, too";
    op.Click(u"keyCancel");
  });
}

TEST_F(ScreenKeyboard, BelongsToTheDialogInUse) {
  Users().Records[u"anna"].FullName = u"Anna A.";
  Users().LogOnCodes = {6, 2};
  platform.Always[u"FMessageBox"] = [this](Operator& op) {
    EXPECT_FALSE(InSight()) << "nothing to type there";
    op.Press(ui::kKeyEnter);
  };
  platform.Expect(u"FLogOn", [&](Operator& op) {
    TapAll(op, u"anna");
    op.Tap(u"Eingabetaste");
    op.Tap(u"Eingabetaste");
  });
  ExpectChange([&](Operator& op) {
    for (const StringView field : {u"txtActPassword", u"txtPassword", u"txtPassword2"}) {
      EXPECT_EQ(op.Focus(), field);
      TapAll(op, field == u"txtActPassword" ? u"alt" : u"neu 8");
      op.Tap(u"Eingabetaste");
    }
  });
  platform.Expect(u"FLogOn", [&](Operator& op) {
    EXPECT_EQ(op.Focus(), u"txtPassword");
    EXPECT_NE(op.BoardKey(u"a"), nullptr) << "back again";
    op.Tap(u"Eingabetaste");
  });
  EXPECT_TRUE(dialog->KRUserLogOn());
}

TEST_F(ScreenKeyboard, AddsAUser) {
  Users().Current = {u"chief", u"Admin", true};
  platform.Expect(u"FAddUser", [&](Operator& op) {
    for (const StringView text : {u"eva", u"eva meier", u"geheim 1", u"geheim 1"}) {
      TapAll(op, text);
      op.Tap(u"Eingabetaste");
    }
    EXPECT_FALSE(InSight()) << "the classes are a list";
    EXPECT_EQ(Value(op, u"txtName"), u"eva");
    EXPECT_EQ(Value(op, u"txtFullName"), u"eva meier");
    EXPECT_EQ(Secret(op, u"txtPassword2"), "geheim 1");
    op.Click(u"keyCancel");
  });
  EXPECT_FALSE(dialog->KRAddUser());
}

TEST_F(ScreenKeyboard, TypesAFileName) {
  platform.Expect(u"FFileSelect", [&](Operator& op) {
    op.Touch(u"txtFileName");
    TapAll(op, u"bericht.txt");
    op.Tap(u"Eingabetaste");
  });
  platform.Machine.AddFolder(u"C:\\Data");
  service::FileRequest request;
  request.StartDirectory = u"C:\\Data";
  EXPECT_EQ(dialog->KRSaveFileAs(request), u"C:\\Data\\bericht.txt");
}

TEST_F(ScreenKeyboard, IsEnglishWhereTheRuntimeNamesNoLayout) {
  runtime.Texts.erase(u"KeyboardLayout");  // the key comes back
  LogOn([&](Operator& op) {
    EXPECT_NE(op.BoardKey(u"Caps Lock"), nullptr);
    op.Click(u"keyCancel");
  });
}

TEST_F(ScreenKeyboard, IsEnglishAndTellsWhatIsWrongWithALayout) {
  platform.Layouts[u"de"] = "title = ABC\nrow: {escape}\n";
  LogOn([&](Operator& op) {
    EXPECT_NE(op.BoardKey(u"Caps Lock"), nullptr);
    EXPECT_NE(op.BoardKey(u"KRXKeyboard.de.txt, line 2: no key is called escape"), nullptr);
    op.Click(u"keyCancel");
  });
}

TEST_F(ScreenKeyboard, IsEnglishAndThereWhereTheRuntimeFails) {
  runtime.Panel.Keyboard = KeyboardUse::Touch;
  LogOn([&](Operator& op) {
    log.FailCall(1, true);
    op.Touch(u"txtName");
    EXPECT_TRUE(log.Injected());
    log.FailNothing();
    EXPECT_TRUE(InSight());
    EXPECT_NE(op.BoardKey(u"Caps Lock"), nullptr);
    op.Tap(u"a");
    EXPECT_EQ(Value(op, u"txtName"), u"a");
    op.Click(u"keyCancel");
  });
}

TEST_F(ScreenKeyboard, StaysAwayWithoutAnyLayout) {
  platform.Layouts.clear();
  EXPECT_FALSE(LogOn([&](Operator& op) {
    op.Touch(u"txtName");
    EXPECT_EQ(platform.Attached, nullptr);
    op.Type(u"anna");
    EXPECT_EQ(Value(op, u"txtName"), u"anna");
    op.Click(u"keyCancel");
  }));
}

TEST_F(ScreenKeyboard, IsFrenchForAFrenchRuntime) {
  runtime.Texts[u"KeyboardLayout"] = u"fr";
  LogOn([&](Operator& op) {
    TapAll(op, u"éàç");
    EXPECT_EQ(Value(op, u"txtName"), u"éàç");
    op.Click(u"keyCancel");
  });
}

TEST_F(ScreenKeyboard, NamesThatAreNoNamesReachNoFile) {
  for (const StringView name : {u"..\\de", u"", u"de.txt", u"d e"}) {
    runtime.Texts[u"KeyboardLayout"] = String(name);
    platform.Layouts[String(name)] = LayoutText("de");
    LogOn([&](Operator& op) {
      EXPECT_NE(op.BoardKey(u"Caps Lock"), nullptr);
      op.Click(u"keyCancel");
    });
  }
}

TEST_F(ScreenKeyboard, TheFormMovesOutOfItsWayAndBack) {
  platform.Area = {0, 0, 12000, 7200};  // 800 x 480 pixels of 15 twips
  LogOn([&](Operator& op) {
    op.Tap(u"Tastatur ausblenden");
    op.Form().Top = 3000;
    op.Touch(u"txtPassword");
    const ui::Form& board = *platform.Attached;
    EXPECT_LE(op.Form().Top() + op.Form().Height(), board.Top());
    EXPECT_LT(op.Form().Top(), 3000);
    op.Tap(u"Tastatur ausblenden");
    EXPECT_FLOAT_EQ(3000, op.Form().Top());
    op.Click(u"keyCancel");
  });
}

TEST_F(ScreenKeyboard, AFormThatTheOperatorMovesStaysThere) {
  platform.Area = {0, 0, 12000, 7200};
  LogOn([&](Operator& op) {
    op.Tap(u"Tastatur ausblenden");
    op.Form().Top = 3000;
    op.Touch(u"txtPassword");
    op.Form().Move(op.Form().Left(), 15);
    op.Tap(u"Tastatur ausblenden");
    EXPECT_FLOAT_EQ(15, op.Form().Top());
    op.Click(u"keyCancel");
  });
}

}  // namespace krx::test
