// Free Pascal's clients, compiled with the unit that its importer makes of the type library.

#include "support/DialogTest.h"

namespace krx::drive {
namespace {

class Pascal : public DialogTest {
 protected:
  // Every way of calling asks the same two questions; the answers are Yes and the second free
  // button.
  void AnswerBoth(const std::wstring& second_caption) {
    const Window pump = NextBox();
    EXPECT_EQ(pump.Child(L"idxCaption").Text(), L"Pump");
    EXPECT_EQ(pump.Child(L"idxMessage").Text(), L"Start the pump?");
    EXPECT_EQ(VisibleButtons(pump).size(), 2u);
    pump.Child(L"keyButton(0)").Click();
    const Window conveyor = NextBox();
    EXPECT_EQ(conveyor.Child(L"idxCaption").Text(), second_caption);
    EXPECT_EQ(Shown(conveyor.Child(L"keyButton(0)")), L"Left");
    EXPECT_EQ(Shown(conveyor.Child(L"keyButton(1)")), L"Right");
    conveyor.Child(L"keyButton(1)").Click();
  }
};

// By each way that sets properties and a host application first.
class PascalBinding : public Pascal, public ::testing::WithParamInterface<const char*> {};

TEST_P(PascalBinding, SetsPropertiesAsksAndGetsTheResults) {
  RunProgram(std::string("pascal_client.exe ") + GetParam());
  AnswerBoth(L"Plant control");
  EXPECT_EQ(Printed(), (Lines{"KRPanelText", "900", "6", "right"}));
}

INSTANTIATE_TEST_SUITE_P(All, PascalBinding, ::testing::Values("early", "dispinterface", "late"),
                         [](const auto& test) { return std::string(test.param); });

TEST_F(Pascal, NamesArgumentsInAnyOrder) {
  RunProgram("pascal_client.exe named");
  AnswerBoth(L"Conveyor");
  EXPECT_EQ(Printed(), (Lines{"6", "right"}));
}

TEST_F(Pascal, GetsTextsFromADialog) {
  RunProgram("pascal_client.exe select");
  HWND last = nullptr;
  for (int way = 0; way < 3; ++way) {
    const Window form = WaitForForm(L"FSelectDirectory", last);
    last = form.Handle();
    form.WaitUntilActive();
    form.WaitForFocusOn(L"dirSelect");
    EXPECT_EQ(form.Text(), L"Where?");
    form.Child(L"keyOK").Click();
  }
  EXPECT_EQ(Printed(), (Lines{"C:\\windows", "C:\\windows", "C:\\windows"}));
}

TEST_F(Pascal, CatchesFailuresAsExceptionsWithNumberSourceAndText) {
  RunProgram("pascal_client.exe failures");
  const std::string failure = ": 800A000D KRXDialogs: Type mismatch";
  EXPECT_EQ(Printed(), (Lines{"early" + failure, "dispinterface" + failure, "late" + failure,
                              "named" + failure}));
}

}  // namespace
}  // namespace krx::drive
