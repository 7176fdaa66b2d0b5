#include "runtime/users/logon/LogOnNotice.h"

#include "support/Errors.h"
#include "support/UserManagementTest.h"

namespace krx::test {
namespace {

class LogOnNoticeTest : public UserManagementTest {
 protected:
  std::string Read(StringView language = u"en") { return ToUtf8(notice.Read(language)); }
  void Write(const std::string& name, const std::string& bytes) { files.Put(folder / name, bytes); }
  std::string Fault(StringView language = u"en") {
    const Error error = ErrorOf([&] { Read(language); }).value();
    EXPECT_TRUE(error.Status() == runtime::kMalformedRules ||
                error.Status() == runtime::kFileFailure);
    return ToUtf8(error.Description());
  }
  std::vector<std::string> Recorded() {
    std::vector<std::string> outcomes;
    for (const runtime::AuditRecord& record : Records()) {
      if (record.Entry.Action == u"read notice") outcomes.push_back(ToUtf8(record.Entry.Outcome));
    }
    return outcomes;
  }
  std::string PathOf(const std::string& name) const { return (folder / name).string(); }

  runtime::LogOnNotice notice{management};
};

TEST_F(LogOnNoticeTest, IsEmptyWithoutAFile) {
  EXPECT_EQ(Read(), "");
  EXPECT_EQ(files.Reads, 0);
}

TEST_F(LogOnNoticeTest, IsTheFileWithItsLines) {
  Write("log-on-notice.txt",
        "\xEF\xBB\xBF\r\n\r\n  Nur f\xC3\xBCr Befugte.\r\n\r\n# Alles wird aufgezeichnet.\r\n\r\n");
  EXPECT_EQ(Read(), "Nur f\xC3\xBCr Befugte.\n\n# Alles wird aufgezeichnet.");
}

TEST_F(LogOnNoticeTest, OneOfTheLanguageComesFirstThenTheOneWithoutItsRegion) {
  Write("log-on-notice.txt", "for all");
  Write("log-on-notice.de.txt", "deutsch");
  Write("log-on-notice.pt.txt", "portugu\xC3\xAAs");
  Write("log-on-notice.pt-br.txt", "brasileiro");
  EXPECT_EQ(Read(u"de"), "deutsch");
  EXPECT_EQ(Read(u"de-at"), "deutsch");
  EXPECT_EQ(Read(u"pt-br"), "brasileiro");
  EXPECT_EQ(Read(u"pt"), "portugu\xC3\xAAs");
  EXPECT_EQ(Read(u"en"), "for all");
}

TEST_F(LogOnNoticeTest, AnEmptyFileOfALanguageMeansNone) {
  Write("log-on-notice.txt", "for all");
  Write("log-on-notice.de.txt", "\n \n");
  EXPECT_EQ(Read(u"de"), "");
}

TEST_F(LogOnNoticeTest, AChangeHoldsFromTheNextLogOnOn) {
  Write("log-on-notice.txt", "before");
  EXPECT_EQ(Read(), "before");
  Write("log-on-notice.txt", "after");
  EXPECT_EQ(Read(), "after");
}

TEST_F(LogOnNoticeTest, WhatIsNoTextIsRefusedWithFileLineAndReason) {
  Write("log-on-notice.txt", "good\n\xFF\n");
  EXPECT_EQ(Fault(), PathOf("log-on-notice.txt") + ", line 2: the line is not UTF-8");
  Write("log-on-notice.de.txt", "a\x01z\n");
  EXPECT_EQ(Fault(u"de"),
            PathOf("log-on-notice.de.txt") + ", line 1: the line contains a control character");
}

TEST_F(LogOnNoticeTest, IsNoLongerThanItMayBe) {
  Write("log-on-notice.txt", std::string(16'384, 'x'));
  EXPECT_EQ(Read(), std::string(16'384, 'x'));
  Write("log-on-notice.txt", std::string(16'385, 'x'));
  files.Reads = 0;
  EXPECT_EQ(Fault(), PathOf("log-on-notice.txt") + " is longer than 16384 bytes");
  EXPECT_EQ(files.Reads, 0);
}

TEST_F(LogOnNoticeTest, OneThatCannotBeReadIsAnError) {
  Write("log-on-notice.txt", "text");
  files.Unreadable = true;
  EXPECT_THAT(Fault(), testing::HasSubstr("log-on-notice.txt"));
}

TEST_F(LogOnNoticeTest, AFaultIsRecordedOnceUntilItIsMended) {
  Provision();
  Write("log-on-notice.txt", "\xFF");
  for (int i = 0; i < 3; ++i)
    Fault();
  const std::string refused =
      "refused, not shown: " + PathOf("log-on-notice.txt") + ", line 1: the line is not UTF-8";
  EXPECT_EQ(Recorded(), std::vector<std::string>{refused});
  Write("log-on-notice.txt", "mended");
  EXPECT_EQ(Read(), "mended");
  Write("log-on-notice.txt", "\xFF");
  Fault();
  EXPECT_EQ(Recorded(), (std::vector<std::string>{refused, refused}));
}

}  // namespace
}  // namespace krx::test
