#include "Scenes.h"
#include "Seen.h"

#include <commctrl.h>  // builds on <windows.h>, which the ones above bring

#include <algorithm>
#include <stdexcept>

namespace krx::pictures {

namespace {

constexpr int kSlightly = 3;  // of 255: one more than is tolerated

// One control one pixel to the right.
void Move(HWND form) {
  const HWND field = ControlNamed(form, L"txtPassword");
  RECT place{};
  GetWindowRect(field, &place);
  MapWindowPoints(nullptr, form, reinterpret_cast<POINT*>(&place), 2);
  SetWindowPos(field, nullptr, place.left + 1, place.top, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// The upper border of a field in a slightly different colour.
void ColourBorder(HWND form) {
  const HWND field = ControlNamed(form, L"txtPassword");
  RECT place{};
  GetWindowRect(field, &place);
  const HDC canvas = GetWindowDC(field);
  for (int x = 0; x < place.right - place.left; ++x) {
    const COLORREF now = GetPixel(canvas, x, 0);
    const int red = GetRValue(now);
    SetPixel(canvas, x, 0,
             RGB(red < 128 ? red + kSlightly : red - kSlightly, GetGValue(now), GetBValue(now)));
  }
  ReleaseDC(field, canvas);
}

// The last row of a list without its texts.
void LoseLine(HWND form) {
  const HWND list = ControlNamed(form, L"lvwUser");
  RECT row{LVIR_BOUNDS, 0, 0, 0};
  const auto last = static_cast<WPARAM>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0) - 1);
  SendMessageW(list, LVM_GETITEMRECT, last, reinterpret_cast<LPARAM>(&row));
  const HDC canvas = GetDC(list);
  const HBRUSH ground = CreateSolidBrush(GetPixel(canvas, row.left + 1, row.bottom - 2));
  FillRect(canvas, &row, ground);
  DeleteObject(ground);
  ReleaseDC(list, canvas);
}

Scene Spoiled(const std::string& mistake, const std::string& of, void (*spoil)(HWND form)) {
  for (Scene& scene : Scenes()) {
    if (scene.Name != of) continue;
    scene.Name = mistake + '-' + of;
    scene.Spoil = spoil;
    return scene;
  }
  throw std::runtime_error("there is no scene " + of);
}

}  // namespace

std::vector<Scene> SpoiledScenes() {
  return {Spoiled("moved", "log-on", Move), Spoiled("coloured", "log-on", ColourBorder),
          Spoiled("lost", "users", LoseLine)};
}

}  // namespace krx::pictures
