#pragma once

#include "host/Runtime.h"
#include "ports/win32/Win32Platform.h"
#include "ports/win32/WindowPeer.h"
#include "ui/Controls.h"
#include "ui/Timer.h"

namespace krx::test {

// What the forms of these tests have in common: a cross that Esc presses, too, and something to do
// from their own loop.
class FormWithCross : public ui::Form {
 public:
  // Runs once, from the form's own loop, as soon as the form is shown.
  template <class Action>
  void Soon(Action action) {
    tmrOnce.Interval = 10;
    tmrOnce.Enabled = true;
    tmrOnce.Tick = [this, action] {
      tmrOnce.Enabled = false;
      action();
    };
  }

  ui::Timer tmrOnce{*this, u"tmrOnce"};

 protected:
  using Form::Form;

  void MakeCross(ui::KRXKey& key, const Rect& place) {
    key.Place(place);
    key.Picture = ui::CrossPicture{8};
    key.TabStop = false;
    CancelKey = &key;
  }
};

// A form with two buttons, an input box, a caption line and a close key; closing it by any of them
// leaves the name of the control in Answer.
class TestForm : public FormWithCross {
 public:
  explicit TestForm(ui::Platform& platform, const String& name = u"FTest")
      : FormWithCross(platform, name) {
    Width = 4500;
    Height = 2400;
    Caption = u"Test form";
    idxCaption.Place({0, 0, 4500, 300});
    idxCaption.Text = u"Caption \\n line";
    MakeCross(keyClose, {4230, 30, 240, 240});
    keyOne.Place({180, 600, 1215, 375});
    keyOne.Caption = u"&Fertig";
    keyTwo.Place({1575, 600, 1215, 375});
    keyTwo.Caption = u"&Zwei && drei";
    txtName.Place({180, 1200, 2700, 0});
    for (ui::KRXKey* key : {&keyOne, &keyTwo, &keyClose}) {
      key->Click = [this, key] {
        ++Clicks;
        Answer = key->Name();
        Unload();
      };
    }
  }

  ui::KRXIndex idxCaption{*this, u"idxCaption"};
  ui::KRXKey keyClose{*this, u"keyClose"};
  ui::KRXKey keyOne{*this, u"keyOne"};
  ui::KRXKey keyTwo{*this, u"keyTwo"};
  ui::TextBox txtName{*this, u"txtName"};
  String Answer;
  int Clicks = 0;
};

// The window of a form that is shown.
inline HWND WindowOf(const ui::Form& form) {
  return dynamic_cast<const win32::WindowPeer&>(*form.ThePeer()).Window();
}

// Services that answer with the key and with one font.
struct FakeTexts : host::TextService {
  String GetText(StringView key, std::int32_t) override { return String(key); }
  String ResolveText(StringView reference) override { return String(reference); }
};
struct FakeFonts : host::FontService {
  void SelectFontClass(StringView) override {}
  Font GetFont() override { return {}; }
};
struct FakeRuntime : host::Runtime {
  std::unique_ptr<host::TextService> CreateTextService() override {
    return std::make_unique<FakeTexts>();
  }
  std::unique_ptr<host::FontService> CreateFontService() override {
    return std::make_unique<FakeFonts>();
  }
  std::unique_ptr<host::UserSession> CreateUserSession() override { return nullptr; }
  std::unique_ptr<host::UserAdministration> CreateUserAdministration() override { return nullptr; }
  std::unique_ptr<host::UserClassAdministration> CreateUserClassAdministration() override {
    return nullptr;
  }
};

}  // namespace krx::test
