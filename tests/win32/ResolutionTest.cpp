#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "SelfProcess.h"
#include "driver/Resolution.h"
#include "platform/Differences.h"
#include "ports/win32/Win32Platform.h"

namespace krx::test {

namespace {

constexpr const wchar_t* kExpected = L"KRX_TEST_DPI";

TEST(Resolution, IsTheOneThatTheTestRunsAt) {
  const auto wanted = GivenNumber(kExpected);
  if (!wanted) GTEST_SKIP() << "not started by the test of all resolutions";
  win32::Win32Platform platform;
  EXPECT_EQ(platform.TwipsPerPixel(), 1440.0f / static_cast<float>(*wanted));
}

TEST(ResolutionOfTheScreen, IsTheDesktopsOrTheOneNotedOfTheScreen) {
  const drive::Resolution resolution(144, 120);
  const int expected = Expected(kScreensNoteTheirResolution, 120, 144);
  EXPECT_EQ(RunSelf(L"Resolution.*", kExpected, std::to_wstring(expected)), 0u)
      << ThisPlatform().Name() << " shows no longer what is known of "
      << kScreensNoteTheirResolution.Where << ": " << kScreensNoteTheirResolution.Reason;
}

class EveryResolution : public testing::TestWithParam<DWORD> {};

TEST_P(EveryResolution, ShowsFormsOfTheRightSizeThatCanBeWorkedWith) {
  const drive::Resolution resolution(GetParam());
  EXPECT_EQ(RunSelf(L"Resolution.*:Measuring.*:Windows.*:FMessageBox.*:LongMessage.*:ControlSizes.*"
                    L":Grids.Rows*:"
                    L"Grids.ADrag*:Lists.AClick*",
                    kExpected, std::to_wstring(GetParam())),
            0u);
}

INSTANTIATE_TEST_SUITE_P(Dpi, EveryResolution, testing::Values(96, 120, 144, 192));

}  // namespace

}  // namespace krx::test
