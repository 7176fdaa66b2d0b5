#include <oleacc.h>

#include "ports/win32/SpokenForm.h"
#include "ports/win32/SpokenList.h"
#include "ui/BoardKey.h"
#include "ui/ComboBox.h"
#include "ui/EditBoxes.h"
#include "ui/KRXKey.h"

namespace krx::win32 {

namespace {

constexpr const char16_t* kPress = u"Press";

// Texts and pictures: what is only read.
class SpokenText final : public SpokenControl {
 public:
  SpokenText(HWND window, ui::Control& control)
      : SpokenControl(window, control), kind_(control.Kind()) {}

  long Role(int) const override { return RoleOf(kind_); }
  long State(int part) const override { return SpokenControl::State(part) | StateOf(kind_); }
  bool TakesFocus() const override { return false; }

 private:
  const ui::Kind kind_;
};

class SpokenKey final : public SpokenControl {
 public:
  using SpokenControl::SpokenControl;

  long Role(int) const override { return ROLE_SYSTEM_PUSHBUTTON; }
  long State(int part) const override {
    const bool pressed = (SendMessageW(Window(), BM_GETSTATE, 0, 0) & BST_PUSHED) != 0;
    return SpokenControl::State(part) | (HasFocus() ? STATE_SYSTEM_DEFAULT : 0) |
           (pressed ? STATE_SYSTEM_PRESSED : 0);
  }
  String Action(int) const override { return kPress; }
  // Posted: what the button does may take as long as a dialog.
  bool Act(int) override {
    return IsWindowEnabled(Window()) && PostMessageW(Window(), BM_CLICK, 0, 0);
  }
};

// Pressing it by an assistive program types, as pressing it does.
class SpokenBoardKey final : public SpokenControl {
 public:
  SpokenBoardKey(HWND window, ui::BoardKey& key) : SpokenControl(window, key), key_(key) {}

  long Role(int) const override { return ROLE_SYSTEM_PUSHBUTTON; }
  long State(int part) const override {
    return SpokenControl::State(part) | (key_.Latched() ? STATE_SYSTEM_PRESSED : 0);
  }
  bool TakesFocus() const override { return false; }
  String Action(int) const override { return kPress; }
  bool Act(int) override {
    return PostMessageW(Window(), WM_LBUTTONDOWN, MK_LBUTTON, 0) &&
           PostMessageW(Window(), WM_LBUTTONUP, 0, 0);
  }

 private:
  ui::BoardKey& key_;
};

class SpokenEdit final : public SpokenControl {
 public:
  SpokenEdit(HWND window, ui::EditBox& box) : SpokenControl(window, box), box_(box) {}

  long Role(int) const override { return ROLE_SYSTEM_TEXT; }
  long State(int part) const override {
    return SpokenControl::State(part) | (box_.Locked() ? STATE_SYSTEM_READONLY : 0) |
           (IsSecret() ? STATE_SYSTEM_PROTECTED : 0);
  }
  std::optional<String> Value(int) const override { return box_.DisplayedText(); }
  bool IsSecret() const override { return box_.Kind() == ui::Kind::PasswordBox; }
  bool SetValue(const wchar_t* text) override {
    if (box_.Locked() || !IsWindowEnabled(Window())) return false;
    return SendMessageW(Window(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)) != 0;
  }

 private:
  ui::EditBox& box_;
};

class SpokenCombo final : public SpokenControl {
 public:
  SpokenCombo(HWND window, ui::ComboBox& box) : SpokenControl(window, box), box_(box) {}

  long Role(int) const override { return ROLE_SYSTEM_COMBOBOX; }
  long State(int part) const override {
    return SpokenControl::State(part) | STATE_SYSTEM_HASPOPUP |
           (box_.DroppedDown ? STATE_SYSTEM_EXPANDED : STATE_SYSTEM_COLLAPSED);
  }
  std::optional<String> Value(int) const override { return box_.Text(); }
  String Action(int) const override { return box_.DroppedDown ? u"Close" : u"Open"; }
  bool Act(int) override {
    return IsWindowEnabled(Window()) &&
           PostMessageW(Window(), CB_SHOWDROPDOWN, !box_.DroppedDown, 0);
  }

 private:
  ui::ComboBox& box_;
};

}  // namespace

long RoleOf(ui::Kind kind) {
  switch (kind) {
    case ui::Kind::Frame:
      return ROLE_SYSTEM_GROUPING;
    case ui::Kind::PictureBox:
      return ROLE_SYSTEM_GRAPHIC;
    default:
      return ROLE_SYSTEM_STATICTEXT;
  }
}

long StateOf(ui::Kind kind) {
  return kind == ui::Kind::Frame ? 0 : STATE_SYSTEM_READONLY;
}

std::unique_ptr<Spoken> Speak(const FormPeer& form) {
  return std::make_unique<SpokenForm>(form);
}

std::unique_ptr<Spoken> Speak(HWND window, ui::Control& control) {
  switch (control.Kind()) {
    case ui::Kind::Key:
      return std::make_unique<SpokenKey>(window, control);
    case ui::Kind::BoardKey:
      return std::make_unique<SpokenBoardKey>(window, static_cast<ui::BoardKey&>(control));
    case ui::Kind::TextBox:
    case ui::Kind::PasswordBox:
      return std::make_unique<SpokenEdit>(window, static_cast<ui::EditBox&>(control));
    case ui::Kind::ComboBox:
      return std::make_unique<SpokenCombo>(window, static_cast<ui::ComboBox&>(control));
    case ui::Kind::RowList:
      return std::make_unique<SpokenList>(window, static_cast<ui::RowList&>(control));
    default:
      return std::make_unique<SpokenText>(window, control);
  }
}

}  // namespace krx::win32
