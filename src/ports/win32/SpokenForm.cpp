#include "ports/win32/SpokenForm.h"

#include <oleacc.h>

#include <algorithm>

#include "ports/win32/DrawnPeer.h"
#include "ui/Spoken.h"

namespace krx::win32 {

// Numbers are looked at before: they are those of parts.
const DrawnPeer& SpokenForm::Part(int number) const {
  return *form_.Insides().at(static_cast<std::size_t>(number) - 1).Part;
}

HWND SpokenForm::WindowOf(int part) const {
  const auto insides = form_.Insides();
  const auto index = static_cast<std::size_t>(part) - 1;
  return index < insides.size() ? insides[index].Window : nullptr;
}

long SpokenForm::Role(int part) const {
  return part == kSelf ? ROLE_SYSTEM_DIALOG : RoleOf(Part(part).TheControl().Kind());
}

long SpokenForm::State(int part) const {
  if (part == kSelf) return Spoken::State(part);
  const ui::Control& control = Part(part).TheControl();
  const bool visible = control.Visible() && IsWindowVisible(Window());
  return StateOf(control.Kind()) | (visible ? 0 : STATE_SYSTEM_INVISIBLE) |
         (control.Enabled() ? 0 : STATE_SYSTEM_UNAVAILABLE);
}

String SpokenForm::Name(int part) const {
  return part == kSelf ? form_.Form().Caption() : ui::SpokenName(Part(part).TheControl());
}

String SpokenForm::Description(int part) const {
  return part == kSelf ? form_.Form().Announcement() : String();
}

String SpokenForm::Shortcut(int part) const {
  return part == kSelf ? String() : ShortcutOf(Part(part).TheControl());
}

RECT SpokenForm::Place(int part) const {
  if (part == kSelf) return Spoken::Place(part);
  const DpiScope scope;
  RECT place = Part(part).Place();
  MapWindowPoints(Window(), nullptr, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

// Nothing where it is not to be seen.
RECT SpokenForm::Seen(const FormPeer::Inside& inside) const {
  RECT place{};
  if (inside.Window) {
    if (IsWindowVisible(inside.Window)) GetWindowRect(inside.Window, &place);
  } else if (inside.Part->TheControl().Visible()) {
    place = inside.Part->Place();
    MapWindowPoints(Window(), nullptr, reinterpret_cast<POINT*>(&place), 2);
  }
  return place;
}

// Windows lie above what the form paints.
int SpokenForm::PartAt(POINT point) const {
  const DpiScope scope;
  const auto insides = form_.Insides();
  for (const bool windows : {true, false}) {
    for (std::size_t i = 0; i < insides.size(); ++i) {
      const RECT place = Seen(insides[i]);
      if ((insides[i].Window != nullptr) == windows && PtInRect(&place, point))
        return static_cast<int>(i) + 1;
    }
  }
  return kSelf;
}

std::optional<int> SpokenForm::FocusedPart() const {
  const HWND focus = GetFocus();
  const auto insides = form_.Insides();
  const auto found = std::find_if(insides.begin(), insides.end(), [&](const auto& inside) {
    return inside.Window && (inside.Window == focus || IsChild(inside.Window, focus));
  });
  if (found != insides.end()) return static_cast<int>(found - insides.begin()) + 1;
  return Spoken::FocusedPart();
}

}  // namespace krx::win32
