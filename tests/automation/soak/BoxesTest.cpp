// Opens and closes many boxes in one process and counts what stays behind.

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "client/Dialogs.h"
#include "soak/Forms.h"
#include "soak/Growth.h"

namespace krx::soak {
namespace {

constexpr int kWarmUp = 50;
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

void OpenControls(int count) {
  OpenWindows(count, {300, 200}, [](HWND form) {
    for (int k = 0; k < 3; ++k)
      CreateWindowExW(0, L"BUTTON", L"OK", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 100 * k, 0, 90, 30,
                      form, nullptr, nullptr, nullptr);
    CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | WS_VISIBLE, 0, 100, 30, 30, form, nullptr,
                    nullptr, nullptr);
  });
}

TEST(Soak, AThousandBoxesLeaveNothingBehind) {
  const client::Automation automation;
  client::Dialogs dialogs;
  ASSERT_TRUE(dialogs);
  bool all_right = true;
  const Counters boxes = Growth(
      kWarmUp, kBoxes, [&](int count) { all_right = OpenBoxes(dialogs, count) && all_right; });
  ASSERT_TRUE(all_right);
  const Counters control = Growth(kWarmUp, kBoxes, OpenControls);
  ExpectNothingLeft(std::to_string(kBoxes) + " boxes", boxes, control, kBoxes / 100);
}

// The counters see what they are to find: one object of each kind, kept on purpose.
TEST(Soak, TheCountersSeeOneObjectOfEachKind) {
  // The first window of a thread brings the input method's along.
  const HWND first =
      CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
  const Counters before = Counters::Now();
  const HWND window =
      CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
  const HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
  const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  void* block = HeapAlloc(GetProcessHeap(), 0, 100);
  const Counters growth = Counters::Now() - before;
  EXPECT_EQ(growth.Windows, 1);
#ifdef _WIN64
  EXPECT_GE(growth.GdiObjects, 1);
#endif
  EXPECT_GE(growth.KernelHandles, 1);
  EXPECT_GE(growth.HeapBlocks, 1);
  HeapFree(GetProcessHeap(), 0, block);
  CloseHandle(event);
  DeleteObject(brush);
  DestroyWindow(window);
  DestroyWindow(first);
}

}  // namespace
}  // namespace krx::soak
