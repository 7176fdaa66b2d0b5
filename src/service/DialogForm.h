#pragma once

#include <memory>
#include <optional>

#include "service/Apartment.h"
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

 protected:
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

  // The shared dialog service; runtime error 91 once it has been cleared.
  KRXDialog& DialogService() const;

  // Sets the caption line's text and the form's caption for screen readers and the task list.
  void SetCaption(String encoded);
  // Height of the caption line, and the picture and size of the close key with it.
  void SizeCaption(Twips padding);
  void SizeCloseKey();
  // The width in twips at which the close key leaves the whole title in sight.
  Twips WidthOfTitle() const;
  // The caption line across the form's width, the close key at its right end.
  void PlaceCaption();

 private:
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
