// The keyboard in other languages, and its keys when they are held, in a real client.
#include <fstream>

#include "panel/Board.h"
#include "users/UsersTest.h"

namespace krx::drive {
namespace {

// A language of a plant whose layout is one of those that the dialogs bring along.
struct Layout {
  const char* Language;
  const char* Name;
  std::wstring Word;
};

void PrintTo(const Layout& layout, std::ostream* out) {
  *out << layout.Name;
}

class KeyboardLayouts : public UsersTest {
 protected:
  void RunLogOn(const std::string& language) {
    RunUserScript(
        "CreateObject(\"KorvelRuntime.PanelSettings\").Keyboard = \"always\"\r\n"
        "Runtime.Language = \"" +
        language + "\"\r\nWScript.Echo CStr(Dialogs.KRUserLogOn())\r\n");
  }
  void GiveUp() {
    PressKey(L"Esc");
    EXPECT_EQ(Printed(), (Lines{"False", "end"}));
  }
};

class LayoutsOfPlants : public KeyboardLayouts, public testing::WithParamInterface<Layout> {
 protected:
  LayoutsOfPlants()
      : file_(ProgramFolder() / (std::string("KorvelTexts.") + GetParam().Language + ".txt")) {
    std::ofstream(file_) << "-105 KeyboardLayout = " << GetParam().Name << "\n";
  }
  ~LayoutsOfPlants() override {
    std::error_code ignored;
    std::filesystem::remove(file_, ignored);
  }

 private:
  const std::filesystem::path file_;
};

TEST_P(LayoutsOfPlants, TypeTheirWords) {
  RunLogOn(GetParam().Language);
  const Window form = Form(L"FLogOn", L"txtName");
  Board().Type(GetParam().Word);
  form.Child(L"txtName").WaitForText(GetParam().Word);
  GiveUp();
}

INSTANTIATE_TEST_SUITE_P(Languages, LayoutsOfPlants,
                         testing::Values(Layout{"fr", "fr", L"fa\u00e7ade d'\u00e9t\u00e9 W"},
                                         Layout{"en-us", "us", L"a \"b\" #1 @Z"}),
                         [](const auto& layout) { return std::string(layout.param.Name); });

class HeldKeys : public KeyboardLayouts, public testing::WithParamInterface<Hand> {};

TEST_P(HeldKeys, OfferAccents) {
  RunLogOn("en");
  const Window form = Form(L"FLogOn", L"txtName");
  const Board board(GetParam());
  board.HoldFor(L"e", L"\u00e9");
  form.Child(L"txtName").WaitForText(L"\u00e9");
  EXPECT_FALSE(board.Find(L"\u00e8")) << "the others have gone";
  GiveUp();
}

TEST_P(HeldKeys, DeleteUntilTheyAreLetGo) {
  RunLogOn("en");
  const Window form = Form(L"FLogOn", L"txtName");
  const Board board(GetParam());
  board.Type(L"abcdefgh");
  form.Child(L"txtName").WaitForText(L"abcdefgh");
  board.HoldUntil(L"Backspace", [&] { return form.Child(L"txtName").Text().size() < 5; });
  board.Type(L"z");
  std::wstring text;
  EXPECT_TRUE(Within(kPatience, [&] {
    text = form.Child(L"txtName").Text();
    return text.ends_with(L'z');
  }));
  EXPECT_LE(text.size(), 5u);
  EXPECT_TRUE(std::wstring(L"abcd").starts_with(text.substr(0, text.size() - 1))) << Narrow(text);
  GiveUp();
}

INSTANTIATE_TEST_SUITE_P(Hands, HeldKeys, testing::Values(Hand::Mouse, Hand::Finger),
                         [](const auto& hand) {
                           return hand.param == Hand::Mouse ? "Mouse" : "Finger";
                         });

}  // namespace
}  // namespace krx::drive
