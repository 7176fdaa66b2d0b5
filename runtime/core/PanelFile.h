#pragma once

#include <string_view>

#include "base/PanelSettings.h"

namespace krx::runtime {

// The settings that a plant has written down for its panels: lines "name = value" with the names of
// the properties. What the file does not name stays as it is in `before`. A malformed file is
// refused as a whole; Error names file, line and reason.
krx::PanelSettings ReadPanelFile(const String& file, std::string_view bytes,
                                 const krx::PanelSettings& before);

}  // namespace krx::runtime
