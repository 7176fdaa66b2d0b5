#pragma once

#include <vector>

#include "ui/Control.h"

namespace krx::ui {

// A text chosen from a drop-down list. It is not typed, but may be set to one that is not in the
// list.
class ComboBox : public FontClassControl {
 public:
  static constexpr int kAtEnd = -1;

  ComboBox(Form& parent, String name);

  Property<String> Text{*this, Aspect::Text};

  Event<> Change;            // the text is another one
  Event<> SelectionChanged;  // an entry was selected

  // Adds an entry at a position; kAtEnd or one behind the list appends it. Selects nothing.
  void AddItem(String text, int position);
  // Gives an entry another text; a selected one stays selected, and no event is raised.
  void SetItem(int index, String text);
  // Removes all entries; the text stays.
  void Clear();
  const std::vector<String>& Items() const { return items_; }
  // Selected entry, -1 for none.
  int ListIndex() const { return selected_; }
  // Selects an entry, as the operator does; its text becomes the control's.
  void Select(int index);

  // Whether the list is open; kept by the port. An open list takes Enter and Esc for itself.
  bool DroppedDown = false;

  // Whether the rows of the list are high enough for a finger.
  virtual bool ForFingers() const { return false; }

  String DisplayedText() const override { return Text(); }
  bool TakesText() const override { return true; }  // characters look entries up
  bool UsesKey(int key) const override;
  void Changed(Aspect aspect) override;

 private:
  std::vector<String> items_;
  int selected_ = -1;
};

// The touch combo box, whose list has finger-sized rows.
class KRXComboBox : public ComboBox {
 public:
  using ComboBox::ComboBox;
  bool ForFingers() const override { return true; }
};

}  // namespace krx::ui
