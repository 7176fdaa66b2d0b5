#pragma once

#include <map>
#include <string>
#include <vector>

namespace krx::install {

// Everything in the registry and on the system's drive, by its path: a key or folder with an empty
// content, a value with its type and data, a file with its size and time.
using Picture = std::map<std::wstring, std::wstring>;

Picture TakePicture();

// The keys and values below a key of the registry, by their paths below it; nothing when it is not
// there.
Picture TakePictureOf(const std::wstring& key);

// What has come (+), gone (-) or changed (*), without what the platform does on its own.
std::vector<std::string> Changes(const Picture& before, const Picture& after);

}  // namespace krx::install
