#include "runtime/core/References.h"

#include <gtest/gtest.h>

#include "FakeTexts.h"
#include "runtime/core/KorvelError.h"

namespace krx::runtime {
namespace {

class ReferencesTest : public testing::Test {
 protected:
  String Resolve(StringView reference) { return ResolveReference(languages_, reference); }

  FakeTexts texts_;
  Languages languages_{texts_};
};

TEST_F(ReferencesTest, AreLookedUpAmongDialogTextsThenUserTexts) {
  texts_.Files[u"de"].push_back({u"plant.txt", "-105 Twice = dialog\n-103 Twice = user"});
  EXPECT_EQ(u"&Ja", Resolve(u"@Yes"));
  EXPECT_EQ(u"&Name", Resolve(u"@lblName"));
  EXPECT_EQ(u"dialog", Resolve(u"@Twice"));
}

TEST_F(ReferencesTest, MayNameTheGroup) {
  EXPECT_EQ(u"&Name", Resolve(u"@-103:lblName"));
  EXPECT_EQ(u"sieben", Resolve(u"@-7:Both"));
}

TEST_F(ReferencesTest, FollowTheCurrentLanguageAndFallBackToEnglish) {
  EXPECT_EQ(u"&No", Resolve(u"@No"));
  languages_.Select(u"en");
  EXPECT_EQ(u"&Yes", Resolve(u"@Yes"));
}

TEST_F(ReferencesTest, AreResolvedAsAWhole) {
  texts_.Files[u"de"].push_back({u"plant.txt", "-105 FilterImages = Bilder|*.bmp;*.gif"});
  EXPECT_EQ(u"Bilder|*.bmp;*.gif", Resolve(u"@FilterImages"));
  EXPECT_EQ(u"FilterImages|*.bmp", Resolve(u"@FilterImages|*.bmp"));
}

TEST_F(ReferencesTest, ThatLeadNowhereGiveTheKey) {
  EXPECT_EQ(u"Nothing", Resolve(u"@Nothing"));
  EXPECT_EQ(u"Yes", Resolve(u"@-103:Yes"));
  EXPECT_EQ(u"Yes", Resolve(u"@12345:Yes"));
  EXPECT_EQ(u"C:\\Data", Resolve(u"@C:\\Data"));
  EXPECT_EQ(u"99999999999:Yes", Resolve(u"@99999999999:Yes"));
  EXPECT_EQ(u":Yes", Resolve(u"@:Yes"));
}

TEST_F(ReferencesTest, AreNeverEmpty) {
  EXPECT_EQ(u"@", Resolve(u"@"));
  EXPECT_EQ(u"@", Resolve(u"@@"));
  EXPECT_EQ(u"@Yes", Resolve(u"@@Yes"));
  EXPECT_EQ(u"-105:", Resolve(u"@-105:"));
  EXPECT_EQ(u":", Resolve(u"@:"));
  EXPECT_EQ(u" ", Resolve(u"@ "));
}

TEST_F(ReferencesTest, BeginWithAnAt) {
  for (const StringView text : {u"", u"Yes", u" @Yes"}) {
    const Error error = FailureOf([&] { Resolve(text); });
    EXPECT_EQ(kInvalidArgument, error.Status());
    EXPECT_EQ(u"A text reference begins with \"@\".", error.Description());
  }
}

}  // namespace
}  // namespace krx::runtime
