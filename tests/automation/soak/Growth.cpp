#include "soak/Growth.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "soak/Forms.h"

namespace krx::soak {

Counters Growth(int warm_up, int cycles, const std::function<void(int)>& open) {
  open(warm_up);
  const Counters before = Counters::Now();
  open(cycles);
  return Counters::Now() - before;
}

void OpenWindows(int count, SIZE size, const std::function<void(HWND)>& fill) {
  for (int i = 0; i < count; ++i) {
    const HWND form = CreateWindowExW(0, L"STATIC", L"Control", WS_POPUP, 0, 0, size.cx, size.cy,
                                      nullptr, nullptr, nullptr, nullptr);
    fill(form);
    ShowWindow(form, SW_SHOW);
    UpdateWindow(form);
    HandlePending();
    DestroyWindow(form);
  }
}

void ExpectNothingLeft(const std::string& what, const Counters& growth, const Counters& control,
                       int tolerated) {
  testing::Test::RecordProperty("growth", ToString(growth));
  testing::Test::RecordProperty("control", ToString(control));
  std::printf("growth over %s: %s\n  control run: %s\n", what.c_str(), ToString(growth).c_str(),
              ToString(control).c_str());
  EXPECT_EQ(growth.Windows, 0);
  EXPECT_EQ(growth.GdiObjects, 0);
  EXPECT_LE(growth.KernelHandles - control.KernelHandles, tolerated);
  EXPECT_LE(growth.HeapBlocks - control.HeapBlocks, tolerated);
}

}  // namespace krx::soak
