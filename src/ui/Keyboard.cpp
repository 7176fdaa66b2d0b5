#include "ui/Keyboard.h"

#include <algorithm>

#include "ui/Control.h"
#include "ui/Form.h"
#include "ui/KRXIndex.h"
#include "ui/KRXKey.h"
#include "ui/Platform.h"

namespace krx::ui {

namespace {

// The next control after `from` (in either direction, around the ends) that `accepts`.
template <class Accepts>
Control* NextInTabOrder(const Form& form, const Control* from, int step, Accepts accepts) {
  const auto& order = form.TabOrder();
  const int count = static_cast<int>(order.size());
  const auto found = std::find(order.begin(), order.end(), from);
  int at = found != order.end() ? static_cast<int>(found - order.begin()) : (step > 0 ? -1 : 0);
  for (int i = 0; i < count; ++i) {
    at = (at + step + count) % count;
    if (accepts(*order[static_cast<std::size_t>(at)])) return order[static_cast<std::size_t>(at)];
  }
  return nullptr;
}

bool FocusNext(const Form& form, int step) {
  Control* const next = NextInTabOrder(form, form.ActiveControl(), step,
                                       [](const Control& c) { return c.CanFocus(); });
  if (next) next->SetFocus();
  return true;
}

KRXKey* AsKey(Control* control) {
  const bool is_key = control && control->Kind() == Kind::Key;
  return is_key ? static_cast<KRXKey*>(control) : nullptr;
}

bool WalkButtons(Form& form, int step) {
  if (!AsKey(form.ActiveControl())) return false;
  Control* const next = NextInTabOrder(form, form.ActiveControl(), step, [](const Control& c) {
    return c.Kind() == Kind::Key && c.CanFocus();
  });
  if (next) next->SetFocus();
  return true;
}

// A text too long for the screen is scrolled from the buttons as well, by the keys that they have
// no use for.
bool ScrollText(const Form& form, int key) {
  KRXIndex* const text = ScrollingText(form);
  if (!text) return false;
  const bool focused = form.ActiveControl() == text;
  if (form.ActiveControl() && !focused && !AsKey(form.ActiveControl())) return false;
  return text->ScrollByKey(key, focused);
}

bool Press(KRXKey* key) {
  if (!key || !key->Visible() || !key->Enabled()) return false;
  key->Press();
  return true;
}

bool Copy(Form& form, int key, int shift) {
  if (shift != kControl || (key != u'C' && key != kKeyInsert)) return false;
  const String text = form.CopiedText();
  if (text.empty()) return false;
  form.ThePlatform().CopyText(text);
  return true;
}

// Buttons in a row are walked through as they are seen.
int StepTo(const Form& form, int key) {
  const bool on = key == kKeyDown || key == (form.RightToLeft() ? kKeyLeft : kKeyRight);
  return on ? 1 : -1;
}

}  // namespace

bool DispatchKey(Form& form, int key, int shift) {
  if (Copy(form, key, shift)) return true;
  if ((shift & (kControl | kAlt)) != 0) return false;
  if (form.ActiveControl() && form.ActiveControl()->UsesKey(key)) return false;
  if (ScrollText(form, key)) return true;
  // Handlers answer by Enter, too, in the last field above all.
  if (key == kKeyEnter && !form.TakesAnswers()) return true;
  switch (key) {
    case kKeyTab:
      return FocusNext(form, (shift & kShift) != 0 ? -1 : 1);
    case kKeyEscape:
      return Press(form.CancelKey);
    case kKeyEnter:
      return Press(AsKey(form.ActiveControl()));
    case kKeyLeft:
    case kKeyUp:
    case kKeyRight:
    case kKeyDown:
      return WalkButtons(form, StepTo(form, key));
    default:
      return false;
  }
}

int KeyInDirection(const Control& focused, int key) {
  const bool turned = focused.Kind() == Kind::RowList && focused.Parent().RightToLeft();
  if (!turned || (key != kKeyLeft && key != kKeyRight)) return key;
  return key == kKeyLeft ? kKeyRight : kKeyLeft;
}

String CapsLockHint(const Control& focused, bool caps_lock) {
  const Form& form = focused.Parent();
  const bool hides = focused.Kind() == Kind::PasswordBox && focused.Enabled();
  return hides && caps_lock && form.CapsLockWords ? form.CapsLockWords() : String();
}

bool DispatchAccessKey(Form& form, char16_t character, bool alt) {
  Control* const active = form.ActiveControl();
  if (!alt && active && active->TakesText()) return false;
  const CaseFolding& fold = form.ThePlatform().Folding();
  const char16_t wanted = fold(character);
  const auto marked = [&](const Control& c) {
    return c.Visible() && c.Enabled() && fold(c.AccessKey()) == wanted;
  };
  Control* const found = NextInTabOrder(form, active, 1, marked);
  if (!found || wanted == 0) return false;
  if (KRXKey* const key = AsKey(found)) {
    key->SetFocus();
    // Where the mark is ambiguous the operator chooses by walking to the button.
    const bool only = NextInTabOrder(form, found, 1, marked) == found;
    if (only) key->Press();
    return true;
  }
  // A display field, which Tab passes over, is reached by its label all the same.
  Control* const field = NextInTabOrder(form, found, 1, [](const Control& c) {
    return c.CanFocus() || (c.TakesText() && c.Visible() && c.Enabled());
  });
  if (field) field->SetFocus();
  return field != nullptr;
}

}  // namespace krx::ui
