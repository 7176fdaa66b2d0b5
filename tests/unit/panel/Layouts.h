#pragma once

#include <fstream>
#include <sstream>
#include <string>

namespace krx::test {

// A layout as the dialogs bring it along; empty when there is none of this name.
inline std::string LayoutText(const std::string& name) {
  std::ostringstream bytes;
  std::ifstream file(KRX_CHECKOUT "/src/panel/layouts/" + name + ".txt", std::ios::binary);
  if (file) bytes << file.rdbuf();
  return bytes.str();
}

}  // namespace krx::test
