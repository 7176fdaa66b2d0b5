#include <gtest/gtest.h>
#include <windows.h>

int main(int count, char** arguments) {
  // Positions are counted in real pixels, whatever the resolution of the clients.
  SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
  ::testing::InitGoogleTest(&count, arguments);
  return RUN_ALL_TESTS();
}
