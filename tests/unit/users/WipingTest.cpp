#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "support/FreedMemory.h"
#include "users/UsersTest.h"

// No memory that is given back still holds a password.
namespace krx::test {

namespace {

constexpr StringView kSecret = u"geheimnis42";
constexpr StringView kBeginning = u"geheim";  // also of what is typed only in part

}  // namespace

TEST(Wiping, WatchSeesWhatIsNotWiped) {
  const FreedMemory freed(kBeginning);
  std::make_unique<String>(kSecret).reset();
  EXPECT_EQ(freed.BlocksWithText(), 1u);
}

TEST(Wiping, PasswordIsWipedWhenItEnds) {
  const FreedMemory freed(kBeginning);
  { const Password secret(kSecret); }
  EXPECT_EQ(freed.BlocksWithText(), 0u);
}

TEST(Wiping, PasswordIsWipedWhenItIsReplacedOrMoved) {
  const FreedMemory freed(kBeginning);
  {
    Password secret(kSecret);
    secret = Password(u"other");
    Password second(kSecret);
    Password third(std::move(second));
    third = third.With(3, 2, u"xx");
    secret = Password(kSecret).With(2, 1, u"");
    secret = Password();
  }
  EXPECT_EQ(freed.BlocksWithText(), 0u);
}

class WipingOfDialogs : public UsersTest {
 protected:
  WipingOfDialogs() {
    Users().Current = {u"anna", u"operators", true};
    Users().Records[u"anna"] = {};
  }
};

TEST_F(WipingOfDialogs, LogOnLeavesNoPasswordBehind) {
  const FreedMemory freed(kBeginning);
  Users().LogOnCodes = {1, 2};
  for (int i = 0; i < 2; ++i) {
    platform.Expect(u"FLogOn", [](Operator& op) {
      Fill(op, u"txtName", u"anna");
      Fill(op, u"txtPassword", kSecret);
      op.Press(ui::kKeyTab, ui::kShift);
      op.Press(ui::kKeyTab);
      Fill(op, u"txtPassword", kSecret);
      op.Click(u"keyOK");
    });
  }
  EXPECT_TRUE(dialog->KRUserLogOn());
  EXPECT_EQ(freed.BlocksWithText(), 0u);
}

TEST_F(WipingOfDialogs, CancelledLogOnLeavesNoPasswordBehind) {
  const FreedMemory freed(kBeginning);
  platform.Expect(u"FLogOnCombo", [](Operator& op) {
    Fill(op, u"txtPassword", kSecret);
    op.Click(u"keyCancel");
  });
  EXPECT_FALSE(dialog->KRUserLogOnCombo());
  EXPECT_EQ(freed.BlocksWithText(), 0u);
}

TEST_F(WipingOfDialogs, ChangePasswordLeavesNoPasswordBehind) {
  const FreedMemory freed(kBeginning);
  for (const std::int32_t code : {4, 0}) {
    Users().ChangeCodes.push_back(code);
    ExpectChange([](Operator& op) {
      for (const StringView box : {u"txtActPassword", u"txtPassword", u"txtPassword2"})
        Fill(op, box, kSecret);
      op.Click(u"keyOK");
    });
  }
  dialog->KRChangePassword();
  EXPECT_EQ(freed.BlocksWithText(), 0u);
}

TEST_F(WipingOfDialogs, FailingAttemptLeavesNoPasswordBehind) {
  const FreedMemory freed(kBeginning);
  platform.Expect(u"FLogOn", [this](Operator& op) {
    Fill(op, u"txtName", u"anna");
    Fill(op, u"txtPassword", kSecret);
    log.FailCall(2, false);
    op.Click(u"keyOK");
  });
  EXPECT_NE(StatusOf([&] { dialog->KRUserLogOn(); }), 0u);
  EXPECT_EQ(freed.BlocksWithText(), 0u);
}

}  // namespace krx::test
