// What is shown beside the dialogs, and the system's word on the operator's input.

#include "runtime/users/win32/NoticeWindow.h"

#include <gtest/gtest.h>

#include "contract/OperatorInputContract.h"
#include "driver/Input.h"
#include "driver/Window.h"
#include "runtime/users/win32/Win32OperatorInput.h"

namespace krx::runtime {
namespace {

class English : public TextSource {
 public:
  std::vector<TextFile> Read(const String&) override {
    return {{u"en", "-105 TextDirection = ltr\n"}};
  }
  String SystemLanguage() override { return u"en"; }
};

class NoticeWindowTest : public testing::Test {
 protected:
  static void HandleMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
      DispatchMessageW(&message);
  }
  template <class Condition>
  static bool Comes(Condition condition) {
    return drive::Within(drive::kPatience, [&] {
      HandleMessages();
      return condition();
    });
  }
  drive::Window Shown() const { return drive::Window(notice.Handle()); }

  English source;
  Languages languages{source};
  NoticeWindow notice{languages};
};

TEST_F(NoticeWindowTest, TheSystemKeepsTheContractOfInput) {
  Win32OperatorInput input;
  const auto press = [&input] {
    const auto before = input.Now();
    ASSERT_TRUE(drive::Within(drive::kPatience, [&] {
      drive::PressKey(VK_F24);
      return input.Last() >= before;
    }));
  };
  test::KeepsItsContract(input, press, [&input] {
    const auto before = input.Now();
    ASSERT_TRUE(drive::Within(drive::kPatience, [&] { return input.Now() > before; }));
  });
}

TEST_F(NoticeWindowTest, ItShowsItsTextAboveAllAndTakesNoFocus) {
  const HWND before = GetForegroundWindow();
  const HWND focus = GetFocus();
  EXPECT_EQ(nullptr, notice.Handle());
  notice.Show(u"One line\nand another");
  ASSERT_TRUE(Shown().Visible());
  EXPECT_EQ(Shown().Text(), L"One line\nand another");
  EXPECT_TRUE(GetWindowLongW(notice.Handle(), GWL_EXSTYLE) & WS_EX_TOPMOST);
  HandleMessages();
  EXPECT_EQ(GetForegroundWindow(), before);
  EXPECT_EQ(GetFocus(), focus);
  EXPECT_NE(GetActiveWindow(), notice.Handle());
  RECT screen{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen, 0);
  const RECT bounds = Shown().Bounds();
  EXPECT_GE(bounds.left, screen.left);
  EXPECT_LE(bounds.right, screen.right);
  EXPECT_GE(bounds.top, screen.top);
  EXPECT_NEAR(bounds.left + bounds.right, screen.left + screen.right, 1);
}

TEST_F(NoticeWindowTest, ACountdownStaysWhereItIs) {
  notice.Show(u"10 seconds");
  const RECT wide = Shown().Bounds();
  notice.Show(u"9 seconds");
  EXPECT_EQ(Shown().Text(), L"9 seconds");
  const RECT bounds = Shown().Bounds();
  EXPECT_TRUE(EqualRect(&bounds, &wide));
}

TEST_F(NoticeWindowTest, ATouchIsKnownUntilTheTextIsAnother) {
  notice.Show(u"Touch me");
  EXPECT_FALSE(notice.IsTouched());
  Shown().Click();
  EXPECT_TRUE(Comes([this] { return notice.IsTouched(); }));
  notice.Show(u"And me");
  EXPECT_FALSE(notice.IsTouched());
}

TEST_F(NoticeWindowTest, HiddenItLeavesNeitherWindowNorClass) {
  notice.Show(u"Here");
  wchar_t name[64] = {};
  ASSERT_GT(GetClassNameW(notice.Handle(), name, 64), 0);
  const HWND window = notice.Handle();
  notice.Hide();
  EXPECT_FALSE(IsWindow(window));
  WNDCLASSEXW found{};
  found.cbSize = sizeof found;
  EXPECT_FALSE(GetClassInfoExW(GetModuleHandleW(nullptr), name, &found));
  notice.Show(u"Here again");
  EXPECT_TRUE(Shown().Visible());
}

}  // namespace
}  // namespace krx::runtime
