#pragma once

#include <windows.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace krx::pictures {

// A part of the screen as the operator sees it: red, green and blue of each pixel, line by line.
struct Picture {
  int Width = 0;
  int Height = 0;
  std::vector<std::uint8_t> Pixels;

  bool operator==(const Picture&) const = default;
};

Picture TakePicture(const RECT& place);

// A number that another picture does not have: SHA-256 of the line "WIDTH HEIGHT" and the pixels.
std::string SumOf(const Picture& picture);

// Writes the line "P6 WIDTH HEIGHT 255" and the pixels; throws when it cannot.
void Write(const Picture& picture, const std::filesystem::path& file);

}  // namespace krx::pictures
