#pragma once

#include <cstdint>

#include "base/String.h"

namespace krx::host {

// The groups of texts in which the dialogs look their keys up.
inline constexpr std::int32_t kUserTexts = -103;
inline constexpr std::int32_t kDialogTexts = -105;  // message box, file and directory dialogs

// The runtime's language-text object. A failing call raises Error.
class TextService {
 public:
  virtual ~TextService() = default;
  // Text of a key in the runtime's current language; for an unknown key whatever the service gives.
  virtual String GetText(StringView key, std::int32_t group) = 0;
  // The text that a reference (a string whose first character is "@") stands for.
  virtual String ResolveText(StringView reference) = 0;
};

}  // namespace krx::host
