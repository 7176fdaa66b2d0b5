#pragma once

#include "platform/Platform.h"

namespace krx::test {

// Everything that one platform is known to do differently, with its reason.

inline constexpr Difference kScreensNoteTheirResolution{
    "wine10-x64, wine10-x86", [](const Platform& platform) { return platform.Wine >= 10; },
    "each screen's resolution is noted once the display is up; the desktop's number, which older "
    "versions read in every process, no longer counts from then on"};

}  // namespace krx::test
