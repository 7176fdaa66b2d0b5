#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Look.h"
#include "client/Dialogs.h"

namespace krx::pictures {

// One state of one dialog, of which there is a picture in every look.
struct Scene {
  std::string Name;
  std::string Method;
  std::wstring Form;
  std::function<HRESULT(IKRXDialog&, const Look&)> Open;
  // What the operator does once the form has the keyboard.
  std::function<void(HWND form)> Act = [](HWND) {};
  // Whether all is there that the picture has to show.
  std::function<bool(HWND form)> Complete = [](HWND) { return true; };

  enum class Part { Form, FormAndList, Keyboard };
  Part Shown = Part::Form;
  bool Seconds = false;  // a button counts down; time stands still meanwhile
  // A mistake that is made before the picture is taken; nothing when empty.
  std::function<void(HWND form)> Spoil = {};

  bool IsIn(const Look& look) const {
    if (Spoil) return !look.German && look.Panel == (look.Theme % 2 != 0);
    return Shown != Part::Keyboard || look.Panel;
  }
};

// Every dialog method of the component has one at least: throws where one is missing.
std::vector<Scene> Scenes();
// Other scenes with mistakes in them, to see that they are noticed: each bears the name
// MISTAKE-SCENE.
std::vector<Scene> SpoiledScenes();

}  // namespace krx::pictures
