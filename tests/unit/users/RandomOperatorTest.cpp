#include "support/Seed.h"
#include "users/DialogModel.h"
#include "users/FChangePassword.h"
#include "users/UsersTest.h"

// Random sequences of what an operator does, against small models written from the rules. A
// divergence prints its seed; KRX_SEED starts at another one.
namespace krx::test {

namespace {

const unsigned kSequences = Sequences(34000);

using Calls = std::vector<std::string>;
using Kind = DialogModel::Kind;

std::string Box(const std::string& key) {
  return "Box " + key + "|48|KRXDialogs";
}

// A log-on dialog and what it asks of the user management.
class LogOnModel : public DialogModel {
 public:
  explicit LogOnModel(const LogOnDialog& which)
      : DialogModel({{which.NameField, which.HasList ? Kind::List : Kind::Text, !which.HasList},
                     {u"txtPassword", Kind::Text, true},
                     {u"keyOK", Kind::Key, false, false},
                     {u"keyCancel", Kind::Key},
                     {which.LogOffKey, Kind::Key}}),
        administrations_(which.HasList ? 1 : 0) {
    if (which.HasList) Calls_ = {"CreateUserAdministration", "UserAdministration1.GetUserNames()"};
  }

  bool Confirmed() const { return OkPressed(); }
  bool Succeeded() const { return succeeded_; }
  const String& Name() { return At(0).Text; }

  // The attempt after OK. `known`: the change-password dialog finds the user. Returns whether that
  // dialog is shown.
  bool Attempt(std::int32_t code, bool known) {
    if (attempt_session_ == 0) {
      Calls_.push_back("CreateUserSession");
      attempt_session_ = ++sessions_;
    }
    Calls_.push_back(Session(attempt_session_) + ".LogOnUser(" + ToUtf8(Name()) + ", " +
                     ToUtf8(At(1).Text) + ")");
    succeeded_ = code == 2;
    if (code == 0) Refuse("msgUnknownUser", 0);
    if (code == 1) Refuse("msgInvalidPassword", 1);
    if (code == 3) Refuse("msgUserDeactivated", 0);
    if (code == 5) Refuse("msgTooManyFailedLogons", 0);
    if (code == 4) Refuse("msgPasswordExpired", 1);
    if (code == 6) Refuse("msgRenewPassword", 1);
    if (code != 4 && code != 6) return false;
    const std::string administration = "UserAdministration" + std::to_string(++administrations_);
    Calls_.push_back("CreateUserAdministration");
    Calls_.push_back(administration + ".GetUserClass(" + ToUtf8(Name()) + ")");
    if (known) {
      Calls_.push_back(administration + ".GetUserInfo(" + ToUtf8(Name()) + ")");
    } else {
      Calls_.push_back("Box msgUnknownUser|64|capChangePassword");
    }
    Calls_.push_back("~" + administration);
    return known;
  }
  // All calls up to the end of the dialog.
  Calls AllCalls() {
    Calls all = Calls_;
    if (attempt_session_ != 0) all.push_back("~" + Session(attempt_session_));
    if (At(0).Kind == Kind::List) all.push_back("~UserAdministration1");
    return all;
  }

 protected:
  void Changed(Item& item) override {
    if (&item == &At(0)) At(2).Enabled = !item.Text.empty();
  }
  void EnterIn(Item& item) override {
    if (&item == &At(0)) return FocusOn(At(1));
    if (!At(2).Enabled) return FocusOn(At(0));
    FocusOn(At(2));
    Clicked(u"keyOK");
  }
  void Clicked(StringView key) override {
    Close(key == u"keyOK");
    if (key != At(4).Name) return;
    const std::string session = Session(++sessions_);
    Calls_.insert(Calls_.end(), {"CreateUserSession", session + ".LogOffUser()", "~" + session});
  }

 private:
  static std::string Session(int number) { return "UserSession" + std::to_string(number); }
  void Refuse(const std::string& message, std::size_t focus) {
    Calls_.push_back(Box(message));
    SendFocusTo(At(focus));
  }

  Calls Calls_;
  int sessions_ = 0;
  int attempt_session_ = 0;
  int administrations_;
  bool succeeded_ = false;
};

// The change-password dialog of the user who is logged on.
class ChangeModel : public DialogModel {
 public:
  ChangeModel()
      : DialogModel({{u"txtActPassword", Kind::Text, true},
                     {u"txtPassword", Kind::Text, true},
                     {u"txtPassword2", Kind::Text, true},
                     {u"keyOK", Kind::Key, false, false},
                     {u"keyCancel", Kind::Key}}) {
    SendFocusTo(At(0));
  }

  bool Confirmed() const { return OkPressed(); }
  void Attempt(std::int32_t code) {
    Calls_.push_back("UserAdministration1.ChangeUserPassword(anna, " + ToUtf8(At(1).Text) + ", " +
                     ToUtf8(At(0).Text) + ")");
    if (code == 1) Refuse("msgUnknownUser", 4);
    if (code == 2 || code == 5) Refuse("msgInvalidPassword", 0);
    if (code == 3) Refuse("msgUnableToSaveUser", 4);
    if (code == 4) Refuse("msgInvalidPasswordLength", 1);
    if (code == 6) Refuse("msgCallFailed", 4);
  }
  Calls AllCalls() const {
    Calls all = Calls_;
    all.push_back("~UserAdministration1");
    return all;
  }

 protected:
  void Changed(Item& item) override {
    if (&item == &At(0)) return;
    At(3).Enabled = At(1).Text == At(2).Text && !At(1).Text.empty() && !At(0).Text.empty();
  }
  void EnterIn(Item& item) override {
    if (&item == &At(0)) return FocusOn(At(1));
    if (&item == &At(1)) return FocusOn(At(2));
    if (!At(3).Enabled) return FocusOn(At(0));
    FocusOn(At(3));
    Clicked(u"keyOK");
  }
  void Clicked(StringView key) override { Close(key == u"keyOK"); }

 private:
  void Refuse(const std::string& message, std::size_t focus) {
    Calls_.push_back(Box(message));
    SendFocusTo(At(focus));
  }

  Calls Calls_{"CreateUserAdministration", "UserAdministration1.GetCurrentUser()",
               "UserAdministration1.GetUserInfo(anna)"};
};

// Texts and fonts that cost nothing, so that many sequences fit into a test.
class PlainTexts : public host::TextService {
 public:
  String GetText(StringView key, std::int32_t) override { return String(key); }
  String ResolveText(StringView reference) override { return String(reference); }
};
class PlainFonts : public host::FontService {
 public:
  void SelectFontClass(StringView) override {}
  Font GetFont() override { return {}; }
};
class PlainRuntime : public FakeRuntime {
 public:
  using FakeRuntime::FakeRuntime;
  std::unique_ptr<host::TextService> CreateTextService() override {
    return std::make_unique<PlainTexts>();
  }
  std::unique_ptr<host::FontService> CreateFontService() override {
    return std::make_unique<PlainFonts>();
  }
};

}  // namespace

class OperatorAtRandom : public UsersTest {
 protected:
  using Random = RandomOperator::Random;

  OperatorAtRandom() {
    Users().Current = {u"anna", u"operators", true};
    dialog = service::KRXDialog::Create(plain_);
  }
  FakeUsers& Users() { return plain_runtime_.Users; }

  // A code of the tables, or one that is in none of them.
  static std::int32_t AnyCode(RandomOperator& person) {
    constexpr std::array<std::int32_t, 5> kOutside{-1, -6, 7, 1000, -2147483647 - 1};
    const std::size_t code = person.Below(9);
    return code < 7 ? static_cast<std::int32_t>(code) : kOutside[person.Below(kOutside.size())];
  }

  void RunLogOn(const LogOnDialog& which, Random& random) {
    LogOnModel model(which);
    RandomOperator person(model, random);
    const Script showing = [&](Operator& op) {
      Compare(person.Run(op));
      if (!model.Confirmed()) return;
      const std::int32_t code = AnyCode(person);
      const bool known = person.Below(2) == 0;
      Users().LogOnCodes.push_back(code);
      known ? (void)Users().Records[model.Name()] : (void)Users().Records.erase(model.Name());
      if (model.Attempt(code, known)) {
        ExpectChange([](Operator& change) { change.Press(ui::kKeyEscape); });
      }
      if (code != 2) platform.Expect(which.Form, again_);
    };
    again_ = showing;
    platform.Expect(which.Form, showing);
    const bool result = (dialog.get()->*which.Open)();
    Compare(result == model.Succeeded() ? "" : "result");
    CompareCalls(model.AllCalls());
  }

  void RunChange(Random& random) {
    ChangeModel model;
    RandomOperator person(model, random);
    bool changed = false;
    const Script showing = [&](Operator& op) {
      Compare(person.Run(op));
      if (!model.Confirmed()) return;
      const std::int32_t code = AnyCode(person);
      Users().ChangeCodes.push_back(code);
      model.Attempt(code);
      changed = code == 0;
      if (!changed) platform.Expect(u"FChangePassword", again_);
    };
    again_ = showing;
    platform.Expect(u"FChangePassword", showing);
    const bool result = users::FChangePassword(plain_).ChangePassword();
    Compare(result == changed ? "" : "result");
    CompareCalls(model.AllCalls());
  }

  template <class Sequence>
  void RunAll(Sequence sequence) {
    const unsigned first = FirstSeed();
    for (unsigned seed = first; seed < first + kSequences && !HasFailure(); ++seed) {
      seed_ = seed;
      // Spread, because the generator's first numbers follow from small seeds directly.
      Random random(seed * 2654435761u);
      Users().Restart();
      sequence(random);
      attempts_ += log.EntriesOf("UserSession1.LogOnUser").size() +
                   log.EntriesOf("UserAdministration1.ChangeUserPassword").size();
    }
    std::cout << kSequences << " sequences with " << attempts_ << " attempts\n";
    EXPECT_GT(attempts_, kSequences / 20) << "the operator hardly ever gets to OK";
  }

 private:
  void Compare(const std::string& difference) {
    if (!difference.empty()) ADD_FAILURE() << "seed " << seed_ << ": " << difference;
  }
  void CompareCalls(const Calls& expected) {
    const Calls calls = Users().Calls();
    if (calls != expected) {
      EXPECT_THAT(calls, ::testing::ElementsAreArray(expected)) << "seed " << seed_;
    }
  }

  PlainRuntime plain_runtime_{log};
  service::Apartment plain_{platform, plain_runtime_};
  Script again_;
  unsigned seed_ = 0;
  std::size_t attempts_ = 0;
};

TEST_F(OperatorAtRandom, FollowsTheRulesOfLogOn) {
  RunAll([this](Random& random) { RunLogOn(kTypedName, random); });
}

TEST_F(OperatorAtRandom, FollowsTheRulesOfLogOnByList) {
  Users().Names = {u"anna", u"", u"Berta", u"anna"};
  RunAll([this](Random& random) { RunLogOn(kListedName, random); });
}

TEST_F(OperatorAtRandom, FollowsTheRulesOfChangePassword) {
  RunAll([this](Random& random) { RunChange(random); });
}

}  // namespace krx::test
