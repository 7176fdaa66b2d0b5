#include <algorithm>

#include "ports/win32/Accessible.h"
#include "ports/win32/ControlPeer.h"
#include "ports/win32/DrawnPeer.h"
#include "ports/win32/FormPeer.h"
#include "ui/KRXKey.h"
#include "ui/Keyboard.h"

namespace krx::win32 {

RECT FormPeer::PlaceOf(const ui::Control& control) const {
  const int left = scale_.Pixels(control.Left());
  const int top = scale_.Pixels(control.Top());
  const RECT place{left, top, left + scale_.Pixels(control.Width()),
                   top + scale_.Pixels(control.Height())};
  return Mirrored() ? Opposite(place) : place;
}

RECT FormPeer::Opposite(const RECT& place) const {
  const int width = scale_.Pixels(form_.Width());
  return {width - place.right, place.top, width - place.left, place.bottom};
}

// Mirrored places count from the form's other edge.
void FormPeer::PlaceChildrenAnew() {
  for (ControlPeer* const child : children_)
    child->Update(ui::Aspect::Bounds);
  for (DrawnPeer* const part : parts_)
    part->Update(ui::Aspect::Bounds);
}

void FormPeer::FollowCapsLock() {
  const ControlPeer* const field = Child(GetFocus());
  const bool on = (GetKeyState(VK_CAPITAL) & 1) != 0;
  const String words = field ? ui::CapsLockHint(field->TheControl(), on) : String();
  if (words.empty()) {
    if (caps_lock_) caps_lock_->Hide();
    return;
  }
  if (!caps_lock_) caps_lock_ = std::make_unique<CapsLockHint>(toolkit_, *this);
  caps_lock_->Show(words, *field);
}

ui::Color FormPeer::GroundOf(const ui::Control& control) const {
  const double x = control.Left() + control.Width() / 2;
  const double y = control.Top() + control.Height() / 2;
  for (const ui::Control* const below : form_.TabOrder()) {
    if (!below->LiesBelow() || !below->Visible()) continue;
    const Rect area = below->Bounds();
    if (x >= area.Left && x < area.Left + area.Width && y >= area.Top && y < area.Top + area.Height)
      return below->BackColor();
  }
  return form_.BackColor();
}

const ui::Control* FormPeer::DefaultKey() const {
  const ui::Control* const active = form_.ActiveControl();
  return active && active->Kind() == ui::Kind::Key ? active : form_.DefaultKey;
}

UINT FormPeer::CaptionFormat() const {
  const LRESULT state = SendMessageW(Window(), WM_QUERYUISTATE, 0, 0);
  return (state & UISF_HIDEACCEL) != 0 ? DT_HIDEPREFIX : 0u;
}

bool FormPeer::ShowsFocus() const {
  return (SendMessageW(Window(), WM_QUERYUISTATE, 0, 0) & UISF_HIDEFOCUS) == 0;
}

void FormPeer::Invalidate(const RECT& place, bool bare) const {
  if (Window()) InvalidateRect(Window(), &place, bare);
}

// Elder parts lie above younger ones, as windows do.
void FormPeer::PaintParts(HDC dc) const {
  for (const bool below : {true, false}) {
    for (auto part = parts_.rbegin(); part != parts_.rend(); ++part)
      if ((*part)->TheControl().LiesBelow() == below) (*part)->PaintOn(dc);
  }
}

FormPeer::Inside FormPeer::InsideOf(const ui::Control& control) const {
  if (const ControlPeer* const child = Child(control)) return {child->Window(), nullptr};
  const auto found = std::find_if(parts_.begin(), parts_.end(), [&](const DrawnPeer* part) {
    return &part->TheControl() == &control;
  });
  return {nullptr, found == parts_.end() ? nullptr : *found};
}

std::vector<FormPeer::Inside> FormPeer::Insides() const {
  std::vector<Inside> insides;
  for (const bool below : {false, true}) {
    for (const ui::Control* const control : form_.TabOrder()) {
      const Inside inside = InsideOf(*control);
      if (control->LiesBelow() == below && (inside.Window || inside.Part))
        insides.push_back(inside);
    }
  }
  return insides;
}

void FormPeer::TellOfPart(DWORD event, const DrawnPeer& part) const {
  const auto insides = Insides();
  const auto found = std::find_if(insides.begin(), insides.end(),
                                  [&](const Inside& inside) { return inside.Part == &part; });
  if (found != insides.end()) Tell(event, Window(), static_cast<int>(found - insides.begin()) + 1);
}

}  // namespace krx::win32
