#include "users/FChangePassword.h"
#include "users/FailingCalls.h"

namespace krx::test {

class UserFailures : public FailingCalls {
 protected:
  UserFailures() {
    Users().Names = {u"anna"};
    Users().Records[u"anna"] = {};
  }

  // Loading ends with the showing, with the first
  // message or, in the change-password dialog, where it turns to the user; it begins again for the
  // dialog that an expired password opens.
  std::vector<bool> LoadingOf(const Calls& entries) const override {
    std::vector<bool> loading_of_call;
    bool loading = true;
    bool change = false;
    for (const std::string& entry : entries) {
      if (entry.starts_with("GetText capChangePassword")) change = true;
      if (entry.starts_with("Show") || entry.starts_with("GetText msg")) loading = false;
      if (change && entry == "CreateUserAdministration") loading = false;
      if (!IsNote(entry)) loading_of_call.push_back(loading);
      if (entry.starts_with("Box msgPasswordExpired")) loading = true;
    }
    return loading_of_call;
  }

  // Confirms with anna's name, in whichever way is left after a failure.
  static void Confirm(Operator& op) {
    if (op.Form().Name() == u"FLogOn") {
      Fill(op, u"txtName", u"anna");
    } else {
      op.Get<ui::KRXComboBox>(u"cboName").Text = u"anna";
    }
    Fill(op, u"txtPassword", u"x");
    op.Click(u"keyOK");
  }
  Scenario LogOnScenario(const LogOnDialog& which, std::vector<std::int32_t> codes,
                         StringView last_key = u"keyCancel") {
    const auto prepare = [this, which, codes, last = String(last_key)] {
      for (const std::int32_t code : codes) {
        Users().LogOnCodes.push_back(code);
        platform.Expect(which.Form, Confirm);
        if (code == 4) PrepareChange({2});
      }
      if (codes.empty() || codes.back() != 2)
        platform.Expect(which.Form, [last](Operator& op) { op.Click(last); });
    };
    return {prepare, [this, which] { (dialog.get()->*which.Open)(); }};
  }
  void PrepareChange(const std::vector<std::int32_t>& codes) {
    for (const std::int32_t code : codes) {
      Users().ChangeCodes.push_back(code);
      ExpectChange([](Operator& op) {
        FillChange(op, u"old", u"new");
        op.Click(u"keyOK");
      });
    }
    if (codes.empty() || codes.back() != 0)
      ExpectChange([](Operator& op) { op.Click(u"keyCancel"); });
  }
};

// Texts and their service (7), fonts (8 times 2 and their service), the measuring, and the session,
// the attempts, texts and boxes of the messages.
TEST_F(UserFailures, LogOnWithEveryRefusal) {
  FailEveryCall(LogOnScenario(kTypedName, {0, 1, 3, 5, 7, 2}), 7 + 17 + 1 + 6 + 8);
}

TEST_F(UserFailures, LogOnByListWithEveryRefusal) {
  FailEveryCall(LogOnScenario(kListedName, {0, 1, 3, 5, 7, 2}), 2 + 7 + 17 + 1 + 6 + 8);
}

TEST_F(UserFailures, LogOff) {
  FailEveryCall(LogOnScenario(kTypedName, {1}, u"keyLogOut"), 7 + 17 + 2 + 2 + 2);
  FailEveryCall(LogOnScenario(kListedName, {1}, u"keyLogOff"), 2 + 7 + 17 + 2 + 2 + 2);
}

TEST_F(UserFailures, LogOnWithAnExpiredPassword) {
  FailEveryCall(LogOnScenario(kTypedName, {4, 2}), 2 * 30);
  FailEveryCall(LogOnScenario(kListedName, {4, 2}), 2 * 30);
}

TEST_F(UserFailures, ChangePasswordWithEveryRefusal) {
  Users().Current = {u"anna", u"operators", true};
  FailEveryCall({[this] {
                   PrepareChange({1, 2, 3, 4, 5, 6, 7, 0});
                 },
                 [this] { dialog->KRChangePassword(); }},
                10 + 31 + 3 + 8 + 12);
}

TEST_F(UserFailures, ChangePasswordOfNobody) {
  FailEveryCall({[] {}, [this] { dialog->KRChangePassword(); }}, 10 + 31 + 2 + 2);
  FailEveryCall({[] {}, [this] { users::FChangePassword(apartment).ChangePassword(u"zeno"); }},
                10 + 31 + 2 + 2);
}

// A user who could not be read counts as nobody.
TEST_F(UserFailures, WhoAmI) {
  Users().Current = {u"anna", u"operators", true};
  const auto prepare = [this] {
    platform.Expect(u"FWhoAmI", [](Operator& op) { op.Click(u"keyOK"); });
  };
  Baseline({prepare, [this] { dialog->KRWhoAmI(); }});
  const int calls = log.Calls();
  for (int n = 1; n <= calls; ++n) {
    SCOPED_TRACE("call " + std::to_string(n));
    const bool nobody = n <= 2;
    Clear();
    log.FailCall(n, false);
    if (!nobody) prepare();
    EXPECT_FALSE(ErrorOf([&] { dialog->KRWhoAmI(); }));
    EXPECT_THAT(log.EntriesOf("Box"), ::testing::SizeIs(nobody ? 1 : 0));
    EXPECT_THAT(platform.Complaints(), ::testing::IsEmpty());
    ExpectNothingIsLeft();
    Clear();
    log.FailCall(n, true);
    if (!nobody) prepare();
    EXPECT_EQ(ErrorOf([&] { dialog->KRWhoAmI(); }).has_value(), nobody) << "the message fails then";
    EXPECT_THAT(platform.Complaints(), ::testing::IsEmpty());
    ExpectNothingIsLeft();
  }
  EXPECT_GE(calls, 5 + 7 + 21);
}

TEST_F(UserFailures, WhoAmIOfNobody) {
  FailEveryCall({[] {}, [this] { dialog->KRWhoAmI(); }}, 2 + 7 + 21 + 2);
}

TEST_F(UserFailures, ErrorsOfHandlersEndTheDialog) {
  log.FailNothing();
  platform.Expect(u"FLogOn", [this](Operator& op) {
    log.FailCall(2, false);
    op.Click(u"keyLogOut");
  });
  EXPECT_EQ(StatusOf([&] { dialog->KRUserLogOn(); }), CallLog::FailureOf(2).Status());
}

TEST_F(UserFailures, MessageWithoutADialogServiceIsObjectNotSet) {
  Users().LogOnCodes = {0};
  platform.Expect(u"FLogOn", [this](Operator& op) {
    service::KRXDialog::Create(apartment);  // its end clears the shared service
    Confirm(op);
  });
  EXPECT_EQ(StatusOf([&] { dialog->KRUserLogOn(); }), kObjectNotSet);
}

}  // namespace krx::test
