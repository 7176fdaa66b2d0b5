#include "administration/AdministrationTest.h"
#include "users/FUser.h"

namespace krx::test {

using users::FUser;

class UserOverview : public AdministrationTest {
 protected:
  // Opens the overview, lets the operator work and closes it.
  void Show(const Script& script) {
    ExpectOverview([&](Operator& op) {
      script(op);
      if (op.Form().Visible()) op.Click(u"keyOK");
    });
    dialog->KRUser();
  }
  Calls RowsShown() {
    Calls rows;
    Show([&](Operator& op) { rows = Rows(op); });
    return rows;
  }
  static ui::ListView& List(Operator& op) { return op.Get<ui::ListView>(u"lvwUser"); }
};

TEST_F(UserOverview, CarriesItsTextsAndTitlesWithoutMarks) {
  runtime.Texts = {{u"lblName", u"&Name"}, {u"lblState", u"S&ta&te"}, {u"lblUser", u"&Users"}};
  Show([](Operator& op) {
    auto& form = dynamic_cast<FUser&>(op.Form());
    EXPECT_EQ(form.idxCaption.Text(), u"capOverviewUsers");
    EXPECT_EQ(form.fraUser.Name(), u"fraUser");
    EXPECT_EQ(form.fraUser.Caption(), u"&Users");
    std::vector<String> titles;
    std::vector<String> tags;
    for (const auto& column : form.lvwUser.Columns()) {
      titles.push_back(column.Title);
      tags.push_back(column.Tag);
    }
    const std::vector<String> keys{u"lblName",      u"lblState",           u"lblFullName",
                                   u"lblUserClass", u"lblRemainingLogOns", u"lblRenewPassword",
                                   u"lblComment"};
    EXPECT_EQ(tags, keys);
    EXPECT_EQ(titles[0], u"Name");
    EXPECT_EQ(titles[1], u"State");
    EXPECT_EQ(std::vector(titles.begin() + 2, titles.end()),
              std::vector(keys.begin() + 2, keys.end()));
    for (const StringView key : {u"keyAddUser", u"keyChangeUser", u"keyRemoveUser",
                                 u"keyActivateUser", u"keyDeactivateUser", u"keyOK"}) {
      EXPECT_EQ(op.Get<ui::KRXKey>(key).Caption(), key);
      EXPECT_TRUE(Enabled(op, key));
    }
  });
}

TEST_F(UserOverview, EveryRowShowsTheUserInSevenColumns) {
  AddPerson(u"eva", u"Operator", 1);
  Users().Records[u"eva"].RemainingLogOns = -2;
  EXPECT_THAT(RowsShown(), ::testing::ElementsAre("eva|enmStateDeactivated|Full eva|text of "
                                                  "Operator|-2|90|about eva"));
}

TEST_F(UserOverview, CallsComeInTheirOrder) {
  AddPerson(u"eva", u"Operator");
  AddPerson(u"ole", u"Guest");
  RowsShown();
  EXPECT_THAT(
      Users().Calls(),
      ::testing::ElementsAre(
          "CreateUserAdministration", "UserAdministration1.GetCurrentUser()",
          "CreateUserClassAdministration", "UserClassAdministration1.GetUserClassInfo(Admin)",
          "UserAdministration1.GetUserNames()", "UserAdministration1.GetUserInfo(eva)",
          "UserAdministration1.GetUserClass(eva)",
          "UserClassAdministration1.GetUserClassInfo(Operator)",
          "UserAdministration1.GetAdministrationMode()", "UserAdministration1.GetUserInfo(ole)",
          "UserAdministration1.GetUserClass(ole)",
          "UserClassAdministration1.GetUserClassInfo(Guest)",
          "UserAdministration1.GetAdministrationMode()", "~UserClassAdministration1",
          "~UserAdministration1"));
}

TEST_F(UserOverview, EveryStateHasItsTextAndOthersRepeatTheOneBefore) {
  const std::int32_t states[] = {-1, 0, 1, 2, 3, 4, 2, INT32_MIN, INT32_MAX, 0};
  for (std::size_t i = 0; i < std::size(states); ++i)
    AddPerson(String(1, static_cast<char16_t>(u'a' + i)), u"Guest", states[i]);
  Calls shown;
  Show([&](Operator& op) {
    for (int row = 0; row < List(op).RowCount(); ++row)
      shown.push_back(ToUtf8(List(op).Cell(row, 1)));
  });
  EXPECT_THAT(shown, ::testing::ElementsAre("", "enmStateActive", "enmStateDeactivated",
                                            "enmStateLocked", "enmStateActiveChangePassword",
                                            "enmStateActiveChangePassword", "enmStateLocked",
                                            "enmStateLocked", "enmStateLocked", "enmStateActive"));
}

TEST_F(UserOverview, TheHeldStateTextComesFromListedUsersOfTheSameRefreshOnly) {
  Users().AdministrationMode = 0;
  AddPerson(u"a", u"Guest", 2);
  AddPerson(u"hidden", u"Admin", 1);
  AddPerson(u"b", u"Guest", 7);
  Show([this](Operator& op) {
    EXPECT_EQ(List(op).Cell(1, 1), u"enmStateLocked") << "the hidden user does not count";
    Users().Records[u"a"].State = 9;
    op.ClickRow(u"lvwUser", 0);
    op.Click(u"keyActivateUser");
    EXPECT_EQ(List(op).Cell(0, 1), u"") << "nothing is held from the refresh before";
    EXPECT_EQ(List(op).Cell(1, 1), u"");
  });
}

TEST_F(UserOverview, ModeAndLevelDecideWhoIsListed) {
  AddPerson(u"guest", u"Guest");
  AddPerson(u"root", u"Admin");
  AddPerson(u"other", u"Admin");
  AddPerson(u"Root", u"Admin");
  struct Case {
    std::int32_t Mode;
    std::vector<std::string> Listed;
  };
  const std::vector<std::string> all{"guest", "root", "other", "Root"};
  const Case cases[] = {{0, {"guest", "root"}}, {1, all}, {2, all}, {3, {}}, {-1, {}}};
  for (const Case& c : cases) {
    Users().AdministrationMode = c.Mode;
    Show([&](Operator& op) { EXPECT_EQ(NamesOf(op), c.Listed) << c.Mode; });
  }
}

TEST_F(UserOverview, WithoutAClassOnlyNegativeLevelsAndOneselfAreListed) {
  Users().AdministrationMode = 0;
  Users().Current.ClassName = {};
  Users().Classes = {{u"Below", -1}, {u"Zero", 0}, {u"Admin", 9}};
  AddPerson(u"below", u"Below");
  AddPerson(u"zero", u"Zero");
  AddPerson(u"root", u"Admin");
  Show([](Operator& op) { EXPECT_THAT(NamesOf(op), ::testing::ElementsAre("below", "root")); });
  EXPECT_EQ(log.EntriesOf("UserClassAdministration1.GetUserClassInfo()").size(), 0u);
}

TEST_F(UserOverview, NoUsersStillSizeTheColumnsToTheirTitles) {
  Show([](Operator& op) {
    EXPECT_EQ(List(op).RowCount(), 0);
    for (int column = 0; column < 6; ++column)
      EXPECT_EQ(List(op).Columns()[static_cast<std::size_t>(column)].Width,
                List(op).TitleWidth(column));
  });
}

TEST_F(UserOverview, ColumnsAreAsWideAsTitleOrContentsButForTheComments) {
  AddPerson(String(60, u'x'), u"Guest");
  Users().Records[Users().Names[0]].Comment = String(200, u'c');
  Show([](Operator& op) {
    const auto& columns = List(op).Columns();
    EXPECT_EQ(columns[0].Width, List(op).ContentWidth(0));
    EXPECT_GT(columns[0].Width, 60 * 80.0f) << "60 characters of 80 twips and some room";
    EXPECT_EQ(columns[4].Width, List(op).TitleWidth(4)) << "a figure of one digit";
    EXPECT_EQ(columns[6].Width, 3000) << "as designed";
  });
}

TEST_F(UserOverview, WithoutASelectionOnlyAddingDoesAnything) {
  AddPerson(u"eva", u"Operator");
  Show([this](Operator& op) {
    const int calls = log.Calls();
    for (const StringView key :
         {u"keyChangeUser", u"keyRemoveUser", u"keyActivateUser", u"keyDeactivateUser"})
      op.Click(key);
    EXPECT_EQ(log.Calls(), calls) << "no call, no refresh";
    ExpectForm([](Operator& form) { form.Click(u"keyCancel"); });
    op.Click(u"keyAddUser");
    EXPECT_EQ(log.EntriesOf("UserAdministration1.GetUserNames").size(), 2u)
        << "refreshed although nobody was added";
  });
}

struct Action {
  StringView Key;
  std::string Call;
};

TEST_F(UserOverview, ActionsCallAndRefreshWhateverTheyAreAnswered) {
  AddPerson(u"eva", u"Operator");
  const Action actions[] = {{u"keyActivateUser", "SetUserActive(eva, 1)"},
                            {u"keyDeactivateUser", "SetUserActive(eva, 0)"},
                            {u"keyRemoveUser", "RemoveUser(eva)"}};
  for (const Action& action : actions) {
    Users().Restart();
    Show([&](Operator& op) {
      op.ClickRow(u"lvwUser", 0);
      Users().Restart();
      op.Click(action.Key);
      const Calls calls = Users().Calls();
      ASSERT_GE(calls.size(), 2u);
      EXPECT_EQ(calls[0], "UserAdministration1." + action.Call);
      EXPECT_EQ(calls[1], "UserAdministration1.GetCurrentUser()");
      EXPECT_THAT(log.EntriesOf("Box"), ::testing::IsEmpty());
      EXPECT_THAT(NamesOf(op), ::testing::ElementsAre("eva"));
    });
  }
}

TEST_F(UserOverview, ChangingOpensTheFormForTheSelectedUser) {
  AddPerson(u"eva", u"Operator");
  AddPerson(u"ole", u"Guest");
  const Script ways[] = {[](Operator& op) { op.Click(u"keyChangeUser"); },
                         [](Operator& op) { op.Press(ui::kKeyEnter); },
                         [](Operator& op) { op.DoubleClickRow(u"lvwUser", 1); }};
  for (const Script& way : ways) {
    Show([&](Operator& op) {
      op.ClickRow(u"lvwUser", 1);
      ExpectForm([](Operator& form) {
        EXPECT_EQ(form.Get(u"txtName").DisplayedText(), u"ole");
        form.Click(u"keyCancel");
      });
      const std::size_t refreshes = log.EntriesOf("UserAdministration1.GetUserNames").size();
      way(op);
      EXPECT_EQ(log.EntriesOf("UserAdministration1.GetUserNames").size(), refreshes + 1);
    });
    Users().Restart();
  }
}

TEST_F(UserOverview, DeleteRemovesNobody) {
  AddPerson(u"eva", u"Operator");
  Show([this](Operator& op) {
    op.ClickRow(u"lvwUser", 0);
    op.Press(ui::kKeyDelete);
    EXPECT_THAT(log.EntriesOf("UserAdministration1.RemoveUser"), ::testing::IsEmpty());
  });
}

TEST_F(UserOverview, TheFocusBeginsInTheListAndArrowsWalkThroughIt) {
  for (const StringView name : {u"eva", u"ole", u"ida"})
    AddPerson(String(name), u"Guest");
  Show([](Operator& op) {
    EXPECT_EQ(op.Focus(), u"lvwUser");
    op.Press(ui::kKeyEnd);
    op.Press(ui::kKeyUp);
    EXPECT_EQ(List(op).SelectedRow(), 1);
    EXPECT_EQ(List(op).FindRow(u"I", 0), 2) << "type-ahead goes by the name";
  });
}

TEST_F(UserOverview, SelectionAndScrollingStayWithTheUser) {
  for (char16_t c = u'a'; c <= u'z'; ++c)
    AddPerson(String(1, c), u"Guest");
  Show([this](Operator& op) {
    op.ClickRow(u"lvwUser", 20);  // "u"
    List(op).TopRow.Adopt(15);
    Users().Names.erase(Users().Names.begin() + 3);
    op.Click(u"keyActivateUser");
    EXPECT_EQ(List(op).SelectedRow(), 19);
    EXPECT_EQ(List(op).Cell(19, 0), u"u");
    EXPECT_EQ(List(op).TopRow(), 15);
    Users().Names.erase(Users().Names.begin() + 19);
    op.Click(u"keyActivateUser");
    EXPECT_EQ(List(op).SelectedRow(), ui::RowList::kNoRow) << "he is no longer listed";
    EXPECT_EQ(List(op).TopRow(), 15);
    Users().Names.resize(4);
    op.ClickRow(u"lvwUser", 0);
    op.Click(u"keyActivateUser");
    EXPECT_EQ(List(op).TopRow(), 3) << "no further than the last row";
  });
}

TEST_F(UserOverview, TheOperatorSeesThatARefreshTakesTime) {
  Users().OnRemove = [](const String&) {};
  Show([this](Operator&) {
    EXPECT_THAT(platform.Pointers,
                ::testing::ElementsAre(ui::Pointer::Hourglass, ui::Pointer::Default));
  });
}

TEST_F(UserOverview, OkCloseKeyAndEscClose) {
  const Script ways[] = {[](Operator& op) { op.Click(u"keyOK"); },
                         [](Operator& op) { op.Click(u"keyClose"); },
                         [](Operator& op) { op.Press(ui::kKeyEscape); }};
  for (const Script& way : ways) {
    Show([&](Operator& op) {
      way(op);
      EXPECT_FALSE(op.Form().Visible());
    });
  }
}

TEST_F(UserOverview, AFailingRefreshLeavesTheListAsItWasAndEndsTheDialog) {
  AddPerson(u"eva", u"Operator");
  AddPerson(u"ole", u"Operator");
  const auto error = ErrorOf([this] {
    Show([this](Operator& op) {
      op.ClickRow(u"lvwUser", 0);
      AddPerson(u"ida", u"Operator");
      // Setting, the current user, his class, the names and half of the users are still answered.
      log.FailCall(9, false);
      try {
        op.Click(u"keyActivateUser");
      } catch (...) {
        EXPECT_THAT(NamesOf(op), ::testing::ElementsAre("eva", "ole"));
        EXPECT_EQ(List(op).SelectedRow(), 0);
        EXPECT_EQ(platform.Pointers.back(), ui::Pointer::Default);
        throw;
      }
    });
  });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Status(), CallLog::FailureOf(9).Status());
}

}  // namespace krx::test
