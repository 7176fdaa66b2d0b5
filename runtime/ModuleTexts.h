#pragma once

#include "runtime/core/Languages.h"

namespace krx::runtime {

// The texts that the module carries as resources, and the files KorvelTexts.<language>.txt beside
// the module, which bring further languages or replace and add texts of the ones carried.
class ModuleTexts : public TextSource {
 public:
  std::vector<TextFile> Read(const String& language) override;
  String SystemLanguage() override;
};

// The languages of the process: every object of every thread reads and sets the same one.
Languages& ProcessLanguages();

}  // namespace krx::runtime
