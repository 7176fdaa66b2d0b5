#include "ports/win32/CapsLockHint.h"

#include <oleacc.h>

#include <array>

#include "ports/win32/ControlPeer.h"
#include "ports/win32/Spoken.h"

namespace krx::win32 {

namespace {

constexpr Twips kGap = 60;      // between the hint and the form
constexpr Twips kPadding = 60;  // around the words

// Said at once, as what came up beside the operator's field.
class SpokenHint final : public Spoken {
 public:
  explicit SpokenHint(const CapsLockHint& hint) : Spoken(hint.Window()), hint_(hint) {}

  long Role(int) const override { return ROLE_SYSTEM_ALERT; }
  long State(int part) const override { return Spoken::State(part) | STATE_SYSTEM_READONLY; }
  String Name(int) const override { return hint_.Words(); }

 private:
  const CapsLockHint& hint_;
};

bool Contains(const RECT& area, const RECT& inner) {
  return inner.left >= area.left && inner.right <= area.right && inner.top >= area.top &&
         inner.bottom <= area.bottom;
}

RECT At(LONG left, LONG top, SIZE size) {
  return {left, top, left + size.cx, top + size.cy};
}

}  // namespace

CapsLockHint::CapsLockHint(Toolkit& toolkit, FormPeer& form) : toolkit_(toolkit), form_(form) {
  const DWORD mirrored = form.Mirrored() ? WS_EX_LAYOUTRTL : 0;
  Create(toolkit.Controls,
         {kPaneClass, WS_POPUP, WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW | mirrored, L"", RECT{},
          form.Window()},
         u"CapsLockHint");
}

void CapsLockHint::Show(const String& words, const ControlPeer& field) {
  if (!Window()) return;
  if (words.empty()) return Hide();
  const Scale scale = form_.Scale();
  font_ = toolkit_.Texts.FontFor(field.TheControl().Font(), scale);
  const bool news = words_ != words || !IsWindowVisible(Window());
  words_ = words;
  const int around = 2 * scale.Pixels(kPadding);
  const SIZE text = toolkit_.Texts.Measure(font_, words_);
  RECT row{};
  GetWindowRect(field.Window(), &row);
  const RECT place = PlaceBeside(row, {text.cx + around, text.cy + around});
  SetWindowTextW(Window(), Wide(words_));
  SetWindowPos(Window(), HWND_TOP, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOACTIVATE | SWP_SHOWWINDOW);
  if (!news) return;
  Tell(EVENT_OBJECT_SHOW, Window());
  Tell(EVENT_SYSTEM_ALERT, Window());
}

void CapsLockHint::Hide() {
  if (!Window() || !IsWindowVisible(Window())) return;
  ShowWindow(Window(), SW_HIDE);
  Tell(EVENT_OBJECT_HIDE, Window());
}

// Beside the form, on the side where its lines end; below or above it where the screen has no room
// there, and at last on its caption line, in which there is nothing to be pressed but the cross.
RECT CapsLockHint::PlaceBeside(const RECT& field, SIZE size) const {
  const RECT area = Screen::Of(form_.Window()).WorkArea;
  const int gap = form_.Scale().Pixels(kGap);
  RECT form{};
  GetWindowRect(form_.Window(), &form);
  const LONG middle = (field.top + field.bottom - size.cy) / 2;
  const LONG ends[] = {form.right + gap, form.left - gap - size.cx};
  const std::array places{At(ends[form_.Mirrored() ? 1 : 0], middle, size),
                          At(ends[form_.Mirrored() ? 0 : 1], middle, size),
                          At(field.left, form.bottom + gap, size),
                          At(field.left, form.top - gap - size.cy, size)};
  for (const RECT& place : places)
    if (Contains(area, place)) return place;
  return At(form.left, form.top, size);
}

LRESULT CapsLockHint::Handle(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case WM_NCHITTEST:
      return HTTRANSPARENT;
    case WM_MOUSEACTIVATE:
      return MA_NOACTIVATE;
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      Paint();
      return 0;
    default:
      return Default(message, w, l);
  }
}

void CapsLockHint::Paint() const {
  const PaintScope paint(Window());
  RECT area{};
  GetClientRect(Window(), &area);
  SetBkColor(paint.Dc(), GetSysColor(COLOR_INFOBK));
  SetTextColor(paint.Dc(), GetSysColor(COLOR_INFOTEXT));
  toolkit_.Texts.Draw(paint.Dc(), font_, words_, area, form_.Scale().Pixels(kPadding));
  FrameRect(paint.Dc(), &area, GetSysColorBrush(COLOR_INFOTEXT));
}

std::unique_ptr<Spoken> CapsLockHint::Speak() {
  return std::make_unique<SpokenHint>(*this);
}

void CapsLockHint::Fail(std::exception_ptr error) noexcept {
  form_.Fail(std::move(error));
}

}  // namespace krx::win32
