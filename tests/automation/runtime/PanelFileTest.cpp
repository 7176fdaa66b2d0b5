// What a plant writes down beside the component about its panels.
#include <gtest/gtest.h>

#include "ModuleCopy.h"

namespace krx::runtime {
namespace {

class PanelFileTest : public testing::Test {
 protected:
  String Keyboard() {
    com::Bstr name;
    com::CheckCall(settings_->get_Keyboard(name.Put()), settings_.Get(), __uuidof(IPanelSettings));
    return name.Text();
  }

  ModuleCopy module_;
  com::ComPtr<IPanelSettings> settings_ = module_.Create<::PanelSettings, IPanelSettings>();
};

TEST_F(PanelFileTest, IsWhatTheSettingsBeginWith) {
  module_.Write(L"KorvelPanel.conf", "Keyboard = always\r\nFirstAnswerDelay = 0.5\r\n");
  EXPECT_EQ(u"always", Keyboard());
  double delay = 0;
  EXPECT_EQ(S_OK, settings_->get_FirstAnswerDelay(&delay));
  EXPECT_EQ(0.5, delay);
  EXPECT_EQ(S_OK, settings_->put_Keyboard(com::Bstr(u"never").Get()));
  EXPECT_EQ(u"never", Keyboard());
}

TEST_F(PanelFileTest, IsReadAtTheFirstUse) {
  EXPECT_EQ(u"touch", Keyboard());
  module_.Write(L"KorvelPanel.conf", "Keyboard = always\n");
  EXPECT_EQ(u"touch", Keyboard());
}

TEST_F(PanelFileTest, IsRefusedWithFileLineAndReasonUntilItIsMended) {
  module_.Write(L"KorvelPanel.conf", "Theme = dark\nKeyboard = sometimes\n");
  const String file = com::FromWide((module_.Folder() / L"KorvelPanel.conf").wstring());
  const Error error = FailureOf([&] { Keyboard(); });
  EXPECT_EQ(0x80040201u, error.Status());
  EXPECT_EQ(file + u", line 2: Keyboard is \"touch\", \"always\" or \"never\", not \"sometimes\"",
            error.Description());
  module_.Write(L"KorvelPanel.conf", "Keyboard = never\n");
  EXPECT_EQ(u"never", Keyboard());
}

}  // namespace
}  // namespace krx::runtime
