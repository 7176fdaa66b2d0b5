#pragma once

#include <cstdint>

#include "base/String.h"

namespace krx::service {

// A directory to be selected.
struct DirectoryRequest {
  String StartDirectory;
  bool AllowChangeUp = true;  // false confines the operator to the start directory
  String Title;
};

// Whether a file dialog opens or saves; the values are those that its form's SetTexts takes.
enum FileDialogKind : std::int32_t { kFileOpen = 0, kFileSave = 1 };

// A file to be selected.
struct FileRequest {
  String FileName;
  String StartDirectory;
  String Filter;  // description|pattern pairs
  bool AllowChangeUp = true;
  String Title;
};

}  // namespace krx::service
