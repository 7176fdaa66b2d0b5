#pragma once

#include <windows.h>

#include <cstdio>
#include <string>

namespace krx::client {

// One fact for the test that started the program, in UTF-8, at once.
inline void Say(const std::string& line) {
  std::puts(line.c_str());
  std::fflush(stdout);
}

// A status as the system's documents write it.
inline std::string Hex(HRESULT status) {
  char text[16];
  std::snprintf(text, sizeof text, "%08lX", static_cast<unsigned long>(status));
  return text;
}

}  // namespace krx::client
