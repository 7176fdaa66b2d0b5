#pragma once

#include <vector>

#include "ui/Control.h"

namespace krx::ui {

// The touch combo box: a text chosen from a drop-down list of finger-sized rows. The text is not
// typed; it may be set to one that is not in the list.
class KRXComboBox : public FontClassControl {
 public:
  static constexpr int kAtEnd = -1;

  KRXComboBox(Form& parent, String name);

  Property<String> Text{*this, Aspect::Text};

  Event<> Change;            // the text is another one
  Event<> SelectionChanged;  // an entry was selected

  // Adds an entry at a position; kAtEnd or one behind the list appends it. Selects nothing.
  void AddItem(String text, int position);
  const std::vector<String>& Items() const { return items_; }
  // Selected entry, -1 for none.
  int ListIndex() const { return selected_; }
  // Selects an entry, as the operator does; its text becomes the control's.
  void Select(int index);

  // Whether the list is open; kept by the port. An open list takes Enter and Esc for itself.
  bool DroppedDown = false;

  String DisplayedText() const override { return Text(); }
  bool TakesText() const override { return true; }  // characters look entries up
  bool UsesKey(int key) const override;
  void Changed(Aspect aspect) override;

 private:
  std::vector<String> items_;
  int selected_ = -1;
};

}  // namespace krx::ui
