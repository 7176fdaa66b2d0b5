#pragma once

#include <windows.h>

#include <cstdint>

#include "base/Error.h"

namespace krx::win32 {

// Why a folder cannot be read, as the runtime numbers it.
enum class Refusal : std::int32_t {
  None = 0,
  DeviceUnavailable = 68,
  PermissionDenied = 70,
  PathNotFound = 76
};

// What a code of the system means for a folder.
Refusal RefusalOf(DWORD failure);

// Whether the drive or share of a system path has a medium that can be read.
bool DeviceReady(const String& path);

// Why the folder of a system path cannot be read, from the code with which the system refused it:
// it says "not found" of a drive that is missing, too. Both ask the medium.
Refusal RefusalOf(const String& path, DWORD failure);

// The runtime error of that number.
Error Refused(Refusal refusal);

}  // namespace krx::win32
