#include "ports/win32/SendKeys.h"

#include <vector>

#include "ports/win32/KeyFilter.h"

namespace krx::win32 {

namespace {

constexpr ULONG_PTR kOperatorsKeys = 0;  // no mark: the operator pressed them himself

struct Modifier {
  int Shift;
  WORD Key;
};
constexpr Modifier kModifiers[] = {
    {ui::kShift, VK_SHIFT}, {ui::kControl, VK_CONTROL}, {ui::kAlt, VK_MENU}};

class Keyboard {
 public:
  explicit Keyboard(ULONG_PTR mark) : mark_(mark) {}

  // Modifiers that the operator still holds (Alt of an access key) would change what arrives.
  void ReleaseModifiers() {
    for (const Modifier& modifier : kModifiers) {
      if (GetAsyncKeyState(modifier.Key) < 0) Add(modifier.Key, 0, KEYEVENTF_KEYUP);
    }
  }

  void Press(const ui::Keystroke& stroke) {
    if (stroke.Code != 0) return Press(static_cast<WORD>(stroke.Code), stroke.Shift);
    const auto character = static_cast<wchar_t>(stroke.Character);
    const SHORT found = VkKeyScanW(character);
    const int needed = HIBYTE(found);
    const bool capital = (GetKeyState(VK_CAPITAL) & 1) != 0 && IsCharAlphaW(character);
    if (found == -1 || (needed & ~ui::kShift) != 0 || capital) {
      Type(stroke);
    } else {
      Press(LOBYTE(found), stroke.Shift | needed);
    }
  }

  // A character that no plain key of this keyboard gives.
  void Type(const ui::Keystroke& stroke) {
    Hold(stroke.Shift, 0);
    Add(0, stroke.Character, KEYEVENTF_UNICODE);
    Add(0, stroke.Character, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP);
    Hold(stroke.Shift, KEYEVENTF_KEYUP);
  }

  void Send() {
    const auto count = static_cast<UINT>(inputs_.size());
    if (count != 0 && SendInput(count, inputs_.data(), sizeof(INPUT)) != count)
      throw RuntimeError(70, u"Permission denied");
  }

 private:
  void Press(WORD key, int shift) {
    Hold(shift, 0);
    Add(key, 0, 0);
    Add(key, 0, KEYEVENTF_KEYUP);
    Hold(shift, KEYEVENTF_KEYUP);
  }

  void Hold(int shift, DWORD flags) {
    for (const Modifier& modifier : kModifiers) {
      if ((shift & modifier.Shift) != 0) Add(modifier.Key, 0, flags);
    }
  }

  void Add(WORD key, char16_t character, DWORD flags) {
    const bool extended = key >= VK_PRIOR && key <= VK_DELETE;
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = key != 0 ? static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC))
                              : static_cast<WORD>(character);
    input.ki.dwFlags = flags | (extended ? KEYEVENTF_EXTENDEDKEY : 0u);
    input.ki.dwExtraInfo = mark_;
    inputs_.push_back(input);
  }

  const ULONG_PTR mark_;
  std::vector<INPUT> inputs_;
};

}  // namespace

void SendKeys(StringView notation) {
  Keyboard keyboard(kOwnKeys);
  keyboard.ReleaseModifiers();
  for (const ui::Keystroke& stroke : ui::ParseKeystrokes(notation))
    keyboard.Press(stroke);
  keyboard.Send();
}

void PressKey(const ui::Keystroke& stroke) {
  Keyboard keyboard(kOperatorsKeys);
  keyboard.ReleaseModifiers();
  if (stroke.Code != 0) {
    keyboard.Press(stroke);
  } else {
    keyboard.Type(stroke);
  }
  keyboard.Send();
}

}  // namespace krx::win32
