#pragma once

#include <array>
#include <memory>
#include <vector>

#include "panel/KeyboardLayout.h"
#include "panel/Placement.h"
#include "ui/BoardKey.h"
#include "ui/Form.h"
#include "ui/Timer.h"

namespace krx::panel {

// The keyboard on the screen: a form beside a dialog, which never has the focus. What its keys type
// reaches the dialog as if it came from any other keyboard. It has pages, one for each layout.
class FKeyboard : public ui::Form {
 public:
  // The first page is the one for letters, which names the keys of all.
  FKeyboard(ui::Form& dialog, std::vector<KeyboardLayout> pages, krx::Font font);

  // Takes this place and shape, with the first page in sight.
  void Arrange(const Shape& shape);
  // Beside a password nothing tells which key is pressed, and holding a key offers nothing.
  void SetDiscreet(bool discreet);
  // Lets go of whatever is pressed.
  void Rest();

  const KeyboardLayout& Letters() const { return pages_.front(); }

  ui::Event<> HidePressed;

 private:
  struct Slot {
    std::unique_ptr<ui::BoardKey> Key;
    const LayoutKey* Does = nullptr;  // none: not on this page
  };

  // Layout
  void MakeKeys();
  Slot& NextSlot();
  void LayOut();
  void LayOutRow(const LayoutRow& row, Twips top, Twips height);
  void Dress(Slot& slot);
  void Redress();
  String CaptionOf(const LayoutKey& key) const;
  krx::Font FontFor(StringView caption, const Rect& place) const;
  const KeyboardLayout& Page() const { return pages_[page_]; }
  const KeyboardLayout& NextPage() const { return pages_[(page_ + 1) % pages_.size()]; }

  // What fingers do
  void Pressed(Slot& slot);
  void HeldOn();
  void LetGo(Slot& slot, Twips x, Twips y);
  void Perform(const LayoutKey& key);
  void TypeText(StringView text);
  const Characters& CharactersOf(const LayoutKey& key) const;
  static int KeyOf(Act act);

  // What holding a key offers
  void OpenAccents(const Slot& slot);
  void CloseAccents();
  ui::BoardKey* AccentAt(Twips x, Twips y) const;

  std::vector<KeyboardLayout> pages_;
  const krx::Font font_;
  Shape shape_;
  std::size_t page_ = 0;
  bool shift_ = false;
  bool caps_lock_ = false;
  bool discreet_ = false;
  // They lie above the keys, so they come first.
  std::vector<std::unique_ptr<ui::BoardKey>> accents_;
  std::size_t offered_ = 0;  // so many of them are in sight
  std::vector<std::unique_ptr<Slot>> slots_;
  std::size_t used_ = 0;  // so many of them are on this page
  Slot* held_ = nullptr;
  ui::Timer tmrHeld{*this, u"tmrHeld"};
};

}  // namespace krx::panel
