// Opens and closes many boxes in one process and counts what stays behind.

#include <gtest/gtest.h>
#include <windows.h>

#include "client/Dialogs.h"
#include "soak/Forms.h"
#include "soak/Growth.h"

namespace krx::soak {
namespace {

constexpr int kBoxesToWarmUp = 50;
constexpr int kBoxes = 1000;

void CALLBACK ClickFirstKey(HWND, UINT, UINT_PTR, DWORD) {
  if (const HWND key = ControlOnShow(L"keyButton(0)")) Click(key);
}

// Opens boxes that a timer of this thread answers; false as soon as one has another result.
bool OpenBoxes(client::Dialogs& dialogs, int count) {
  const Answering answering(ClickFirstKey, 10);
  bool all_right = true;
  for (int i = 0; i < count && all_right; ++i) {
    long result = 0;
    const HRESULT status = dialogs.MsgBox(L"A text\nin two lines", 3 + 32, L"Title", result);
    all_right = status == S_OK && result == 6;
  }
  return all_right;
}

TEST(Soak, AThousandBoxesLeaveNothingBehind) {
  const client::Automation automation;
  client::Dialogs dialogs;
  ASSERT_TRUE(dialogs);
  bool all_right = true;
  const Growth growth = GrowthOver("a box", kBoxesToWarmUp, kBoxes, [&](int count) {
    all_right = OpenBoxes(dialogs, count) && all_right;
  });
  EXPECT_TRUE(all_right);
  EXPECT_EQ(growth.Leak(), "");
}

}  // namespace
}  // namespace krx::soak
