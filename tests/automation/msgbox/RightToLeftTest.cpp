#include <filesystem>

#include "support/DialogTest.h"

// Boxes in languages that are written from right to left, whose files lie beside the component.
namespace krx::drive {

namespace {

const std::filesystem::path kTexts = KRX_TEST_TEXTS;

// The text on the clipboard; empty without one.
std::wstring Copied() {
  std::wstring text;
  if (!OpenClipboard(nullptr)) return text;
  if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
    text = static_cast<const wchar_t*>(GlobalLock(data));
    GlobalUnlock(data);
  }
  CloseClipboard();
  return text;
}

class RightToLeft : public DialogTest, public testing::WithParamInterface<const char*> {
 protected:
  RightToLeft() : file_(std::string("KorvelTexts.") + GetParam() + ".txt") {
    std::filesystem::copy_file(kTexts / file_, ProgramFolder() / file_,
                               std::filesystem::copy_options::overwrite_existing);
  }
  ~RightToLeft() override {
    std::error_code ignored;
    std::filesystem::remove(ProgramFolder() / file_, ignored);
  }
  Window Box(const std::string& statement) {
    RunScript("Runtime.Language = \"" + std::string(GetParam()) + "\"\r\n" + statement);
    return NextBox();
  }

 private:
  const std::string file_;
};

TEST_P(RightToLeft, ABoxBeginsAtTheRight) {
  const Window box = Box(Ask(3 + 48));
  EXPECT_EQ(VisibleButtons(box),
            (std::vector<std::wstring>{L"keyButton(2)", L"keyButton(1)", L"keyButton(0)"}));
  const RECT form = box.Bounds();
  const LONG middle = (form.left + form.right) / 2;
  EXPECT_LT(box.Child(L"keyClose").Bounds().right, middle);
  EXPECT_GT(box.Child(L"picIcon").Bounds().left, box.Child(L"idxMessage").Bounds().right);
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), Lines{"6"});
}

TEST_P(RightToLeft, ArrowsGoWhereTheyPoint) {
  const Window box = Box(Ask(3));
  box.WaitForFocusOn(L"keyButton(0)");
  PressKey(L"Left");
  box.WaitForFocusOn(L"keyButton(1)");
  PressKey(L"Right");
  box.WaitForFocusOn(L"keyButton(0)");
  PressKey(L"Left");
  box.WaitForFocusOn(L"keyButton(1)");
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), Lines{"7"});
}

TEST_P(RightToLeft, AButtonIsClickedWhereItIsSeen) {
  const Window box = Box(Ask(4));
  box.Child(L"keyButton(1)").Click();
  EXPECT_EQ(Printed(), Lines{"7"});
}

INSTANTIATE_TEST_SUITE_P(Languages, RightToLeft, testing::Values("he", "ar"),
                         [](const auto& language) { return std::string(language.param); });

class BoxForHands : public DialogTest {};

TEST_F(BoxForHands, CopiesItselfAsThePlatformsBoxDoes) {
  RunScript("WScript.Echo Dialogs.KRMsgBox(\"One\" & vbCrLf & \"Two\", 4, \"Title\")\r\n");
  NextBox();
  PressKey(L"Ctrl+C");
  const std::wstring line(27, L'-');
  const std::wstring wanted = line + L"\r\nTitle\r\n" + line + L"\r\nOne\r\nTwo\r\n" + line +
                              L"\r\nYes   No   \r\n" + line + L"\r\n";
  EXPECT_TRUE(Within(kPatience, [&] { return Copied() == wanted; })) << Narrow(Copied());
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), Lines{"6"});
}

TEST_F(BoxForHands, ShowsItsSecondsWhereThePlantAsksForThem) {
  RunScript(
      "CreateObject(\"KorvelRuntime.PanelSettings\").ShowCountdown = True\r\n"
      "WScript.Echo Dialogs.KRMsgBoxEx(\"Text\", 4, \"Title\", \"\", 0, \"\", \"\", \"\", "
      "600)\r\n");
  const Window box = NextBox();
  const Window key = box.Child(L"keyButton(0)");
  EXPECT_TRUE(Shown(key).starts_with(L"Yes (")) << Narrow(Shown(key));
  const std::wstring first = key.Text();
  const RECT place = key.Bounds();
  EXPECT_TRUE(Within(kPatience, [&] { return key.Text() != first; })) << "the seconds run down";
  const RECT later = key.Bounds();
  EXPECT_TRUE(EqualRect(&place, &later));
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), Lines{"6"});
}

}  // namespace

}  // namespace krx::drive
