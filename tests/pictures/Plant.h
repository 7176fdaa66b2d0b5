#pragma once

namespace krx::pictures {

inline constexpr const wchar_t* kPlant = L"C:\\plant";
inline constexpr const wchar_t* kLine = L"C:\\plant\\Line 1";
inline constexpr const wchar_t* kRecipes = L"C:\\plant\\Line 1\\Recipes";
// What is in the line, and the recipes among what is in it and in their folder.
inline constexpr int kFolders = 5;
inline constexpr int kLineFiles = 2;
inline constexpr int kRecipeFiles = 4;

// What the selection dialogs show, the same on each machine; gone with the object.
class PlantFolder {
 public:
  PlantFolder();
  ~PlantFolder();
  PlantFolder(const PlantFolder&) = delete;
  PlantFolder& operator=(const PlantFolder&) = delete;
};

// The users besides the administrator, who has to be logged on, in several states. Throws when one
// is refused.
void CreateUsers();
inline constexpr int kUsers = 5;

}  // namespace krx::pictures
