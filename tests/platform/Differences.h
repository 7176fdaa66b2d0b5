#pragma once

#include "platform/Platform.h"

namespace krx::test {

// Everything that one platform is known to do differently, with its reason.

inline constexpr Difference kScreensNoteTheirResolution{
    "wine10-x64, wine10-x86", [](const Platform& platform) { return platform.Wine >= 10; },
    "each screen's resolution is noted once the display is up; the desktop's number, which older "
    "versions read in every process, no longer counts from then on"};

inline constexpr Difference kHeapsGroupBlocks{
    "wine10-x64, wine10-x86", [](const Platform& platform) { return platform.Wine >= 10; },
    "once a heap has given out some 2,048 blocks of a size, it takes that size from groups of 31 "
    "blocks, which it keeps and shows as one block each"};

inline constexpr Difference kAutomationClient{
    "wine10-x64, wine10-x86", [](const Platform& platform) { return platform.Wine >= 10; },
    "programs can ask by UI Automation; older versions answer, but lack the asking side"};

inline constexpr Difference kClassesOfEverybodyAlone{
    "wine8-x64, wine10-x64, wine10-x86", [](const Platform& platform) { return platform.Wine > 0; },
    "what is registered for one user is in the registry, but no program finds it: the root of all "
    "classes "
    "shows those of the machine alone"};

inline constexpr Difference kPartsComeWithoutWhatTheyBelongTo{
    "wine8-x64, wine10-x64, wine10-x86", [](const Platform& platform) { return platform.Wine > 0; },
    "an installer that is told to install one part of a product leaves out the part that it "
    "belongs to"};

inline constexpr Difference kCertificatesAreNotShown{
    "wine8-x64", [](const Platform& platform) { return platform.Wine > 0 && platform.Wine < 10; },
    "the client of directory services has no option by which a program sees the server's "
    "certificate, and takes any"};

inline constexpr Difference kEventsAreNotKept{
    "wine8-x64, wine10-x64, wine10-x86", [](const Platform& platform) { return platform.Wine > 0; },
    "the event log takes every event and keeps none, so that there is nothing to read back"};

inline constexpr Difference kFreedCopiesStay{
    "wine10-x64, wine10-x86", [](const Platform& platform) { return platform.Wine >= 10; },
    "the system's key derivation leaves what it derives from in freed memory, which stays as it "
    "was"};

}  // namespace krx::test
