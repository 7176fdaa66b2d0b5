#include "support/Walk.h"
#include "users/UsersTest.h"

// Focus, Enter, Tab and the enabling of OK in the change-password dialog.
namespace krx::test {

using ::testing::ElementsAreArray;

class ChangePasswordKeys : public UsersTest {
 protected:
  ChangePasswordKeys() {
    Users().Current = {u"anna", u"operators", true};
    Users().Records[u"anna"] = {.FullName = u"Anna A.", .Comment = u"shift 1"};
  }

  void Show(Script script) {
    ExpectChange([script](Operator& op) {
      script(op);
      if (op.Form().Visible()) op.Click(u"keyCancel");
    });
    dialog->KRChangePassword();
  }
};

// The three fields are filled in every order; the right texts enable OK exactly when the current
// password is not the last one.
TEST_F(ChangePasswordKeys, OkDependsOnTheOrderOfTyping) {
  std::vector<StringView> order{u"txtActPassword", u"txtPassword", u"txtPassword2"};
  int orders = 0;
  do {
    ++orders;
    Show([&](Operator& op) {
      EXPECT_FALSE(Enabled(op, u"keyOK")) << "before the first change";
      for (const StringView box : order) {
        EXPECT_FALSE(Enabled(op, u"keyOK"));
        Fill(op, box, box == u"txtActPassword" ? u"old" : u"new");
      }
      EXPECT_EQ(Enabled(op, u"keyOK"), order.back() != u"txtActPassword") << ToUtf8(order.back());
    });
  } while (std::next_permutation(order.begin(), order.end()));
  EXPECT_EQ(orders, 6);
}

TEST_F(ChangePasswordKeys, CurrentPasswordTypedLastNeedsAnotherChange) {
  Show([](Operator& op) {
    Fill(op, u"txtPassword", u"new");
    Fill(op, u"txtPassword2", u"new");
    Fill(op, u"txtActPassword", u"old");
    EXPECT_FALSE(Enabled(op, u"keyOK"));
    Fill(op, u"txtPassword2", u"new");
    EXPECT_TRUE(Enabled(op, u"keyOK"));
  });
}

TEST_F(ChangePasswordKeys, CurrentPasswordTakenAwayLeavesOkEnabled) {
  Show([](Operator& op) {
    FillChange(op, u"old", u"new");
    Fill(op, u"txtActPassword", u"");
    EXPECT_TRUE(Enabled(op, u"keyOK")) << "it is not checked again";
    Fill(op, u"txtPassword", u"newer");
    Fill(op, u"txtPassword2", u"newer");
    EXPECT_FALSE(Enabled(op, u"keyOK"));
  });
}

TEST_F(ChangePasswordKeys, OkNeedsTheSameTextTwice) {
  struct Row {
    StringView Fresh;
    StringView Repeated;
    bool Enabled;
  };
  for (const auto& [fresh, repeated, enabled] :
       {Row{u"new", u"new", true}, Row{u"new", u"New", false}, Row{u"NEW", u"new", false},
        Row{u"new", u"new ", false}, Row{u"new", u"", false}, Row{u"", u"new", false},
        Row{u"", u"", false}, Row{u" ", u" ", true}, Row{u"\u00E4", u"\u00C4", false},
        Row{u"\u00E4", u"a\u0308", false}, Row{u"old", u"old", true}}) {
    SCOPED_TRACE(ToUtf8(fresh) + "/" + ToUtf8(repeated));
    for (const bool repeated_first : {false, true}) {
      Show([&, f = fresh, r = repeated, e = enabled](Operator& op) {
        Fill(op, u"txtActPassword", u"old");
        if (repeated_first) Fill(op, u"txtPassword2", r);
        Fill(op, u"txtPassword", f);
        if (!repeated_first) Fill(op, u"txtPassword2", r);
        EXPECT_EQ(Enabled(op, u"keyOK"), e);
      });
    }
  }
}

TEST_F(ChangePasswordKeys, EnterLeadsThroughTheFields) {
  Show([](Operator& op) {
    EXPECT_EQ(op.Focus(), u"txtActPassword");
    EXPECT_EQ(Left(op, u"txtActPassword", 13), 0);
    EXPECT_EQ(op.Focus(), u"txtPassword");
    EXPECT_EQ(Left(op, u"txtPassword", 13), 0);
    EXPECT_EQ(op.Focus(), u"txtPassword2");
    EXPECT_EQ(Left(op, u"txtPassword2", 13), 0);
    EXPECT_EQ(op.Focus(), u"txtActPassword") << "OK is disabled";
    EXPECT_TRUE(op.Form().Visible());
  });
  EXPECT_THAT(log.EntriesOf("UserAdministration1.Change"), ::testing::IsEmpty());
}

TEST_F(ChangePasswordKeys, EnterInTheLastFieldConfirmsWhileOkIsEnabled) {
  Show([](Operator& op) {
    op.Type(u"old");
    op.Press(ui::kKeyEnter);
    op.Type(u"new");
    op.Press(ui::kKeyEnter);
    op.Type(u"new");
    String focus;
    op.Get(u"keyOK").GotFocus = [&] { focus = op.Focus(); };
    EXPECT_EQ(Left(op, u"txtPassword2", 13), 0);
    EXPECT_EQ(focus, u"keyOK");
    EXPECT_FALSE(op.Form().Visible());
  });
  EXPECT_THAT(log.EntriesOf("UserAdministration1.Change"),
              ElementsAreArray({"UserAdministration1.ChangeUserPassword(anna, new, old)"}));
}

TEST_F(ChangePasswordKeys, EnterInTheFirstFieldsNeverConfirms) {
  Show([](Operator& op) {
    FillChange(op, u"old", u"new");
    EXPECT_TRUE(Enabled(op, u"keyOK"));
    for (const StringView box : {u"txtActPassword", u"txtPassword"}) {
      op.Get(box).SetFocus();
      op.Press(ui::kKeyEnter);
      EXPECT_TRUE(op.Form().Visible());
    }
    EXPECT_EQ(op.Focus(), u"txtPassword2");
  });
}

TEST_F(ChangePasswordKeys, OtherKeysPassUnchanged) {
  Show([](Operator& op) {
    for (const char16_t key : {u'\b', u'\n', u'\x0E', u' ', u'a', u'\xFFFF'}) {
      for (const StringView box : {u"txtActPassword", u"txtPassword", u"txtPassword2"})
        EXPECT_EQ(Left(op, box, key), key);
    }
    EXPECT_EQ(op.Focus(), u"txtActPassword");
  });
}

TEST_F(ChangePasswordKeys, PasswordsAreSelectedWheneverTheyGetTheFocus) {
  Show([](Operator& op) {
    FillChange(op, u"old", u"newer");
    for (const StringView name : {u"txtActPassword", u"txtPassword", u"txtPassword2"}) {
      auto& box = op.Get<ui::PasswordBox>(name);
      box.SelLength = 0;
      op.Get(u"keyCancel").SetFocus();
      box.SetFocus();
      EXPECT_EQ(box.SelStart(), 0);
      EXPECT_EQ(box.SelLength(), static_cast<int>(box.TextLength()));
      EXPECT_EQ(box.DisplayedText(), String(box.TextLength(), u'*'));
    }
  });
}

TEST_F(ChangePasswordKeys, TabWalksTheInputFieldsAndButtons) {
  Show([](Operator& op) {
    FillChange(op, u"old", u"new");
    op.Get(u"txtActPassword").SetFocus();
    Walk(op, {{ui::kKeyTab, u"txtPassword"},
              {ui::kKeyTab, u"txtPassword2"},
              {ui::kKeyTab, u"keyOK"},
              {ui::kKeyTab, u"keyCancel"},
              {ui::kKeyTab, u"txtActPassword"}});
  });
}

TEST_F(ChangePasswordKeys, DisplayFieldsShowTheUserAndTakeNoInput) {
  Show([](Operator& op) {
    for (const auto& [name, text] : {std::pair{u"txtName", u"anna"},
                                     {u"txtFullName", u"Anna A."},
                                     {u"txtComment", u"shift 1"}}) {
      auto& box = op.Get<ui::TextBox>(name);
      EXPECT_EQ(box.Text(), text);
      EXPECT_TRUE(box.Locked());
      EXPECT_EQ(box.BackColor(), ui::kButtonFace);
      EXPECT_EQ(box.ForeColor(), ui::kButtonText);
      box.SetFocus();
      op.Type(u"x");
      EXPECT_EQ(box.Text(), text);
    }
  });
}

}  // namespace krx::test
