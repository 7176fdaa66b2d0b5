// Opens and cancels every dialog many times in one process and counts what stays behind.

#include <gtest/gtest.h>
#include <windows.h>

#include <optional>
#include <string>

#include "client/Methods.h"
#include "platform/Wish.h"
#include "soak/Administrator.h"
#include "soak/Forms.h"
#include "soak/Growth.h"

namespace krx::soak {
namespace {

constexpr int kCyclesToWarmUp = 30;
constexpr int kCycles = 200;

int Cycles() {
  return static_cast<int>(test::Wish("KRX_SOAK_CYCLES", kCycles));
}

bool shown = false;  // the dialog of the call that is running

// Gives a form of this thread up as long as it is there; touch dialogs know no other way than their
// key.
void CALLBACK Cancel(HWND, UINT, UINT_PTR, DWORD) {
  const HWND form = FormOnShow();
  if (!form) return;
  shown = true;
  const HWND key = ControlOnShow(L"keyCancel");
  if (key) {
    Click(key);
  } else {
    PressEscape(form);
  }
}

// Some dialogs open for an administrator only. The runtime keeps to the store that it has used
// first, so there is one for all.
class DialogSoak : public testing::TestWithParam<client::Method> {
 protected:
  static void SetUpTestSuite() { administrator_.emplace(); }
  static void TearDownTestSuite() { administrator_.reset(); }

 private:
  static std::optional<Administrator> administrator_;
};

std::optional<Administrator> DialogSoak::administrator_;

TEST_P(DialogSoak, LeavesNothingBehind) {
  const client::Automation automation;
  client::Dialogs dialogs;
  ASSERT_TRUE(dialogs);
  const client::Selection selection{client::BasicString(L"C:\\windows"), VARIANT_TRUE};
  std::wstring chosen;
  int failed = 0;
  int unseen = 0;
  const Answering answering(Cancel, 10);
  const Growth growth = GrowthOver(GetParam().Name, kCyclesToWarmUp, Cycles(), [&](int count) {
    for (int i = 0; i < count; ++i) {
      shown = false;
      if (GetParam().Open(*dialogs.operator->(), selection, chosen) != S_OK) ++failed;
      if (!shown) ++unseen;
    }
  });
  EXPECT_EQ(failed, 0);
  EXPECT_EQ(unseen, 0);
  EXPECT_EQ(growth.Leak(), "");
}

INSTANTIATE_TEST_SUITE_P(All, DialogSoak, testing::ValuesIn(client::Methods()),
                         [](const auto& test) { return test.param.Name; });

}  // namespace
}  // namespace krx::soak
