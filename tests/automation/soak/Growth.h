#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "soak/Counters.h"

namespace krx::soak {

// What `open` leaves behind when it is called for so many cycles, after others to warm up.
Counters Growth(int warm_up, int cycles, const std::function<void(int)>& open);

// The same number of windows without the component: what grows there the platform loses itself.
// This comes second: what the platform frees some seconds after the start would count as a negative
// loss.
void OpenWindows(int count, SIZE size, const std::function<void(HWND)>& fill);

// Prints and records both, and expects no growth beyond that of the control run. The platform's own
// threads come and go with a few handles and blocks, of which so many are tolerated.
void ExpectNothingLeft(const std::string& what, const Counters& growth, const Counters& control,
                       int tolerated);

}  // namespace krx::soak
