#pragma once

#include <optional>

#include "ui/Control.h"

namespace krx::ui {

// A line or block of text. With AutoSize it takes the size of its caption in its font.
class Label : public Control {
 public:
  Label(Form& parent, String name);

  Property<String> Caption{*this, Aspect::Text};
  Property<bool> AutoSize{*this, Aspect::Text, false};
  // Whether "&" marks an access key; the key leads to the next control of the tab order.
  bool UseMnemonic = true;

  String DisplayedText() const override;
  char16_t AccessKey() const override { return UseMnemonic ? AccessKeyOf(Caption()) : u'\0'; }
  void Changed(Aspect aspect) override;
};

// A box around other controls, with or without a caption in its upper edge; it takes no input.
class Frame : public Control {
 public:
  Frame(Form& parent, String name);

  // "&" marks an access key, which leads to the next control of the tab order.
  Property<String> Caption{*this, Aspect::Text};

  String DisplayedText() const override { return WithoutAccessKey(Caption()); }
  char16_t AccessKey() const override { return AccessKeyOf(Caption()); }
  bool LiesBelow() const override { return true; }
};

// One of the system's stock icons, by its identifier.
struct StockIcon {
  int Id = 0;
  bool operator==(const StockIcon&) const = default;
};
inline constexpr int kStopIcon = 32513;
inline constexpr int kQuestionIcon = 32514;
inline constexpr int kExclamationIcon = 32515;
inline constexpr int kInformationIcon = 32516;

// Shows one icon with its upper left corner at a point of the box, in twips.
class PictureBox : public Control {
 public:
  struct Drawing {
    StockIcon Icon;
    Twips X = 0;
    Twips Y = 0;
    bool operator==(const Drawing&) const = default;
  };

  PictureBox(Form& parent, String name);

  Property<std::optional<Drawing>> Picture{*this, Aspect::Picture};

  void DrawIcon(StockIcon icon, Twips x, Twips y) { Picture = Drawing{icon, x, y}; }
};

}  // namespace krx::ui
