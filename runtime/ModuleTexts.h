#pragma once

#include <optional>

#include "runtime/core/Languages.h"

namespace krx::runtime {

// The texts that the module carries as resources, and the files KorvelTexts.<language>.txt beside
// the module, which bring further languages or replace and add texts of the ones carried.
class ModuleTexts : public TextSource {
 public:
  std::vector<TextFile> Read(const String& language) override;
  String SystemLanguage() override;
};

// A text file beside the module; nothing when there is none. One that cannot be read is an Error.
std::optional<TextFile> FileBesideModule(const String& name);

// The languages of the process: every object of every thread reads and sets the same one.
Languages& ProcessLanguages();

}  // namespace krx::runtime
