// Texts that a plant lays beside the component.
#include <gtest/gtest.h>

#include "ModuleCopy.h"

namespace krx::runtime {
namespace {

class LanguageFilesTest : public testing::Test {
 protected:
  ModuleCopy module_;
  com::ComPtr<ITextService> texts_ = module_.Texts();
  com::ComPtr<IRuntimeSettings> settings_ = module_.Settings();
};

TEST_F(LanguageFilesTest, BringAFurtherLanguage) {
  module_.Write(L"KorvelTexts.fr.txt",
                "# fran\xC3\xA7"
                "ais\r\n-105 Cancel = &Annuler\r\n"
                "-105 Help = &Aide\\n\xC3\xA0 vous\r\n");
  SetLanguage(*settings_, u"fr");
  EXPECT_EQ(u"fr", Language(*settings_));
  EXPECT_EQ(u"&Annuler", GetText(*texts_, u"Cancel", -105));
  EXPECT_EQ(u"&Aide\n\u00E0 vous", GetText(*texts_, u"Help", -105));
  EXPECT_EQ(u"&Yes", GetText(*texts_, u"Yes", -105)) << "English where French is missing";
  EXPECT_EQ(u"Nothing", GetText(*texts_, u"Nothing", -105));
}

TEST_F(LanguageFilesTest, AddAndReplaceTextsOfABuiltInLanguage) {
  module_.Write(L"KorvelTexts.de.txt", "-105 FilterImages = Bilder|*.bmp;*.gif\n-105 Yes = Jawohl");
  SetLanguage(*settings_, u"de");
  EXPECT_EQ(u"Bilder|*.bmp;*.gif", ResolveText(*texts_, u"@FilterImages"));
  EXPECT_EQ(u"Jawohl", GetText(*texts_, u"Yes", -105));
  EXPECT_EQ(u"&Nein", GetText(*texts_, u"No", -105));
}

TEST_F(LanguageFilesTest, AreRefusedWithFileLineAndReason) {
  module_.Write(L"KorvelTexts.it.txt", "-105 Yes = S\xC3\xAC\n-105 No\n");
  const String file = com::FromWide((module_.Folder() / L"KorvelTexts.it.txt").wstring());
  SetLanguage(*settings_, u"de");
  const Error error = FailureOf([&] { SetLanguage(*settings_, u"it"); });
  EXPECT_EQ(0x80040201u, error.Status());
  EXPECT_EQ(file + u", line 2: \"=\" is missing between key and text", error.Description());
  EXPECT_EQ(u"de", Language(*settings_));

  module_.Write(L"KorvelTexts.it.txt", "-105 Yes = S\xC3\xAC\n");
  SetLanguage(*settings_, u"it");
  EXPECT_EQ(u"S\u00EC", GetText(*texts_, u"Yes", -105));
}

TEST_F(LanguageFilesTest, ThatCannotBeReadAreNamed) {
  std::filesystem::create_directory(module_.Folder() / L"KorvelTexts.es.txt");
  const Error error = FailureOf([&] { SetLanguage(*settings_, u"es"); });
  EXPECT_EQ(0x80040202u, error.Status());
  EXPECT_NE(String::npos, error.Description().find(u"KorvelTexts.es.txt cannot be read: "));

  module_.Write(L"KorvelTexts.pt.txt", std::string(4 * 1024 * 1024 + 1, '#'));
  EXPECT_EQ(0x80040202u, FailureOf([&] { SetLanguage(*settings_, u"pt"); }).Status());
}

TEST_F(LanguageFilesTest, AreReadOnce) {
  module_.Write(L"KorvelTexts.nl.txt", "-105 Yes = &Ja hoor");
  SetLanguage(*settings_, u"nl");
  module_.Write(L"KorvelTexts.nl.txt", "-105 Yes = Nee");
  SetLanguage(*settings_, u"en");
  SetLanguage(*settings_, u"nl");
  EXPECT_EQ(u"&Ja hoor", GetText(*texts_, u"Yes", -105));
}

}  // namespace
}  // namespace krx::runtime
