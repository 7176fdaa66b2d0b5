#include <thread>

#include "ComponentTest.h"

namespace krx::tests {
namespace {

using SettingsTest = ComponentTest;

void PutFontClassButton(IKRXDialog& dialog, StringView value) {
  EXPECT_EQ(dialog.put_FontClassButton(com::Bstr(value).Get()), S_OK);
}

TEST_F(SettingsTest, TheFirstObjectSetsTheDefaults) {
  const auto dialog = Module.Create();
  com::Bstr caption;
  com::Bstr text;
  com::Bstr input;
  float height = -1;
  dialog->get_FontClassCaption(caption.Put());
  dialog->get_FontClassText(text.Put());
  dialog->get_FontClassInput(input.Put());
  dialog->get_CaptionMinHeight(&height);
  EXPECT_EQ(caption.Text(), u"KRDialogsCaption");
  EXPECT_EQ(text.Text(), u"KRDialogsText");
  EXPECT_EQ(FontClassButton(*dialog), u"KRDialogsButton");
  EXPECT_EQ(input.Text(), u"KRDialogsInput");
  EXPECT_EQ(height, 0);
  EXPECT_EQ(ButtonMinHeight(*dialog), 0);
}

TEST_F(SettingsTest, AnyValueIsStoredAsGiven) {
  const auto dialog = Module.Create();
  const String odd{u'a', u'\0', static_cast<char16_t>(0xD800), u'ß'};
  PutFontClassButton(*dialog, odd);
  EXPECT_EQ(FontClassButton(*dialog), odd);
  EXPECT_EQ(dialog->put_FontClassButton(nullptr), S_OK);
  EXPECT_EQ(FontClassButton(*dialog), u"");
  float height = -12.5f;
  EXPECT_EQ(dialog->put_ButtonMinHeight(&height), S_OK);
  EXPECT_EQ(ButtonMinHeight(*dialog), -12.5f);
  EXPECT_EQ(height, -12.5f);
}

TEST_F(SettingsTest, ObjectsOfAThreadShareThem) {
  const auto first = Module.Create();
  const auto second = Module.Create();
  PutFontClassButton(*second, u"Large");
  EXPECT_EQ(FontClassButton(*first), u"Large");
}

TEST_F(SettingsTest, TheFirstObjectLivesOnInThemWithItsValues) {
  PutFontClassButton(*Module.Create(), u"Large");
  EXPECT_EQ(Module.CanUnload(), S_FALSE);
  EXPECT_EQ(FontClassButton(*Module.Create()), u"Large");
}

TEST_F(SettingsTest, ADestroyedObjectResetsThemForTheNextOneCreated) {
  const auto first = Module.Create();
  float height = 400;
  first->put_ButtonMinHeight(&height);
  PutFontClassButton(*first, u"Large");
  Module.Create().Reset();
  EXPECT_EQ(FontClassButton(*first), u"Large") << "kept until the next object is created";
  const auto next = Module.Create();
  EXPECT_EQ(FontClassButton(*next), u"KRDialogsButton");
  EXPECT_EQ(FontClassButton(*first), u"KRDialogsButton");
  EXPECT_EQ(ButtonMinHeight(*first), 0);
}

TEST_F(SettingsTest, TwoThreadsHaveTheirOwn) {
  const auto here = Module.Create();
  PutFontClassButton(*here, u"Here");
  std::thread([this] {
    const Sta sta;
    const auto there = Module.Create();
    EXPECT_EQ(FontClassButton(*there), u"KRDialogsButton");
    PutFontClassButton(*there, u"There");
    Module.Create().Reset();
  }).join();
  EXPECT_EQ(FontClassButton(*here), u"Here");
  EXPECT_EQ(FontClassButton(*Module.Create()), u"Here");
}

TEST_F(SettingsTest, AnotherThreadIsRefused) {
  const auto dialog = Module.Create();
  HRESULT status = S_OK;
  std::thread([&] {
    const Sta sta;
    com::Bstr value;
    status = dialog->get_FontClassText(value.Put());
  }).join();
  EXPECT_EQ(status, RPC_E_WRONG_THREAD);
}

}  // namespace
}  // namespace krx::tests
