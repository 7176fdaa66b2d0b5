#pragma once

#include "base/Font.h"
#include "base/String.h"

namespace krx::host {

// The runtime's font-class object. A failing call raises Error.
class FontService {
 public:
  virtual ~FontService() = default;
  // Makes the font class the current one.
  virtual void SelectFontClass(StringView name) = 0;
  // Font of the current font class.
  virtual Font GetFont() = 0;
};

}  // namespace krx::host
