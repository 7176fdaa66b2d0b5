#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace krx::test {

// Puts another address in the place of every import of this name that a loaded module has.
void RedirectImport(HMODULE module, const char* name, void* target);

// What a loaded module imports by name.
struct ImportedName {
  std::string Library;
  std::string Name;
};
std::vector<ImportedName> ImportsOf(HMODULE module);

}  // namespace krx::test
