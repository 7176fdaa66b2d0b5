#include <random>

#include "administration/AdministrationTest.h"
#include "support/Seed.h"

// Random work in the user overview against a model of the user management: after every step the
// list shows what the rules give. A divergence prints its seed; KRX_SEED starts at another one.
namespace krx::test {

namespace {

const unsigned kSequences = Sequences(50000);
constexpr int kSteps = 6;

struct ModelUser {
  String Name;
  String FullName;
  String Comment;
  String ClassName;
  std::int32_t State = 0;
  std::int32_t RemainingLogOns = 0;
  std::int32_t RenewPassword = 0;
};

}  // namespace

class RandomAdministration : public AdministrationTest {
 protected:
  RandomAdministration() {
    Users().OnCreate = [this](const host::UserRecord& record) {
      users_.push_back({record.Name, record.FullName, record.Comment, record.ClassName, 3, 0, 0});
      Publish();
    };
    Users().OnModify = [this](const host::UserRecord& record) {
      for (ModelUser& user : users_) {
        if (user.Name != record.Name) continue;
        user.FullName = record.FullName;
        user.Comment = record.Comment;
        user.ClassName = record.ClassName;
        user.State = 3;
      }
      Publish();
    };
    Users().OnRemove = [this](const String& name) {
      if (Chance(4)) return;  // refused
      std::erase_if(users_, [&](const ModelUser& user) { return user.Name == name; });
      Publish();
    };
    Users().OnSetActive = [this](const String& name, std::int32_t active) {
      if (Chance(4)) return;
      for (ModelUser& user : users_) {
        if (user.Name == name) user.State = active == 1 ? 0 : 1;
      }
      Publish();
    };
  }

  int Pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }
  bool Chance(int one_in) { return Pick(one_in) == 0; }

  // What the fake user management answers from now on.
  void Publish() {
    Users().Names.clear();
    Users().Records.clear();
    Users().ClassOf.clear();
    for (const ModelUser& user : users_) {
      Users().Names.push_back(user.Name);
      Users().Records[user.Name] = {
          user.FullName, user.Comment, user.State, user.RemainingLogOns, 0, user.RenewPassword};
      Users().ClassOf[user.Name] = user.ClassName;
    }
  }
  ModelUser AnyUser(const String& name) {
    const String classes[] = {u"Guest", u"Operator", u"Admin", u"Lost"};
    return {
        name,        u"full " + name, Chance(2) ? String() : u"note", classes[Pick(4)], Pick(8) - 2,
        Pick(5) - 1, Pick(3)};
  }
  void Begin(unsigned seed) {
    random_.seed(seed);
    users_.clear();
    const int count = Pick(6);
    for (int i = 0; i < count; ++i)
      users_.push_back(AnyUser(String(1, static_cast<char16_t>(u'a' + i))));
    if (Chance(2)) users_.push_back(AnyUser(u"root"));
    Users().Classes = {{u"Guest", Pick(3) - 1}, {u"Operator", Pick(5)}, {u"Admin", Pick(9)}};
    const String own[] = {u"Admin", u"Operator", u""};
    Users().Current = {u"root", own[Pick(3)], true};
    Users().AdministrationMode = Chance(2) ? 0 : Pick(5) - 1;
    Users().Restart();
    Publish();
  }

  std::int32_t Level(const String& class_name) const {
    for (const auto& [name, level] : Users_().Classes) {
      if (name == class_name) return level;
    }
    return 0;
  }
  const FakeUsers& Users_() const { return runtime.Users; }

  // The rules, written once more.
  Calls ExpectedRows() const {
    const char* const states[] = {"enmStateActive", "enmStateDeactivated", "enmStateLocked",
                                  "enmStateActiveChangePassword"};
    const host::CurrentUser& current = Users_().Current;
    const std::int32_t own = current.ClassName.empty() ? 0 : Level(current.ClassName);
    const std::int32_t mode = Users_().AdministrationMode;
    std::string state;
    Calls rows;
    for (const ModelUser& user : users_) {
      const bool below = Level(user.ClassName) < own || user.Name == current.Name;
      if (mode != 1 && mode != 2 && !(mode == 0 && below)) continue;
      if (user.State >= 0 && user.State <= 3) state = states[user.State];
      rows.push_back(ToUtf8(user.Name) + "|" + state + "|" + ToUtf8(user.FullName) + "|text of " +
                     ToUtf8(user.ClassName) + "|" + std::to_string(user.RemainingLogOns) + "|" +
                     std::to_string(user.RenewPassword) + "|" + ToUtf8(user.Comment));
    }
    return rows;
  }

  void FillForm(Operator& op) {
    if (!op.Get<ui::TextBox>(u"txtName").Locked()) Fill(op, u"txtName", u"n" + ToString(++added_));
    Fill(op, u"txtPassword", u"pw");
    Fill(op, u"txtPassword2", Chance(5) ? u"qw" : u"pw");
    auto& user_class = op.Get<ui::KRXComboBox>(u"cboUserClass");
    const int offered = static_cast<int>(user_class.Items().size());
    if (offered > 0 && user_class.Enabled()) user_class.Select(Pick(offered));
    const bool confirm = Enabled(op, u"keyOK") && !Chance(4);
    op.Click(confirm ? u"keyOK" : u"keyCancel");
    if (op.Form().Visible()) op.Click(u"keyCancel");
  }

  // One step of the operator; returns whether the list is read anew by it.
  bool Step(Operator& op, ui::ListView& list) {
    const int rows = list.RowCount();
    const bool acts = list.SelectedRow() >= 0;
    switch (Pick(8)) {
      case 0:
        if (rows > 0) op.ClickRow(u"lvwUser", Pick(rows));
        return false;
      case 1:
        op.Get(u"lvwUser").SetFocus();
        op.Press(Chance(2) ? ui::kKeyDown : ui::kKeyUp);
        return false;
      case 2:  // somebody works at another station
        if (!users_.empty()) users_.erase(users_.begin() + Pick(static_cast<int>(users_.size())));
        Publish();
        return false;
      case 3:
        Users().CreateCodes = {Chance(3) ? Pick(7) : 0};
        if (!Users().Current.Name.empty()) ExpectForm([this](Operator& form) { FillForm(form); });
        op.Click(u"keyAddUser");
        Users().CreateCodes.clear();
        return true;
      case 4:
        Users().ModifyCodes = {Chance(3) ? Pick(8) : 0};
        if (acts) ExpectForm([this](Operator& form) { FillForm(form); });
        op.Click(u"keyChangeUser");
        Users().ModifyCodes.clear();
        return acts;
      default: {
        const StringView keys[] = {u"keyRemoveUser", u"keyActivateUser", u"keyDeactivateUser"};
        op.Click(keys[Pick(3)]);
        return acts;
      }
    }
  }

  void Work(Operator& op) {
    auto& list = op.Get<ui::ListView>(u"lvwUser");
    ASSERT_EQ(Rows(op), ExpectedRows());
    Calls shown = Rows(op);
    for (int i = 0; i < kSteps; ++i) {
      const int row = list.SelectedRow();
      const String selected = row < 0 ? String() : String(list.Cell(row, 0));
      const bool read = Step(op, list);
      if (read) shown = ExpectedRows();
      ASSERT_EQ(Rows(op), shown) << "step " << i;
      if (!read) continue;
      const bool there = row >= 0 && std::any_of(shown.begin(), shown.end(), [&](const auto& text) {
                           return text.starts_with(ToUtf8(selected) + "|");
                         });
      ASSERT_EQ(list.SelectedRow() >= 0, there);
      if (!there) continue;
      ASSERT_EQ(list.Cell(list.SelectedRow(), 0), selected);
    }
    op.Click(u"keyOK");
  }

 private:
  std::mt19937 random_;
  std::int32_t added_ = 0;
  std::vector<ModelUser> users_;
};

TEST_F(RandomAdministration, TheListAlwaysShowsWhatTheRulesGive) {
  const unsigned first = FirstSeed();
  for (unsigned seed = first; seed < first + kSequences; ++seed) {
    Begin(seed);
    ExpectOverview([this](Operator& op) { Work(op); });
    dialog->KRUser();
    ASSERT_FALSE(HasFailure()) << "seed " << seed;
    ASSERT_THAT(platform.Complaints(), ::testing::IsEmpty()) << "seed " << seed;
    platform.Pointers.clear();
  }
}

}  // namespace krx::test
