// Dialogs that are filled by the keyboard on the screen alone, pressed with the real mouse or, as
// panels send it, by fingers.

#include <cstdlib>
#include <vector>

#include "ScreenPixels.h"
#include "driver/Resolution.h"
#include "panel/Board.h"
#include "users/UsersTest.h"

namespace krx::drive {
namespace {

struct Panel {
  DWORD Dpi;
  const char* Language;
  krx::drive::Hand Hand;
};

// A resolution and a language each; with KRX_ALL_PANELS in the environment the other two as well.
std::vector<Panel> Panels() {
  std::vector<Panel> panels{{96, "de", Hand::Mouse}, {192, "en", Hand::Finger}};
  if (std::getenv("KRX_ALL_PANELS"))
    panels.insert(panels.end(), {{96, "en", Hand::Finger}, {192, "de", Hand::Mouse}});
  return panels;
}

void PrintTo(const Panel& panel, std::ostream* out) {
  *out << panel.Language << panel.Dpi;
}

std::string NameOfPanel(const ::testing::TestParamInfo<Panel>& info) {
  return info.param.Language + std::to_string(info.param.Dpi);
}

class ScreenKeyboard : public UsersTest, public ::testing::WithParamInterface<Panel> {
 protected:
  void SetUp() override {
    UsersTest::SetUp();
    resolution_.emplace(GetParam().Dpi);
  }

  static std::string Prelude(const std::string& keyboard) {
    return "CreateObject(\"KorvelRuntime.PanelSettings\").Keyboard = \"" + keyboard +
           "\"\r\nRuntime.Language = \"" + GetParam().Language + "\"\r\n";
  }
  void RunPanel(const std::string& statement, const std::string& keyboard = "always") {
    RunUserScript(Prelude(keyboard) + statement + "\r\n");
  }
  static std::wstring Enter() {
    return std::string(GetParam().Language) == "de" ? L"Eingabetaste" : L"Enter";
  }
  static std::wstring TextOf(const std::string& key) { return Text(key, GetParam().Language); }

  // Fills the field that has the focus and goes on with Enter; a password shows asterisks.
  static void Fill(const Window& form, const std::wstring& field, const std::wstring& text) {
    form.WaitForFocusOn(field);
    form.WaitUntilAtRest();
    const Board board(GetParam().Hand);
    ExpectNothingCovered(form, field, board);
    board.Type(text);
    const bool secret = field.find(L"Password") != std::wstring::npos;
    form.Child(field).WaitForText(secret ? std::wstring(text.size(), L'*') : text);
    board.Press(Enter());
  }

  static int Millimetres(int tenths) { return tenths * static_cast<int>(GetParam().Dpi) / 254; }
  static bool Meet(const RECT& one, const RECT& other) {
    RECT common{};
    return IntersectRect(&common, &one, &other) != FALSE;
  }

  // Keys of a size that fingers hit, all of them on the screen, and neither the field nor, where
  // the screen is high enough for all three, the buttons below them.
  static void ExpectNothingCovered(const Window& form, const std::wstring& field,
                                   const Board& board) {
    const RECT keyboard = board.TheWindow().Bounds();
    const int width = GetSystemMetrics(SM_CXSCREEN);
    const int height = GetSystemMetrics(SM_CYSCREEN);
    EXPECT_GE(keyboard.left, 0);
    EXPECT_LE(keyboard.right, width);
    EXPECT_LE(keyboard.bottom, height);
    const RECT key = board.Key(L"g").Bounds();
    EXPECT_GE(key.right - key.left + 1, Millimetres(70));
    EXPECT_GE(key.bottom - key.top + 1, Millimetres(70));
    RECT needed = form.Child(field).Bounds();
    EXPECT_FALSE(Meet(needed, keyboard)) << Narrow(field);
    EXPECT_GE(needed.top, 0);
    for (const wchar_t* const button : {L"keyOK", L"keyCancel"}) {
      const RECT answer = form.Child(button).Bounds();
      UnionRect(&needed, &needed, &answer);
    }
    const int rest = height - (needed.bottom - needed.top) - 2 * Millimetres(15);
    const int lowest = 4 * (Millimetres(70) + Millimetres(10)) + Millimetres(10);
    if (rest < lowest) return;  // no keyboard has room beside them
    EXPECT_FALSE(Meet(needed, keyboard)) << "buttons beside " << Narrow(field);
    EXPECT_GE(needed.top, 0);
    EXPECT_LE(needed.bottom, height);
  }

  std::optional<Resolution> resolution_;
};

TEST_P(ScreenKeyboard, LogsOn) {
  RunPanel("WScript.Echo CStr(Dialogs.KRUserLogOn()) & \", \" & CurrentUser()");
  const Window form = Form(L"FLogOn", L"txtName");
  const RECT home = form.Bounds();
  Fill(form, L"txtName", kOperator);
  Fill(form, L"txtPassword", L"Falsch 1");
  const Window box = NextBox();
  EXPECT_EQ(Narrow(box.Child(L"idxMessage").Text()), Narrow(TextOf("msgInvalidPassword")));
  EXPECT_FALSE(BoardInSight()) << "a message takes no text";
  PressKey(L"Enter");
  box.WaitUntilGone();
  const Window again = Form(L"FLogOn", L"txtPassword");
  EXPECT_EQ(again.Bounds().left, home.left);
  Fill(again, L"txtPassword", kPassword);
  EXPECT_EQ(Printed(), (Lines{"True, eva.meier", "end"}));
}

TEST_P(ScreenKeyboard, RenewsAPassword) {
  RunPanel("WScript.Echo CStr(Dialogs.KRUserLogOn()) & \", \" & CurrentUser()");
  const Window form = Form(L"FLogOn", L"txtName");
  Fill(form, L"txtName", kRenewing);
  Fill(form, L"txtPassword", kPassword);
  const Window box = NextBox();
  PressKey(L"Enter");
  box.WaitUntilGone();
  const Window change = Form(L"FChangePassword", L"txtActPassword");
  Fill(change, L"txtActPassword", kPassword);
  Fill(change, L"txtPassword", L"neu gut 8");
  Fill(change, L"txtPassword2", L"neu gut 8");
  Fill(Form(L"FLogOn", L"txtPassword"), L"txtPassword", L"neu gut 8");
  EXPECT_EQ(Printed(), (Lines{"True, neu", "end"}));
}

TEST_P(ScreenKeyboard, AddsAUser) {
  RunPanel("LogOn \"admin\"\r\nWScript.Echo CStr(Dialogs.KRAddUser())");
  const Window form = Form(L"FAddUser", L"txtName");
  Fill(form, L"txtName", L"uta");
  Fill(form, L"txtFullName", L"Uta Z\u00e4h");
  Fill(form, L"txtPassword", L"drei 333");
  Fill(form, L"txtPassword2", L"drei 333");
  form.WaitForFocusOn(L"cboUserClass");
  EXPECT_TRUE(Within(kPatience, [] { return !BoardInSight(); })) << "classes are not typed";
  PressKey(L"Down");
  PressKey(L"Tab");
  Fill(form, L"txtComment", L"nachts");
  EXPECT_EQ(Printed(), (Lines{"True", "end"}));
}

TEST_P(ScreenKeyboard, TypesAFileName) {
  RunPanel("WScript.Echo Dialogs.KRSaveFileAs(\"\", \"C:\\windows\", \"Text|*.txt\")");
  const Window form = WaitForForm(L"FFileSelect");
  Fill(form, L"txtFileName", L"bericht_7.txt");
  EXPECT_EQ(Printed(), (Lines{"C:\\windows\\bericht_7.txt", "end"}));
}

// A caption line that leaves the fields at the lower end of a form as high as the screen.
TEST_P(ScreenKeyboard, StandsAboveFieldsThatLieLow) {
  const int height = GetSystemMetrics(SM_CYSCREEN);
  const int twips_per_inch = 1440;
  const int dpi = static_cast<int>(GetParam().Dpi);
  const int caption = (height - Millimetres(500)) * twips_per_inch / dpi;
  RunPanel("Dialogs.CaptionMinHeight = " + std::to_string(caption) +
           "\r\nWScript.Echo CStr(Dialogs.KRUserLogOn()) & \", \" & CurrentUser()");
  const Window form = Form(L"FLogOn", L"txtName");
  const RECT home = form.Bounds();
  ASSERT_LE(home.bottom - home.top, height);
  const RECT keyboard = Board(GetParam().Hand).TheWindow().Bounds();
  if (form.Child(L"txtName").Bounds().top - Millimetres(15) < keyboard.bottom - keyboard.top)
    GTEST_SKIP() << "the screen is too low for both";
  EXPECT_EQ(keyboard.top, 0);
  Fill(form, L"txtName", kOperator);
  const RECT now = form.Bounds();
  EXPECT_TRUE(EqualRect(&now, &home)) << "the form had no reason to move";
  Fill(form, L"txtPassword", kPassword);
  EXPECT_EQ(Printed(), (Lines{"True, eva.meier", "end"}));
}

TEST_P(ScreenKeyboard, GoesByItsKeyAndTheFormGoesBack) {
  RunPanel("WScript.Echo CStr(Dialogs.KRUserLogOn())");
  const Window form = Form(L"FLogOn", L"txtName");
  const Board board(GetParam().Hand);
  const int width = GetSystemMetrics(SM_CXSCREEN);
  const int height = GetSystemMetrics(SM_CYSCREEN);
  board.Press(std::string(GetParam().Language) == "de" ? L"Tastatur ausblenden"
                                                       : L"Hide the keyboard");
  board.WaitUntilHidden();
  const auto in_the_middle = [&] {
    const RECT now = form.Bounds();
    return std::abs(now.left + now.right - width) <= 2 &&
           std::abs(now.top + now.bottom - height) <= 2;
  };
  EXPECT_TRUE(Within(kPatience, in_the_middle));
  form.Child(L"txtPassword").Click();
  Fill(form, L"txtPassword", L"x");
  EXPECT_TRUE(BoardInSight());
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), (Lines{"False", "end"}));
}

TEST_P(ScreenKeyboard, ComesToAFingerAndNotToAMouse) {
  RunPanel("WScript.Echo CStr(Dialogs.KRUserLogOn())", "touch");
  const Window form = Form(L"FLogOn", L"txtName");
  form.WaitUntilAtRest();
  form.Child(L"txtPassword").Click();
  Type(form, L"txtPassword", L"x");
  EXPECT_FALSE(BoardInSight());
  TouchAt(form.Child(L"txtName").Centre());
  const Board board(GetParam().Hand);
  board.Type(L"eva");
  form.Child(L"txtName").WaitForText(L"eva");
  form.Child(L"keyCancel").Click();
  EXPECT_EQ(Printed(), (Lines{"False", "end"}));
  EXPECT_FALSE(BoardInSight());
}

// Backspace acts as soon as it is pressed, so the field tells that the press has arrived; and again
// by a timer, which comes when everything has been painted.
TEST_P(ScreenKeyboard, AKeyLooksPressedButNotBesideAPassword) {
  RunPanel("WScript.Echo CStr(Dialogs.KRUserLogOn())");
  const Window form = Form(L"FLogOn", L"txtName");
  const bool german = std::string(GetParam().Language) == "de";
  for (const wchar_t* const field : {L"txtName", L"txtPassword"}) {
    form.WaitForFocusOn(field);
    form.WaitUntilAtRest();
    const Board board(GetParam().Hand);
    board.Type(L"abcdef");
    const bool secret = std::wstring(field) == L"txtPassword";
    form.Child(field).WaitForText(secret ? L"******" : L"abcdef");
    const Window key = board.Key(german ? L"R\u00fccktaste" : L"Backspace");
    const auto before = test::ScreenPixels(key.Bounds());
    PressMouse(MouseButton::Left, key.Centre());
    EXPECT_TRUE(Within(kPatience, [&] { return form.Child(field).Text().size() < 5; }));
    if (secret) {
      EXPECT_EQ(before, test::ScreenPixels(key.Bounds()));
    } else {
      EXPECT_TRUE(Within(kPatience, [&] { return test::ScreenPixels(key.Bounds()) != before; }));
    }
    ReleaseMouse(MouseButton::Left, key.Centre());
    if (!secret) board.Press(Enter());
  }
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), (Lines{"False", "end"}));
}

INSTANTIATE_TEST_SUITE_P(Panels, ScreenKeyboard, ::testing::ValuesIn(Panels()), NameOfPanel);

}  // namespace
}  // namespace krx::drive
