#include "ports/win32/DrawnPeer.h"

namespace krx::win32 {

DrawnPeer::DrawnPeer(Toolkit& toolkit, FormPeer& form, ui::Control& control)
    : form_(form),
      toolkit_(toolkit),
      control_(control),
      font_(toolkit.Texts.FontFor(control.Font(), form.Scale())),
      place_(form.PlaceOf(control)) {
  form_.Add(*this);
}

DrawnPeer::~DrawnPeer() {
  form_.Leave(*this);
}

void DrawnPeer::Update(ui::Aspect aspect) {
  if (!form_.Window()) return;
  const DpiScope scope;
  if (aspect == ui::Aspect::Bounds) Move();
  if (aspect == ui::Aspect::Font) TakeFont();
  // What it hid comes into sight; all that it shows itself it paints anew in one go.
  form_.Invalidate(place_, aspect == ui::Aspect::Visible && !control_.Visible());
  Tell(aspect);
}

void DrawnPeer::Tell(ui::Aspect aspect) const {
  switch (aspect) {
    case ui::Aspect::Text:
      return form_.TellOfPart(EVENT_OBJECT_NAMECHANGE, *this);
    case ui::Aspect::Enabled:
      return form_.TellOfPart(EVENT_OBJECT_STATECHANGE, *this);
    case ui::Aspect::Bounds:
      return form_.TellOfPart(EVENT_OBJECT_LOCATIONCHANGE, *this);
    case ui::Aspect::Visible:
      return form_.TellOfPart(control_.Visible() ? EVENT_OBJECT_SHOW : EVENT_OBJECT_HIDE, *this);
    default:
      return;
  }
}

void DrawnPeer::Rescale() {
  Move();
  TakeFont();
  form_.Invalidate(place_, false);
}

void DrawnPeer::Move() {
  const RECT wanted = form_.PlaceOf(control_);
  if (EqualRect(&wanted, &place_)) return;
  form_.Invalidate(place_, true);
  place_ = wanted;
}

void DrawnPeer::TakeFont() {
  font_ = toolkit_.Texts.FontFor(control_.Font(), form_.Scale());
}

void DrawnPeer::PaintOn(HDC dc) const {
  if (!control_.Visible() || !RectVisible(dc, &place_)) return;
  const int before = SaveDC(dc);
  const MirroredDrawing mirrored(dc, form_.Mirrored());
  const RECT place = form_.Mirrored() ? form_.Opposite(place_) : place_;
  IntersectClipRect(dc, place.left, place.top, place.right, place.bottom);
  SelectObject(dc, font_->Get());
  SetBkMode(dc, TRANSPARENT);
  Paint(dc, place);
  RestoreDC(dc, before);
}

}  // namespace krx::win32
