#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>

#include "service/Apartment.h"
#include "service/Layout.h"
#include "service/Skip.h"
#include "ui/Controls.h"

namespace krx::service {

// What every dialog form has: the caption line by which it is dragged, the close key, the measuring
// label, the focus on the first paint, and texts and fonts of the runtime.
class DialogForm : public ui::Form {
 public:
  ui::KRXIndex idxCaption{*this, u"idxCaption"};
  ui::KRXKey keyClose{*this, u"keyClose"};
  ui::Label lblSize{*this, u"lblSize"};

  // Gets the focus when the form paints next; the paint handler empties it, so a form that is
  // covered and painted again does not take the focus back.
  ui::Control* FocusControl = nullptr;

  // The layout step: sizes and places everything by texts, fonts and screen. It runs again whenever
  // the screen changes.
  virtual void CalcPositions() = 0;

 protected:
  using Keys = std::span<ui::KRXKey* const>;
  using Controls = std::span<ui::Control* const>;

  DialogForm(Apartment& apartment, String name, std::int32_t text_group);

  Apartment& TheApartment() const { return apartment_; }
  SharedSettings& Shared() const { return apartment_.Shared; }

  // Text of a key in the form's text group.
  String Text(StringView key);
  // A text of the caller; one that begins with "@" is a reference to a text of the runtime.
  String Resolved(const String& text);
  // The services are created on first use and kept until the form is unloaded.
  host::TextService& Texts();
  host::FontService& Fonts();
  // Font of a font class, for standard controls.
  krx::Font ClassFont(StringView font_class);

  // Steps of a load. What cannot be had is passed over and leaves the control as it is.
  template <class Captioned>
  void LoadText(Captioned& control, StringView key) {
    Skip([&] { control.Caption = Text(key); });
  }
  // The caption line, buttons, what shows texts and what takes input: each by its font class, for
  // which the runtime is asked once.
  void LoadFonts(Keys keys, Controls texts, Controls inputs);

  // In this order from the beginning of the tab order. Each heading stands before its field, so
  // that its access key leads there.
  static void OrderTabs(Controls controls);
  // Enter in a control is swallowed and leads on.
  static void OnEnter(ui::Control& control, std::function<void()> next);

  // The shared dialog service; runtime error 91 once it has been cleared.
  KRXDialog& DialogService() const;

  // Sets the caption line's text and the form's caption for screen readers and the task list.
  void SetCaption(String encoded);
  // The same with the caller's title, or the text of the key where he gave none; without either the
  // caption stays.
  void SetTitle(const String& title, StringView key);
  // Height of the caption line, and the picture and size of the close key with it.
  void SizeCaption(Twips padding = kCaptionPadding);
  // The same where a title that cannot be measured leaves the height as it is.
  void SizeCaptionAnyway(Twips padding = kCaptionPadding);
  // The width in twips at which the close key leaves the whole title in sight.
  Twips WidthOfTitle() const;
  // Size of a button for its text and the configured minimum; one whose text cannot be measured
  // gets a size of its own.
  void SizeKey(ui::KRXKey& key);
  // Gives all of these the size of the largest.
  Size SizeAlike(Keys keys);
  // The caption line across the form's width, the close key at its right end.
  void PlaceCaption();

 private:
  void PutKeyboardBeside();
  // A text that a runtime need not have: empty where it knows nothing but the key.
  String OptionalText(StringView key);
  void SizeCloseKey();
  void CaptionMouseMove(int button, Twips x, Twips y);
  void PaintStep();

  Apartment& apartment_;
  const std::int32_t text_group_;
  std::unique_ptr<host::TextService> texts_;
  std::unique_ptr<host::FontService> fonts_;
  struct Point {
    Twips X;
    Twips Y;
  };
  std::optional<Point> drag_from_;  // in the caption line, while it is pressed
};

}  // namespace krx::service
