#pragma once

#include <cstdint>
#include <optional>

#include "base/String.h"

namespace krx::service {

// What KRMsgBoxEx adds to a message box.
struct FreeButtons {
  String Button1;
  String Button2;
  String Button3;
  std::int32_t AutoActivation = 0;  // seconds; 0 and below: never
};

// A message box to be shown; only KRMsgBoxEx gives Extra.
struct MessageBoxRequest {
  String Text;
  std::int32_t Style = 0;
  String Title;
  String HelpFile;
  std::int32_t Context = 0;
  std::optional<FreeButtons> Extra;
  // Result of a box that is closed by its close key; otherwise the default button's.
  std::optional<std::int32_t> WhenClosed = std::nullopt;
};

}  // namespace krx::service
