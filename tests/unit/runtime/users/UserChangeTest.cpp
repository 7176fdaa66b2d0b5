#include <limits>

#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

using UserChangeTest = UserManagementTest;

TEST_F(UserChangeTest, ACreatedUserIsStoredWithEverything) {
  ProvisionAndLogOn();
  ASSERT_EQ(directory.CreateUser(Record(u"anna", u"anna's secret", u"Engineer")),
            host::CreateUserSucceeded);
  const StoredUser anna = StoredRecord(u"anna");
  EXPECT_EQ(anna.FullName, u"Full anna");
  EXPECT_EQ(anna.Comment, u"Comment on anna");
  EXPECT_EQ(anna.ClassName, u"Engineer");
  EXPECT_TRUE(anna.MustRenew);
  EXPECT_FALSE(anna.Deactivated);
  EXPECT_EQ(anna.PasswordChangedOn, clock.Seconds);
  EXPECT_EQ(StoreContent().find("anna's secret"), std::string::npos);
}

TEST_F(UserChangeTest, EveryCodeOfCreationIsReachable) {
  EXPECT_EQ(directory.CreateUser(Record(u"anna")), host::CreateUserCallFailed);  // no store
  Provision();
  EXPECT_EQ(directory.CreateUser(Record(u"anna")), host::CreateUserCallFailed);  // nobody
  ASSERT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  EXPECT_EQ(directory.CreateUser(Record(u"anna", u"short")), host::CreateUserInvalidLength);
  EXPECT_EQ(directory.CreateUser(Record(u"annabella", u"AnnaBella")), host::CreateUserNotAccepted);
  EXPECT_EQ(directory.CreateUser(Record(u"anna", u"first secret", u"Visitor")),
            host::CreateUserCallFailed);
  EXPECT_EQ(directory.CreateUser(Record(u"boss")), host::CreateUserExists);
  EXPECT_EQ(directory.CreateUser(Record(u"BOSS")), host::CreateUserExists);
  disk.ReadOnly = true;
  EXPECT_EQ(directory.CreateUser(Record(u"anna")), host::CreateUserUnableToSave);
  disk.ReadOnly = false;
  EXPECT_EQ(directory.CreateUser(Record(u"anna")), host::CreateUserSucceeded);
}

TEST_F(UserChangeTest, EveryCodeOfModificationIsReachable) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  EXPECT_EQ(directory.ModifyUser(Record(u"nobody")), host::ModifyUserUnknownUser);
  EXPECT_EQ(directory.ModifyUser(Record(u"anna", u"new secret", u"Visitor")),
            host::ModifyUserUnknownClass);
  EXPECT_EQ(directory.ModifyUser(Record(u"anna", u"short")), host::ModifyUserInvalidLength);
  EXPECT_EQ(directory.ModifyUser(Record(u"anna", u"12345678")), host::ModifyUserNotAccepted);
  EXPECT_EQ(directory.ModifyUser(Record(u"anna", u"anna's secret")), host::ModifyUserNotAccepted);
  disk.ReadOnly = true;
  EXPECT_EQ(directory.ModifyUser(Record(u"anna", u"new secret")), host::ModifyUserUnableToSave);
  disk.ReadOnly = false;
  EXPECT_EQ(directory.ModifyUser(Record(u"anna", u"new secret", u"Engineer")),
            host::ModifyUserSucceeded);
  EXPECT_EQ(directory.GetUserClass(u"anna").ClassName, u"Engineer");
  EXPECT_EQ(LogOn(u"anna", u"new secret"), host::LogOnRenewPassword);
  session.LogOffUser();
  EXPECT_EQ(directory.ModifyUser(Record(u"anna", u"newer secret")), host::ModifyUserCallFailed);
}

TEST_F(UserChangeTest, EveryCodeOfRemovalIsReachable) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  EXPECT_EQ(directory.RemoveUser(u"nobody"), host::ModifyUserUnknownUser);
  disk.ReadOnly = true;
  EXPECT_EQ(directory.RemoveUser(u"anna"), host::ModifyUserUnableToSave);
  disk.ReadOnly = false;
  EXPECT_EQ(directory.RemoveUser(u"anna"), host::ModifyUserSucceeded);
  EXPECT_FALSE(directory.GetUserClass(u"anna").Found);
  session.LogOffUser();
  EXPECT_EQ(directory.RemoveUser(u"boss"), host::ModifyUserCallFailed);
}

TEST_F(UserChangeTest, EveryCodeOfActivationIsReachable) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  EXPECT_EQ(directory.SetUserActive(u"nobody", 0), host::ModifyUserUnknownUser);
  for (const std::int32_t active : {-1, 2, std::numeric_limits<std::int32_t>::min()})
    EXPECT_EQ(directory.SetUserActive(u"anna", active), host::ModifyUserCallFailed) << active;
  EXPECT_EQ(directory.GetUserInfo(u"anna").State, host::UserActive);
  disk.ReadOnly = true;
  EXPECT_EQ(directory.SetUserActive(u"anna", 0), host::ModifyUserUnableToSave);
  disk.ReadOnly = false;
  EXPECT_EQ(directory.SetUserActive(u"anna", 0), host::ModifyUserSucceeded);
  EXPECT_EQ(directory.GetUserInfo(u"anna").State, host::UserDeactivated);
  EXPECT_EQ(directory.SetUserActive(u"anna", 1), host::ModifyUserSucceeded);
  EXPECT_EQ(directory.GetUserInfo(u"anna").State, host::UserActive);
}

TEST_F(UserChangeTest, DeactivatingDoesNotMakeAFirstPasswordLasting) {
  ProvisionAndLogOn();
  ASSERT_EQ(directory.CreateUser(Record(u"anna")), host::CreateUserSucceeded);
  ASSERT_EQ(directory.SetUserActive(u"anna", 0), host::ModifyUserSucceeded);
  ASSERT_EQ(directory.SetUserActive(u"anna", 1), host::ModifyUserSucceeded);
  EXPECT_EQ(directory.GetUserInfo(u"anna").State, host::UserActiveChangePassword);
}

TEST_F(UserChangeTest, StatesOfARecordAreStored) {
  ProvisionAndLogOn();
  const std::pair<std::int32_t, std::int32_t> cases[] = {
      {host::UserActive, host::CreateUserSucceeded},
      {host::UserDeactivated, host::CreateUserSucceeded},
      {host::UserLocked, host::CreateUserCallFailed},
      {host::UserActiveChangePassword, host::CreateUserSucceeded},
      {4, host::CreateUserCallFailed},
      {-1, host::CreateUserCallFailed},
  };
  for (const auto& [state, result] : cases) {
    host::UserRecord record = Record(u"user " + ToString(state));
    record.State = state;
    EXPECT_EQ(directory.CreateUser(record), result) << state;
    if (result == host::CreateUserSucceeded) {
      EXPECT_EQ(directory.GetUserInfo(record.Name).State, state);
    }
  }
}

TEST_F(UserChangeTest, TheDateIsTheDayFromWhichThePasswordAges) {
  ProvisionAndLogOn();
  host::UserRecord record = Record(u"anna");
  record.Date = 45'000.75;
  ASSERT_EQ(directory.CreateUser(record), host::CreateUserSucceeded);
  EXPECT_EQ(directory.GetUserInfo(u"anna").PasswordChangedOn, 45'000);
  for (const double date : {-1.0, 3e6, std::numeric_limits<double>::quiet_NaN(),
                            std::numeric_limits<double>::infinity()}) {
    record = Record(u"berta");
    record.Date = date;
    EXPECT_EQ(directory.CreateUser(record), host::CreateUserCallFailed) << date;
  }
}

TEST_F(UserChangeTest, NamesThatNobodyCouldTellApartAreRefused) {
  ProvisionAndLogOn();
  for (const String& name : {String(), String(u" anna"), String(u"anna "), String(u"an\tna"),
                             String(u"an\nna"), String(65, u'a'), String(1, u'\xD800')}) {
    EXPECT_EQ(directory.CreateUser(Record(name)), host::CreateUserCallFailed) << ToUtf8(name);
  }
  EXPECT_EQ(directory.CreateUser(Record(String(64, u'a'))), host::CreateUserSucceeded);
  EXPECT_EQ(directory.CreateUser(Record(u"J\u00FCrgen")), host::CreateUserSucceeded);
  EXPECT_EQ(directory.CreateUser(Record(u"J\u00DCRGEN")), host::CreateUserExists);
}

// Controls of direction, what has no width or no ink, and white space that passes as a blank.
TEST_F(UserChangeTest, NamesWithAnythingUnseenAreRefused) {
  ProvisionAndLogOn();
  for (const int listed :
       {0xA0,   0xAD,   0x34F,  0x61C,   0x115F,  0x1160,  0x1680,  0x180E,  0x2000, 0x2007, 0x200A,
        0x200B, 0x200C, 0x200D, 0x200E,  0x200F,  0x2028,  0x202A,  0x202E,  0x202F, 0x205F, 0x2060,
        0x2064, 0x2066, 0x2069, 0x206F,  0x2800,  0x3000,  0x3164,  0xFE0F,  0xFEFF, 0xFFA0, 0xFFF9,
        0xFFFE, 0xFFFF, 0xFDD0, 0x1D173, 0xE0001, 0xE0041, 0xE0100, 0x10FFFF}) {
    const auto code = static_cast<unsigned>(listed);
    String letter(1, static_cast<char16_t>(code));
    if (code > 0xFFFF) {
      letter = {static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10)),
                static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF))};
    }
    const String name = u"an" + letter + u"na";
    EXPECT_EQ(directory.CreateUser(Record(name)), host::CreateUserCallFailed) << std::hex << code;
    EXPECT_THAT(LastAuditLine(), testing::HasSubstr("refused: this is no user name"));
  }
  for (const String& name :
       {String(u"anna b\u00E4r"), String(u"\u05D3\u05E0\u05D4"), String(u"\u0639\u0644\u064A"),
        String(u"\u0905\u0928\u093F\u0924\u093E"), String(u"\U0001F600"),
        String(u"o\u0308zgu\u0308r")}) {
    EXPECT_EQ(directory.CreateUser(Record(name)), host::CreateUserSucceeded) << ToUtf8(name);
  }
}

TEST_F(UserChangeTest, FullNamesThatTurnTheTextAroundThemAreRefused) {
  ProvisionAndLogOn();
  host::UserRecord record = Record(u"anna");
  for (const StringView turning : {u"A\u202Enna", u"A\u2067nna", u"A\u202Cnna"}) {
    record.FullName = turning;
    EXPECT_EQ(directory.CreateUser(record), host::CreateUserCallFailed);
  }
  record.FullName = u"\u05D3\u05E0\u05D4 (2)\u200F";
  EXPECT_EQ(directory.CreateUser(record), host::CreateUserSucceeded);
}

// An older store may have such a user: he is listed, can be deactivated and removed, all recorded.
TEST_F(UserChangeTest, AUserWithAnUnseenCharacterFromBeforeCanBeRemoved) {
  ProvisionAndLogOn();
  const String name = u"an\u202Ena\u200B";
  {
    StoredUser old = StoredRecord(u"boss");
    old.Name = name;
    UserStore::Writing writing(management.Store);
    writing.Users().Add(old);
    writing.Commit();
  }
  EXPECT_THAT(directory.GetUserNames(u""), testing::Contains(name));
  EXPECT_EQ(directory.GetUserInfo(name).State, host::UserActive);
  EXPECT_EQ(directory.SetUserActive(name, 0), host::ModifyUserSucceeded);
  EXPECT_EQ(directory.RemoveUser(name), host::ModifyUserSucceeded);
  EXPECT_EQ(Records().back().Entry.Subject, name);
  EXPECT_FALSE(directory.GetUserClass(name).Found);
}

TEST_F(UserChangeTest, DescriptionsOfAnyTextSurvive) {
  ProvisionAndLogOn();
  host::UserRecord record = Record(u"anna");
  record.FullName = u"Anna\t\"\\u0041\" \u0416 \U0001F600";
  record.Comment = String(u"line 1\r\nline 2\0end", 18);
  ASSERT_EQ(directory.CreateUser(record), host::CreateUserSucceeded);
  const host::UserInfo info = directory.GetUserInfo(u"anna");
  EXPECT_EQ(info.FullName, record.FullName);
  EXPECT_EQ(info.Comment, record.Comment);
  record = Record(u"berta");
  record.Comment = String(1001, u'x');
  EXPECT_EQ(directory.CreateUser(record), host::CreateUserCallFailed);
  record.Comment = u"\xDC00";
  EXPECT_EQ(directory.CreateUser(record), host::CreateUserCallFailed);
}

TEST_F(UserChangeTest, NobodySawsOffHisOwnBranch) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret", u"Administrator");
  EXPECT_EQ(directory.RemoveUser(u"boss"), host::ModifyUserCallFailed);
  EXPECT_EQ(directory.SetUserActive(u"boss", 0), host::ModifyUserCallFailed);
  EXPECT_EQ(directory.ModifyUser(Record(u"boss", u"new secret", u"Operator")),
            host::ModifyUserCallFailed);
  host::UserRecord record = Record(u"boss", u"new secret", u"Administrator");
  record.State = host::UserDeactivated;
  EXPECT_EQ(directory.ModifyUser(record), host::ModifyUserCallFailed);
  record.State = host::UserActiveChangePassword;
  EXPECT_EQ(directory.ModifyUser(record), host::ModifyUserSucceeded);
  EXPECT_TRUE(directory.GetCurrentUser().LoggedOn);
}

TEST_F(UserChangeTest, OnesOwnRecordNeedsAPasswordThatWasGivenLately) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  const auto own = [](StringView password) {
    host::UserRecord record = Record(u"boss", password, u"Administrator");
    record.State = host::UserActive;
    return record;
  };
  clock.Seconds += 10 * 60;
  EXPECT_EQ(directory.ModifyUser(own(u"second secret")), host::ModifyUserCallFailed);
  EXPECT_THAT(LastAuditLine(),
              testing::HasSubstr(
                  "boss\tmodify user\tboss\trefused: his password was not asked for lately"));
  EXPECT_EQ(directory.ModifyUser(Record(u"anna", u"anna's second")), host::ModifyUserSucceeded)
      << "others are his work";
  ASSERT_EQ(LogOn(u"boss", kBossSecret), host::LogOnSucceeded);
  clock.Seconds += 10 * 60 - 1;
  EXPECT_EQ(directory.ModifyUser(own(u"second secret")), host::ModifyUserSucceeded);
  clock.Seconds += 1;
  EXPECT_EQ(directory.ModifyUser(own(u"third secret")), host::ModifyUserCallFailed)
      << "such a change gives no current password";
  ASSERT_EQ(
      directory.ChangeUserPassword(u"boss", Secret(u"third secret"), Secret(u"second secret")),
      host::ChangePasswordSucceeded);
  EXPECT_EQ(directory.ModifyUser(own(u"fourth secret")), host::ModifyUserSucceeded);
  clock.Seconds -= 3600;  // a clock that is set back gives no more time
  EXPECT_EQ(directory.ModifyUser(own(u"fifth secret")), host::ModifyUserCallFailed);
}

TEST_F(UserChangeTest, APlantMayLeaveOnesOwnRecordToTheChangeOfPassword) {
  Configure("own-record-minutes = 0\n");
  ProvisionAndLogOn();
  EXPECT_EQ(directory.ModifyUser(Record(u"boss", u"second secret", u"Administrator")),
            host::ModifyUserCallFailed);
  EXPECT_EQ(directory.ChangeUserPassword(u"boss", Secret(u"second secret"), Secret(kBossSecret)),
            host::ChangePasswordSucceeded);
}

TEST_F(UserChangeTest, OfTwoAdministratorsWhoRemoveEachOtherOneRemains) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret", u"Administrator");
  runtime::Session other_session;
  runtime::UserManagement other{System(), folder, other_session};
  ASSERT_EQ(runtime::LogOnService(other).LogOnUser(u"anna", Secret(u"anna's secret")),
            host::LogOnSucceeded);
  EXPECT_EQ(directory.RemoveUser(u"anna"), host::ModifyUserSucceeded);
  EXPECT_EQ(runtime::UserDirectory(other).RemoveUser(u"boss"), host::ModifyUserCallFailed);
  EXPECT_TRUE(directory.GetUserClass(u"boss").Found);
}

TEST_F(UserChangeTest, AHigherLevelThanTheAdministratorsCannotLeaveNone) {
  Configure(
      "administration-mode = 0\nclass = Operator | 10 | O\nclass = Administrator | 100 | A\n"
      "class = Inspector | 200 | I\n");
  Provision();
  StoredUser inspector = StoredRecord(u"boss");
  inspector.Name = u"inspector";
  inspector.ClassName = u"Inspector";
  {
    UserStore::Writing writing(management.Store);
    writing.Users().Add(inspector);
    writing.Commit();
  }
  ASSERT_EQ(LogOn(u"inspector", kBossSecret), host::LogOnSucceeded);
  EXPECT_EQ(directory.SetUserActive(u"boss", 0), host::ModifyUserSucceeded);
  EXPECT_EQ(directory.SetUserActive(u"inspector", 0), host::ModifyUserCallFailed);
}

TEST_F(UserChangeTest, TheOnlyAdministratorWhoIsNotLockedOutStays) {
  Configure("lock-out-minutes = 0\n");
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret", u"Administrator");
  for (int i = 0; i < 5; ++i)
    ASSERT_EQ(LogOn(u"boss", u"wrong"), host::LogOnInvalidPassword);
  EXPECT_EQ(directory.SetUserActive(u"anna", 0), host::ModifyUserCallFailed);
  EXPECT_EQ(directory.RemoveUser(u"anna"), host::ModifyUserCallFailed);
  EXPECT_EQ(directory.GetUserInfo(u"anna").State, host::UserActive);
}

TEST_F(UserChangeTest, WhatCannotBeRecordedDoesNotHappen) {
  ProvisionAndLogOn();
  AddUser(u"anna", u"anna's secret");
  const std::size_t records = Records().size();
  crypto.HashFails = true;  // the record cannot be chained to the one before
  EXPECT_EQ(directory.RemoveUser(u"anna"), host::ModifyUserCallFailed);
  EXPECT_EQ(directory.SetUserActive(u"anna", 0), host::ModifyUserCallFailed);
  EXPECT_EQ(directory.CreateUser(Record(u"berta")), host::CreateUserCallFailed);
  EXPECT_THROW(LogOn(u"anna", u"anna's secret"), Error);
  crypto.HashFails = false;
  EXPECT_EQ(directory.GetUserInfo(u"anna").State, host::UserActive);
  EXPECT_FALSE(directory.GetUserClass(u"berta").Found);
  EXPECT_EQ(directory.GetCurrentUser().Name, u"boss");
  EXPECT_EQ(Records().size(), records);
}

}  // namespace
}  // namespace krx::test
