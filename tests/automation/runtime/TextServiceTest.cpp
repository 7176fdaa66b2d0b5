#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "ModuleCopy.h"

namespace krx::runtime {
namespace {

class TextServiceTest : public testing::Test {
 protected:
  ModuleCopy module_;
  com::ComPtr<ITextService> texts_ = module_.Texts();
  com::ComPtr<IRuntimeSettings> settings_ = module_.Settings();
};

TEST_F(TextServiceTest, GivesGermanTextsWithTheirUmlauts) {
  SetLanguage(*settings_, u"de");
  EXPECT_EQ(u"&\u00C4ndern", GetText(*texts_, u"keyChangeUser", -103));
  EXPECT_EQ(u"&Vollst\u00E4ndiger Name", GetText(*texts_, u"lblFullName", -103));
  EXPECT_EQ(u"\u00D6&ffnen", GetText(*texts_, u"Open", -105));
  EXPECT_EQ(u"&Abbrechen", GetText(*texts_, u"Cancel&", -105));
}

TEST_F(TextServiceTest, GivesEnglishTextsAndLineBreaks) {
  SetLanguage(*settings_, u"en");
  EXPECT_EQ(u"&Retry", GetText(*texts_, u"Retry", -105));
  EXPECT_EQ(u"There is no user of this name.\nPlease check the name.",
            GetText(*texts_, u"msgUnknownUser", -103));
}

TEST_F(TextServiceTest, GivesTheKeyItselfWhenItIsUnknown) {
  EXPECT_EQ(u"Nothing", GetText(*texts_, u"Nothing", -105));
  EXPECT_EQ(u"OK", GetText(*texts_, u"OK", -999));
  EXPECT_EQ(u"", GetText(*texts_, u"", -105));
}

TEST_F(TextServiceTest, ResolvesReferences) {
  SetLanguage(*settings_, u"de");
  EXPECT_EQ(u"Datei \u00F6ffnen", ResolveText(*texts_, u"@TitleOpen"));
  EXPECT_EQ(u"Anmelden", ResolveText(*texts_, u"@-103:capLogon"));
  EXPECT_EQ(u"FilterImages", ResolveText(*texts_, u"@FilterImages"));
  EXPECT_EQ(u"@", ResolveText(*texts_, u"@"));
}

TEST_F(TextServiceTest, DescribesWhyItRefusesAText) {
  const Error error = FailureOf([&] { ResolveText(*texts_, u"TitleOpen"); });
  EXPECT_EQ(0x80070057u, error.Status());
  EXPECT_EQ(u"KorvelRuntime", error.Source());
  EXPECT_EQ(u"A text reference begins with \"@\".", error.Description());
}

TEST_F(TextServiceTest, RefusesAMissingOutput) {
  const com::Bstr key(u"OK");
  EXPECT_EQ(E_POINTER, texts_->GetText(key.Get(), -105, nullptr));
  EXPECT_EQ(E_POINTER, texts_->ResolveText(key.Get(), nullptr));
  EXPECT_EQ(E_POINTER, settings_->get_Language(nullptr));
  com::ComPtr<IErrorInfo> error;
  EXPECT_EQ(S_OK, GetErrorInfo(0, error.Put()));
}

TEST_F(TextServiceTest, SharesOneLanguageInTheProcess) {
  const auto other = module_.Settings();
  SetLanguage(*settings_, u"en");
  EXPECT_EQ(u"en", Language(*other));
  SetLanguage(*other, u"DE");
  EXPECT_EQ(u"de", Language(*settings_));
  EXPECT_EQ(u"&Ja", GetText(*module_.Texts(), u"Yes", -105));
}

TEST_F(TextServiceTest, FollowsTheSystemAgainWithAnEmptyLanguage) {
  const String system = Language(*settings_);
  wchar_t name[LOCALE_NAME_MAX_LENGTH] = {};
  ASSERT_NE(0, LCIDToLocaleName(MAKELCID(GetUserDefaultUILanguage(), SORT_DEFAULT), name,
                                LOCALE_NAME_MAX_LENGTH, 0));
  EXPECT_EQ(com::FromWide(name).starts_with(u"de") ? u"de" : u"en", system);
  SetLanguage(*settings_, system == u"de" ? u"en" : u"de");
  EXPECT_NE(system, Language(*settings_));
  SetLanguage(*settings_, u"");
  EXPECT_EQ(system, Language(*settings_));
}

TEST_F(TextServiceTest, RefusesALanguageWithoutTexts) {
  SetLanguage(*settings_, u"en");
  const Error error = FailureOf([&] { SetLanguage(*settings_, u"tlh"); });
  EXPECT_EQ(0x80070057u, error.Status());
  EXPECT_TRUE(error.Description().starts_with(u"There are no texts for the language \"tlh\"."));
  EXPECT_EQ(u"en", Language(*settings_));
}

TEST_F(TextServiceTest, ServesSeveralApartments) {
  std::atomic<int> wrong = 0;
  const auto work = [&] {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    {
      const auto texts = module_.Texts();
      const auto settings = module_.Settings();
      for (int i = 0; i < 300; ++i) {
        SetLanguage(*settings, i % 2 == 0 ? u"de" : u"en");
        const String yes = GetText(*texts, u"Yes", -105);
        if (yes != u"&Ja" && yes != u"&Yes") ++wrong;
      }
    }
    CoUninitialize();
  };
  std::thread threads[] = {std::thread(work), std::thread(work), std::thread(work)};
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(0, wrong);
}

}  // namespace
}  // namespace krx::runtime
