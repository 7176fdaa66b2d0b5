#include "support/Walk.h"
#include "users/UsersTest.h"

// Focus, Enter, Tab, access keys and the enabling of OK in the log-on dialogs.
namespace krx::test {

using ::testing::ElementsAreArray;

class LogOnKeys : public LogOnTest {
 protected:
  // Shows the dialog once; a dialog that is still open is given up then.
  void Show(Script script) {
    Expect([script](Operator& op) {
      script(op);
      if (op.Form().Visible()) op.Click(u"keyCancel");
    });
    EXPECT_FALSE(LogOn());
  }
};

TEST_P(LogOnKeys, NameFieldHasTheFirstFocus) {
  Show([](Operator& op) { EXPECT_EQ(op.Focus(), Which().NameField); });
}

TEST_P(LogOnKeys, FocusIsMovedOnceOnly) {
  Show([](Operator& op) {
    op.Press(ui::kKeyTab);
    op.Uncover();
    EXPECT_EQ(op.Focus(), u"txtPassword");
  });
}

TEST_P(LogOnKeys, FocusOfARefusalIsMovedOnceOnly) {
  Users().LogOnCodes = {1};
  Expect(Confirm(u"anna", u"x"));
  Show([](Operator& op) {
    EXPECT_EQ(op.Focus(), u"txtPassword");
    op.Press(ui::kKeyTab);
    op.Uncover();
    EXPECT_EQ(op.Focus(), u"keyOK");
  });
}

TEST_P(LogOnKeys, OkFollowsTheName) {
  Show([](Operator& op) {
    EXPECT_FALSE(Enabled(op, u"keyOK")) << "before the first change";
    Fill(op, u"txtPassword", u"secret");
    EXPECT_FALSE(Enabled(op, u"keyOK")) << "the password does not matter";
    Name(op, u"anna");
    EXPECT_TRUE(Enabled(op, u"keyOK"));
    Fill(op, u"txtPassword", u"");
    EXPECT_TRUE(Enabled(op, u"keyOK"));
    Name(op, u"");
    EXPECT_FALSE(Enabled(op, u"keyOK"));
    Name(op, u" ");
    EXPECT_TRUE(Enabled(op, u"keyOK")) << "a blank is a character";
  });
}

TEST_P(LogOnKeys, EnterInTheNameIsSwallowedAndLeadsToThePassword) {
  Show([](Operator& op) {
    EXPECT_EQ(Left(op, Which().NameField, 13), 0);
    EXPECT_EQ(op.Focus(), u"txtPassword");
    EXPECT_EQ(NameText(op), u"");
  });
}

TEST_P(LogOnKeys, EnterInThePasswordLeadsBackWhileOkIsDisabled) {
  Show([](Operator& op) {
    op.Press(ui::kKeyEnter);
    EXPECT_EQ(op.Focus(), u"txtPassword");
    op.Type(u"secret");
    EXPECT_EQ(Left(op, u"txtPassword", 13), 0);
    EXPECT_EQ(op.Focus(), Which().NameField);
    EXPECT_TRUE(op.Form().Visible());
    EXPECT_EQ(Secret(op, u"txtPassword"), "secret");
  });
  EXPECT_THAT(log.EntriesOf("CreateUserSession"), ::testing::IsEmpty());
}

TEST_P(LogOnKeys, EnterInThePasswordConfirmsWhileOkIsEnabled) {
  Expect([](Operator& op) {
    Name(op, u"anna");
    op.Press(ui::kKeyEnter);
    op.Type(u"secret");
    String focus;
    op.Get(u"keyOK").GotFocus = [&] { focus = op.Focus(); };
    EXPECT_EQ(Left(op, u"txtPassword", 13), 0);
    EXPECT_EQ(focus, u"keyOK") << "the button gets the focus before it is pressed";
    EXPECT_FALSE(op.Form().Visible());
  });
  EXPECT_TRUE(LogOn());
  EXPECT_THAT(log.EntriesOf("UserSession1."),
              ElementsAreArray({"UserSession1.LogOnUser(anna, secret)"}));
}

TEST_P(LogOnKeys, OtherKeysPassUnchanged) {
  Show([](Operator& op) {
    for (const char16_t key : {u'\x01', u'\b', u'\t', u'\n', u'\f', u'\x0E', u'\x1B', u' ', u'a',
                               u'\x00E4', u'\xD83D', u'\xFFFF'}) {
      EXPECT_EQ(Left(op, Which().NameField, key), key);
      EXPECT_EQ(Left(op, u"txtPassword", key), key);
    }
    EXPECT_EQ(op.Focus(), Which().NameField);
  });
}

TEST_P(LogOnKeys, TabWalksNamePasswordAndButtons) {
  Show([](Operator& op) {
    Name(op, u"anna");
    Walk(op, {{ui::kKeyTab, u"txtPassword"},
              {ui::kKeyTab, u"keyOK"},
              {ui::kKeyTab, u"keyCancel"},
              {ui::kKeyTab, Which().LogOffKey},
              {ui::kKeyTab, Which().NameField},
              {ui::kKeyTab, Which().LogOffKey, ui::kShift}});
  });
}

TEST_P(LogOnKeys, AccessKeysOfTheButtonsPressThem) {
  runtime.Texts[u"keyLogOut"] = u"Ab&melden";
  Expect([](Operator& op) { op.AccessKey(u'm'); });
  EXPECT_FALSE(LogOn());
  EXPECT_THAT(log.EntriesOf("UserSession1."), ElementsAreArray({"UserSession1.LogOffUser()"}));
}

TEST_P(LogOnKeys, PasswordIsSelectedWheneverItGetsTheFocus) {
  Show([](Operator& op) {
    Fill(op, u"txtPassword", u"secret");
    op.Press(ui::kKeyTab, ui::kShift);
    op.Press(ui::kKeyTab);
    const auto& box = op.Get<ui::PasswordBox>(u"txtPassword");
    EXPECT_EQ(box.SelStart(), 0);
    EXPECT_EQ(box.SelLength(), 6);
    op.Type(u"n");
    EXPECT_EQ(Secret(op, u"txtPassword"), "n") << "typing replaces it";
  });
}

TEST_P(LogOnKeys, PasswordIsShownAsStars) {
  Show([](Operator& op) {
    Fill(op, u"txtPassword", u"s\u00E4cret");
    EXPECT_EQ(op.Get(u"txtPassword").DisplayedText(), u"******");
    EXPECT_EQ(op.Get<ui::PasswordBox>(u"txtPassword").PasswordChar, u'*');
  });
}

BOTH_LOG_ON_DIALOGS(LogOnKeys);

// What only the typed name has.
class TypedName : public UsersTest {
 protected:
  void Show(Script script) {
    platform.Expect(u"FLogOn", [script](Operator& op) {
      script(op);
      op.Click(u"keyCancel");
    });
    EXPECT_FALSE(dialog->KRUserLogOn());
  }
};

TEST_F(TypedName, IsSelectedWheneverItGetsTheFocus) {
  Show([](Operator& op) {
    op.Type(u"anna");
    op.Press(ui::kKeyTab);
    op.Press(ui::kKeyTab, ui::kShift);
    const auto& box = op.Get<ui::TextBox>(u"txtName");
    EXPECT_EQ(box.SelStart(), 0);
    EXPECT_EQ(box.SelLength(), 4);
    op.Type(u"b");
    EXPECT_EQ(box.Text(), u"b");
  });
}

TEST_F(TypedName, EnablesOkWithItsFirstCharacter) {
  Show([](Operator& op) {
    op.Type(u"a");
    EXPECT_TRUE(Enabled(op, u"keyOK"));
    op.Get<ui::TextBox>(u"txtName").Edited(0, 1, u"");
    EXPECT_FALSE(Enabled(op, u"keyOK"));
  });
}

TEST_F(TypedName, AsksForNoList) {
  Show([](Operator&) {});
  EXPECT_THAT(Users().Calls(), ::testing::IsEmpty());
}

}  // namespace krx::test
