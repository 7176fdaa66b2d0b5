#pragma once

#include <fstream>
#include <sstream>
#include <string>

namespace krx::test {

// What a file holds; empty when there is none.
inline std::string ReadFile(const std::string& path) {
  std::ostringstream bytes;
  std::ifstream file(path, std::ios::binary);
  if (file) bytes << file.rdbuf();
  return bytes.str();
}

// A layout as the dialogs bring it along; empty when there is none of this name.
inline std::string LayoutText(const std::string& name) {
  return ReadFile(KRX_CHECKOUT "/src/panel/layouts/" + name + ".txt");
}

}  // namespace krx::test
