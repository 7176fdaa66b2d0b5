#include <tuple>

#include "runtime/users/administration/KeyCare.h"
#include "runtime/users/logon/PasswordAge.h"
#include "support/StatementLog.h"
#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

struct Attempted {
  const char* Who;
  String Name;
  StringView Password;
  std::int32_t LogOn;
  std::int32_t Change;
};

// What a check of a name and a password takes, and so how long: it must not tell what is wrong with
// them.
class SameWorkTest : public UserManagementTest {
 protected:
  static constexpr const char* kRules = "lock-out-failures = 90\npassword-expiry-days = 30\n";

  void Prepare() {
    Configure(kRules);
    Provision();
    clock.Seconds += 31 * runtime::kSecondsPerDay;
    ASSERT_EQ(directory.ChangeUserPassword(u"boss", Secret(u"boss's newest"), Secret(kBossSecret)),
              host::ChangePasswordSucceeded);
    ASSERT_EQ(LogOn(u"boss", u"boss's newest"), host::LogOnSucceeded);
    for (const char16_t* const name : {u"expired", u"history", u"deactivated", u"locked", u"plain"})
      AddUser(name, u"the right one");
    AddUser(u"second", u"the right one", u"Administrator");
    ASSERT_EQ(directory.CreateUser(Record(u"renewing", u"the right one")),
              host::CreateUserSucceeded);
    ASSERT_EQ(directory.SetUserActive(u"deactivated", 0), host::ModifyUserSucceeded);
    for (int i = 0; i < 3; ++i) {
      const String before = i == 0 ? String(u"the right one") : u"the next " + ToString(i);
      ASSERT_EQ(directory.ChangeUserPassword(u"history", Secret(u"the next " + ToString(i + 1)),
                                             Secret(before)),
                host::ChangePasswordSucceeded);
    }
    StoredUser expired = StoredRecord(u"expired");
    expired.PasswordChangedOn -= 40 * runtime::kSecondsPerDay;
    Store(expired);
    for (const char16_t* const name : {u"locked", u"second"}) {
      StoredUser locked = StoredRecord(name);
      locked.Failures = locked.FailuresInARow = 90;
      locked.LastFailure = clock.Seconds;
      Store(locked);
    }
    session.LogOffUser();
    CloseStore();
    start = disk.Copy();
  }

  using Work = std::tuple<int, std::uint64_t, int, int, int, std::vector<std::string>>;

  // From the same disk, freshly opened.
  template <class Act>
  Work WorkOf(Act&& act) {
    CloseStore();
    disk.Put(start);
    crypto.Derivations = 0;
    crypto.Iterations = 0;
    disk.Writes = disk.Flushes = 0;
    disk.FailAt(0, false);
    const StatementLog statements;
    act();
    return {crypto.Derivations.load(), crypto.Iterations.load(), disk.Writes, disk.Flushes,
            disk.Operations(),         statements.Texts()};
  }

  SimulatedDisk::Files start;
};

const std::vector<Attempted> kRefused = {
    {"unknown", u"nobody", u"whatever it is", host::LogOnUnknownUser,
     host::ChangePasswordUnknownUser},
    {"in other letters", u"PLAIN", u"the right one", host::LogOnUnknownUser,
     host::ChangePasswordUnknownUser},
    {"wrong", u"plain", u"the wrong one", host::LogOnInvalidPassword,
     host::ChangePasswordInvalidPassword},
    {"too long", u"plain", u"the wrong one and one more", host::LogOnInvalidPassword,
     host::ChangePasswordInvalidPassword},
    {"too short", u"plain", u"x", host::LogOnInvalidPassword, host::ChangePasswordInvalidPassword},
    {"with history", u"history", u"the wrong one", host::LogOnInvalidPassword,
     host::ChangePasswordInvalidPassword},
    {"of the history", u"history", u"the next 1", host::LogOnInvalidPassword,
     host::ChangePasswordInvalidPassword},
    {"expired and wrong", u"expired", u"the wrong one", host::LogOnInvalidPassword,
     host::ChangePasswordInvalidPassword},
    {"to be renewed and wrong", u"renewing", u"the wrong one", host::LogOnInvalidPassword,
     host::ChangePasswordInvalidPassword},
    {"administrator", u"boss", u"the wrong one", host::LogOnInvalidPassword,
     host::ChangePasswordInvalidPassword},
    {"deactivated and wrong", u"deactivated", u"the wrong one", host::LogOnUserDeactivated,
     host::ChangePasswordNotAccepted},
    {"deactivated and right", u"deactivated", u"the right one", host::LogOnUserDeactivated,
     host::ChangePasswordNotAccepted},
    {"locked and wrong", u"locked", u"the wrong one", host::LogOnTooManyFailedLogons,
     host::ChangePasswordNotAccepted},
    {"locked and right", u"locked", u"the right one", host::LogOnTooManyFailedLogons,
     host::ChangePasswordNotAccepted},
    {"locked administrator", u"second", u"the right one", host::LogOnTooManyFailedLogons,
     host::ChangePasswordNotAccepted},
};

TEST_F(SameWorkTest, NoRefusedLogOnReadsHashesOrWritesOtherThanAnother) {
  Prepare();
  const Work expected = WorkOf([&] { LogOn(u"nobody", u"x"); });
  EXPECT_EQ(std::get<0>(expected), 1);
  EXPECT_EQ(std::get<1>(expected), 1000u);
  EXPECT_GT(std::get<2>(expected), 8);
  EXPECT_GT(std::get<5>(expected).size(), 8u);
  for (const Attempted& refused : kRefused) {
    const Work work = WorkOf(
        [&] { EXPECT_EQ(LogOn(refused.Name, refused.Password), refused.LogOn) << refused.Who; });
    EXPECT_EQ(work, expected) << refused.Who;
  }
}

TEST_F(SameWorkTest, NorDoesARefusedChangeOfAPassword) {
  Prepare();
  const auto change = [&](const String& name, StringView current) {
    return directory.ChangeUserPassword(name, Secret(u"a further one"), Secret(current));
  };
  const Work expected = WorkOf([&] { change(u"nobody", u"x"); });
  EXPECT_EQ(std::get<0>(expected), 1);
  for (const Attempted& refused : kRefused) {
    const Work work = WorkOf(
        [&] { EXPECT_EQ(change(refused.Name, refused.Password), refused.Change) << refused.Who; });
    EXPECT_EQ(work, expected) << refused.Who;
  }
}

TEST_F(SameWorkTest, APasswordThatWasHashedByOlderRulesIsCheckedForAsLong) {
  Prepare();
  files.Content(folder / "users.conf") = "hash-iterations = 3000\n" + std::string(kRules);
  for (const Attempted& refused : kRefused) {
    const Work work = WorkOf([&] { LogOn(refused.Name, refused.Password); });
    EXPECT_EQ(std::get<0>(work), 2) << refused.Who;
    EXPECT_EQ(std::get<1>(work), 3000u) << refused.Who;
  }
}

// Twice the work, as it may have been hashed before there was a normal form; also where it is
// right.
TEST_F(SameWorkTest, ADeactivatedUsersPasswordIsNotToldByItsNormalForm) {
  Prepare();
  disk.Put(start);
  ASSERT_EQ(LogOn(u"boss", u"boss's newest"), host::LogOnSucceeded);
  AddUser(u"accents", u"the right \u00E9");
  ASSERT_EQ(directory.SetUserActive(u"accents", 0), host::ModifyUserSucceeded);
  CloseStore();
  start = disk.Copy();
  for (const StringView password : {u"the right e\u0301", u"the wrong e\u0301"}) {
    const Work work =
        WorkOf([&] { EXPECT_EQ(LogOn(u"accents", password), host::LogOnUserDeactivated); });
    EXPECT_EQ(std::get<0>(work), 2);
  }
}

TEST_F(SameWorkTest, KeyedPasswordsAreLookedUpAlikeForEverybody) {
  Prepare();
  runtime::CreateKey(management);
  Configure(kRules + std::string("keyed-passwords = on\n"));
  // The others' hashes are still without a key.
  ASSERT_EQ(LogOn(u"boss", u"boss's newest"), host::LogOnSucceeded);
  ASSERT_EQ(LogOn(u"plain", u"the right one"), host::LogOnSucceeded);
  ASSERT_FALSE(StoredRecord(u"boss").CurrentPassword().KeyId.empty());
  ASSERT_TRUE(StoredRecord(u"history").CurrentPassword().KeyId.empty());
  CloseStore();
  start = disk.Copy();
  const auto reads = [&](const String& name, StringView password) {
    CloseStore();
    disk.Put(start);
    LogOn(name, u"to have read the rules");
    files.Reads = 0;
    LogOn(name, password);
    return files.Reads;
  };
  const int expected = reads(u"nobody", u"x");
  EXPECT_GT(expected, 2);
  for (const Attempted& refused : kRefused)
    EXPECT_EQ(reads(refused.Name, refused.Password), expected) << refused.Who;
}

}  // namespace
}  // namespace krx::test
