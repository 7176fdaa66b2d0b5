#pragma once

namespace krx::win32 {

// Whether the message that the thread handles now comes from a finger or a pen, be it a mouse
// message that the system made of a touch.
bool EnteredByFinger();

}  // namespace krx::win32
