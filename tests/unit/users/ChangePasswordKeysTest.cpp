#include "users/UsersTest.h"

// Focus, Enter, Tab, access keys and the enabling of OK in the change-password dialog.
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
  static char16_t Left(Operator& op, StringView control, char16_t key) {
    op.Get(control).KeyPress(key);
    return key;
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
    std::vector<String> way;
    for (int i = 0; i < 5; ++i) {
      op.Press(ui::kKeyTab);
      way.push_back(op.Focus());
    }
    EXPECT_THAT(way, ElementsAreArray({u"txtPassword", u"txtPassword2", u"keyOK", u"keyCancel",
                                       u"txtActPassword"}));
  });
}

TEST_F(ChangePasswordKeys, AccessKeysLeadToTheirFieldsAlsoToTheDisplayedOnes) {
  runtime.Texts = {{u"lblName", u"&1"},        {u"lblFullName", u"&2"},
                   {u"lblComment", u"&3"},     {u"lblActualPassword", u"&4"},
                   {u"lblNewPassword", u"&5"}, {u"lblRepeatPassword", u"&6"}};
  Show([](Operator& op) {
    std::vector<String> way;
    for (const char16_t key : String(u"123456")) {
      op.AccessKey(key);
      way.push_back(op.Focus());
    }
    EXPECT_THAT(way, ElementsAreArray({u"txtName", u"txtFullName", u"txtComment", u"txtActPassword",
                                       u"txtPassword", u"txtPassword2"}));
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

TEST_F(ChangePasswordKeys, EveryTextComesFromItsKeyInTheUserGroup) {
  Show([](Operator& op) {
    EXPECT_EQ(op.Get<ui::KRXIndex>(u"idxCaption").Text(), u"capChangePassword");
    EXPECT_EQ(op.Form().Caption(), u"capChangePassword");
    EXPECT_EQ(op.Get<ui::KRXKey>(u"keyOK").Caption(), u"keyOK");
    EXPECT_EQ(op.Get<ui::KRXKey>(u"keyCancel").Caption(), u"keyCancel");
    const std::array keys{u"lblName",           u"lblFullName",    u"lblComment",
                          u"lblActualPassword", u"lblNewPassword", u"lblRepeatPassword"};
    for (std::size_t i = 0; i < keys.size(); ++i) {
      const String name = u"lblChangePW(" + ToString(static_cast<std::int32_t>(i)) + u")";
      EXPECT_EQ(op.Get<ui::Label>(name).Caption(), keys[i]);
      EXPECT_EQ(op.Get<ui::Label>(name).Tag, keys[i]);
    }
  });
  EXPECT_THAT(log.EntriesOf("GetText"),
              ElementsAreArray({"GetText capChangePassword -103", "GetText keyOK -103",
                                "GetText keyCancel -103", "GetText lblName -103",
                                "GetText lblFullName -103", "GetText lblComment -103",
                                "GetText lblActualPassword -103", "GetText lblNewPassword -103",
                                "GetText lblRepeatPassword -103"}));
}

TEST_F(ChangePasswordKeys, EveryControlHasTheFontOfItsClass) {
  dialog->Settings().FontClassCaption = u"C";
  dialog->Settings().FontClassText = u"T";
  dialog->Settings().FontClassButton = u"B";
  dialog->Settings().FontClassInput = u"I";
  Show([](Operator& op) {
    EXPECT_EQ(op.Get(u"idxCaption").Font().Name, u"C");
    EXPECT_EQ(op.Get(u"keyOK").Font().Name, u"B");
    EXPECT_EQ(op.Get(u"keyCancel").Font().Name, u"B");
    for (std::int32_t i = 0; i < 6; ++i)
      EXPECT_EQ(op.Get(u"lblChangePW(" + ToString(i) + u")").Font().Name, u"T");
    for (const StringView box : {u"txtName", u"txtFullName", u"txtComment", u"txtActPassword",
                                 u"txtPassword", u"txtPassword2"})
      EXPECT_EQ(op.Get(box).Font().Name, u"I");
  });
}

}  // namespace krx::test
