#include "runtime/core/Languages.h"

#include <atomic>
#include <thread>

#include <gtest/gtest.h>

#include "FakeTexts.h"
#include "runtime/core/KorvelError.h"

namespace krx::runtime {
namespace {

class LanguagesTest : public testing::Test {
 protected:
  FakeTexts texts_;
  Languages languages_{texts_};
};

TEST_F(LanguagesTest, FollowTheSystemUntilALanguageIsSelected) {
  EXPECT_EQ(u"de", languages_.Current());
  EXPECT_EQ(u"&Ja", languages_.Text(u"Yes", -105));
  languages_.Select(u"en");
  EXPECT_EQ(u"en", languages_.Current());
  EXPECT_EQ(u"&Yes", languages_.Text(u"Yes", -105));
  languages_.Select(u"");
  EXPECT_EQ(u"de", languages_.Current());
}

TEST_F(LanguagesTest, AreEnglishWhereTheSystemSpeaksAnUnknownLanguage) {
  for (const StringView system : {u"fi-FI", u"", u"../de", u"-"}) {
    texts_.System = system;
    languages_.Select(u"");
    EXPECT_EQ(u"en", languages_.Current()) << ToUtf8(system);
    EXPECT_EQ(u"&Yes", languages_.Text(u"Yes", -105));
  }
}

TEST_F(LanguagesTest, AreNamedWithoutRegardToCase) {
  languages_.Select(u"EN");
  EXPECT_EQ(u"en", languages_.Current());
}

TEST_F(LanguagesTest, RefuseAnUnknownNameAndStayAsTheyWere) {
  languages_.Select(u"en");
  for (const StringView name : {u"xx", u"e", u"de.txt", u"..", u"en-", u"-en", u"en--us",
                                u"d\u00E9", u"../../en", u"C:\\en", u" en", u"@"}) {
    const Error error = FailureOf([&] { languages_.Select(name); });
    EXPECT_EQ(kInvalidArgument, error.Status()) << ToUtf8(name);
    EXPECT_EQ(u"KorvelRuntime", error.Source());
    EXPECT_NE(String::npos, error.Description().find(u"\"" + String(name) + u"\""));
    EXPECT_EQ(u"en", languages_.Current());
  }
}

TEST_F(LanguagesTest, NeverAskForAFileWhoseNameCouldLeadElsewhere) {
  for (const StringView name : {u"..", u"../en", u"a/b", u"a\\b", u"a:b", u"a.b", u"\u00E9"}) {
    EXPECT_THROW(languages_.Select(name), Error);
  }
  // Only English, which every language falls back to, has been read.
  for (const auto& [language, count] : texts_.Reads)
    EXPECT_EQ(u"en", language);
}

TEST_F(LanguagesTest, FallBackFromRegionToLanguageToEnglishToKey) {
  texts_.Files[u"de-at"] = {{u"de-at.txt", "-105 Paradeiser = Tomate"}};
  languages_.Select(u"de-AT");
  EXPECT_EQ(u"de-at", languages_.Current());
  EXPECT_EQ(u"Tomate", languages_.Text(u"Paradeiser", -105));
  EXPECT_EQ(u"&Ja", languages_.Text(u"Yes", -105));
  EXPECT_EQ(u"&No", languages_.Text(u"No", -105));
  EXPECT_EQ(u"Maybe", languages_.Text(u"Maybe", -105));
  EXPECT_EQ(std::nullopt, languages_.Find(u"Maybe", -105));
}

TEST_F(LanguagesTest, GiveTheLanguageForAnUnknownRegion) {
  languages_.Select(u"de-CH");
  EXPECT_EQ(u"de", languages_.Current());
}

TEST_F(LanguagesTest, KeepGroupsAndCaseApart) {
  EXPECT_EQ(u"Yes", languages_.Text(u"Yes", -103));
  EXPECT_EQ(u"Yes", languages_.Text(u"Yes", 0));
  EXPECT_EQ(u"yes", languages_.Text(u"yes", -105));
  EXPECT_EQ(u"", languages_.Text(u"", -105));
}

TEST_F(LanguagesTest, LetALaterFileReplaceTextsOfAnEarlierOne) {
  texts_.Files[u"de"].push_back(
      {u"plant.txt", "-105 Yes = Jawohl\n-105 FilterImages = Bilder|*.bmp"});
  EXPECT_EQ(u"Jawohl", languages_.Text(u"Yes", -105));
  EXPECT_EQ(u"Bilder|*.bmp", languages_.Text(u"FilterImages", -105));
  EXPECT_EQ(u"&Name", languages_.Text(u"lblName", -103));
}

TEST_F(LanguagesTest, ReadEachLanguageOnce) {
  for (int i = 0; i < 3; ++i) {
    languages_.Select(u"en");
    languages_.Select(u"de");
    languages_.Text(u"Yes", -105);
  }
  EXPECT_EQ(1, texts_.Reads[u"de"]);
  EXPECT_EQ(1, texts_.Reads[u"en"]);
}

TEST_F(LanguagesTest, RefuseAMalformedFileUntilItIsRepaired) {
  texts_.Files[u"fr"] = {{u"KorvelTexts.fr.txt", "-105 Yes = Oui\n-105 No\n"}};
  const Error error = FailureOf([&] { languages_.Select(u"fr"); });
  EXPECT_EQ(kMalformedTexts, error.Status());
  EXPECT_EQ(u"KorvelTexts.fr.txt, line 2: \"=\" is missing between key and text",
            error.Description());
  EXPECT_EQ(u"de", languages_.Current());

  texts_.Files[u"fr"] = {{u"KorvelTexts.fr.txt", "-105 Yes = Oui\n"}};
  languages_.Select(u"fr");
  EXPECT_EQ(u"Oui", languages_.Text(u"Yes", -105));
}

TEST_F(LanguagesTest, ReportAMalformedFileOfTheSystemLanguageAtEveryCall) {
  texts_.Files[u"de"].push_back({u"KorvelTexts.de.txt", "garbage"});
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(kMalformedTexts, FailureOf([&] { languages_.Text(u"Yes", -105); }).Status());
    EXPECT_EQ(kMalformedTexts, FailureOf([&] { languages_.Current(); }).Status());
  }
}

TEST_F(LanguagesTest, ServeSeveralThreads) {
  std::atomic<int> wrong = 0;
  const auto read = [&] {
    for (int i = 0; i < 2000; ++i) {
      const String text = languages_.Text(u"Yes", -105);
      if (text != u"&Ja" && text != u"&Yes") ++wrong;
    }
  };
  const auto select = [&] {
    for (int i = 0; i < 2000; ++i)
      languages_.Select(i % 2 == 0 ? u"de" : u"en");
  };
  std::thread threads[] = {std::thread(read), std::thread(select), std::thread(read),
                           std::thread(select)};
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(0, wrong);
}

}  // namespace
}  // namespace krx::runtime
