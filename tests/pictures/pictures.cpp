// Takes a picture of every dialog in every look that the screen's resolution has, for
// tools/pictures. usage: pictures SUMS FOLDER QUARTER [SCENE...] SUMS has lines "SUM NAME" of the
// approved pictures; others are written into FOLDER, and its file taken.txt says of each picture
// "NAME same", "NAME other" or, where it was not asked for, "NAME left". QUARTER is "all" or a
// number; each scene is in another quarter than the one before. Scenes with
// mistakes are always taken.

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "Camera.h"
#include "Look.h"
#include "Plant.h"
#include "Scenes.h"
#include "client/Dialogs.h"
#include "driver/Input.h"
#include "soak/Administrator.h"

namespace {

using namespace krx;
using namespace krx::pictures;

struct Wish {
  std::filesystem::path Folder;
  bool Every = false;
  int Quarter = 0;
  std::vector<std::string> Scenes;

  bool Asks(const std::string& scene) const {
    return Scenes.empty() || std::find(Scenes.begin(), Scenes.end(), scene) != Scenes.end();
  }
};

Approved Read(const std::filesystem::path& file) {
  std::ifstream stream(file);
  if (!stream) throw std::runtime_error("there are no sums of approved pictures");
  Approved approved;
  for (std::string sum, name; stream >> sum >> name;)
    approved[name] = sum;
  return approved;
}

// Under the pointer a control looks different.
void PutPointerAway() {
  drive::MoveMouse({GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1});
}

void TakeAll(Camera& camera, const Wish& wish) {
  client::Dialogs dialogs;
  if (!dialogs) throw std::runtime_error("the component is not registered");
  const Looking looking(dialogs);
  std::vector<Scene> scenes = Scenes();
  std::ranges::copy(SpoiledScenes(), std::back_inserter(scenes));
  const int dpi = static_cast<int>(GetDpiForSystem());
  std::ofstream taken(wish.Folder / "taken.txt");
  for (const Look& look : Looks()) {
    looking.Take(look);
    for (std::size_t i = 0; i < scenes.size(); ++i) {
      const Scene& scene = scenes[i];
      if (!scene.IsIn(look)) continue;
      const std::string name = scene.Name + '/' + NameOf(look, dpi);
      const bool asked =
          scene.Spoil || (wish.Asks(scene.Name) &&
                          (wish.Every || InQuarter(look, dpi, wish.Quarter + static_cast<int>(i))));
      looking.Show(scene.Shown == Scene::Part::Keyboard, scene.Seconds);
      const char* const outcome = !asked                                                  ? "left"
                                  : camera.Take(name, scene, look, *dialogs.operator->()) ? "same"
                                                                                          : "other";
      taken << name << ' ' << outcome << std::endl;
      if (asked) std::printf("%s %s\n", name.c_str(), outcome);
      std::fflush(stdout);
    }
  }
}

void Run(const std::vector<std::string>& arguments) {
  if (arguments.size() < 3)
    throw std::runtime_error("usage: pictures SUMS FOLDER QUARTER [SCENE...]");
  Wish wish{arguments[1], arguments[2] == "all", 0, {arguments.begin() + 3, arguments.end()}};
  if (!wish.Every) wish.Quarter = std::stoi(arguments[2]);
  const soak::Administrator administrator;
  CreateUsers();
  const PlantFolder plant;
  PutPointerAway();
  Camera camera(Read(arguments[0]), wish.Folder);
  TakeAll(camera, wish);
}

}  // namespace

int main(int count, char** arguments) {
  SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
  try {
    Run({arguments + 1, arguments + count});
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
