#pragma once

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "ports/headless/Operator.h"
#include "ui/Keyboard.h"

namespace krx::test {

// What the rules say of a dialog on the screen: its controls in the order of Tab, where the focus
// is and what the fields hold. The rules of one dialog are a class derived from it.
class DialogModel {
 public:
  enum class Kind { Text, List, Key };
  struct Item {
    String Name;
    DialogModel::Kind Kind;
    bool SelectsAll = false;
    bool Enabled = true;
    String Text = {};
    std::size_t Start = 0;
    std::size_t Length = 0;
  };

  explicit DialogModel(std::vector<Item> items) : items_(std::move(items)) {}
  virtual ~DialogModel() = default;

  const std::vector<Item>& Items() const { return items_; }
  const Item& Focused() const { return *focus_; }
  bool Open() const { return open_; }

  // The dialog comes: the focus goes to its first control, then to where it is sent.
  void Shown() {
    open_ = true;
    ok_pressed_ = false;
    focus_ = nullptr;
    FocusOn(items_.front());
    if (next_focus_) FocusOn(*std::exchange(next_focus_, nullptr));
  }
  void Point(std::size_t item) { FocusOn(items_[item]); }
  void Type(char16_t character) { Replace(focus_->Start, focus_->Length, String(1, character)); }
  void Clear() { Replace(0, focus_->Text.size(), String()); }
  void Enter() {
    if (focus_->Kind == Kind::Key) return Clicked(focus_->Name);
    EnterIn(*focus_);
  }
  void Tab(int step) {
    Walk(step, [](const Item& item) { return item.Enabled; });
  }
  void Arrow(int step) {
    if (focus_->Kind != Kind::Key) return;
    Walk(step, [](const Item& item) { return item.Enabled && item.Kind == Kind::Key; });
  }
  void Click(StringView key) {
    const auto found = std::find_if(items_.begin(), items_.end(),
                                    [&](const Item& item) { return item.Name == key; });
    if (found != items_.end()) FocusOn(*found);  // the close button takes no focus
    Clicked(key);
  }
  void Choose(std::size_t item, const String& text) {
    FocusOn(items_[item]);
    items_[item].Text = text;
    Changed(items_[item]);
  }

 protected:
  Item& At(std::size_t index) { return items_[index]; }
  void FocusOn(Item& item) {
    if (focus_ == &item) return;
    focus_ = &item;
    if (!item.SelectsAll) return;
    item.Start = 0;
    item.Length = item.Text.size();
  }
  void SendFocusTo(Item& item) { next_focus_ = &item; }
  void Close(bool ok) {
    open_ = false;
    ok_pressed_ = ok;
  }
  bool OkPressed() const { return ok_pressed_; }

  virtual void Changed(Item& item) = 0;
  virtual void EnterIn(Item& item) = 0;
  virtual void Clicked(StringView key) = 0;

 private:
  void Replace(std::size_t start, std::size_t length, const String& text) {
    const String before = focus_->Text;
    focus_->Text.replace(start, length, text);
    focus_->Start = start + text.size();
    focus_->Length = 0;
    if (focus_->Text != before) Changed(*focus_);
  }
  template <class Accepts>
  void Walk(int step, Accepts accepts) {
    const int count = static_cast<int>(items_.size());
    int at = static_cast<int>(focus_ - items_.data());
    do {
      at = (at + step + count) % count;
    } while (!accepts(items_[static_cast<std::size_t>(at)]));
    FocusOn(items_[static_cast<std::size_t>(at)]);
  }

  std::vector<Item> items_;
  Item* focus_ = nullptr;
  Item* next_focus_ = nullptr;
  bool open_ = false;
  bool ok_pressed_ = false;
};

// An operator who acts at random, on the dialog and on its model alike, and compares the two after
// every act.
class RandomOperator {
 public:
  using Random = std::minstd_rand;

  RandomOperator(DialogModel& model, Random& random) : model_(model), random_(random) {}

  std::size_t Below(std::size_t count) { return random_() % count; }

  // Acts until the dialog closes; gives it up after a while. Returns the first difference found.
  std::string Run(headless::Operator& op) {
    trace_.clear();
    controls_.clear();
    for (const DialogModel::Item& item : model_.Items())
      controls_.push_back(&op.Get(item.Name));
    model_.Shown();
    std::string difference = Difference(op);
    for (int acts = 0; difference.empty() && model_.Open(); ++acts) {
      if (acts < kMostActs) {
        Act(op);
      } else {
        ClickKey(op, u"keyCancel");
      }
      difference = Difference(op);
    }
    return difference.empty() ? "" : difference + ", acts: " + trace_;
  }

 private:
  static constexpr int kMostActs = 20;
  using Kind = DialogModel::Kind;

  void Act(headless::Operator& op) {
    const bool text = model_.Focused().Kind == Kind::Text;
    const bool key = model_.Focused().Kind == Kind::Key;
    switch (Below(16)) {
      case 0:
      case 1:
      case 2:
      case 3:
        return text ? Type(op) : Press(op, ui::kKeyTab);
      case 4:
        return text ? Clear(op) : Press(op, ui::kKeyTab);
      case 5:
      case 6:
      case 7:
        return Press(op, ui::kKeyEnter);
      case 8:
      case 9:
        return Press(op, ui::kKeyTab);
      case 10:
        return Back(op);
      case 11:
        return key ? Arrow(op) : Press(op, ui::kKeyEnter);
      case 12:
        return Point(op);
      case 13:
        return Choose(op);
      case 14:
        trace_ += " repaint";
        return op.Uncover();
      default:
        return Leave(op);
    }
  }

  void Type(headless::Operator& op) {
    // Mostly the same, so that two passwords are often equal.
    const char16_t character = Below(6) != 0 ? u'a' : u"Ab"[Below(2)];
    trace_ += " '";
    trace_ += static_cast<char>(character);
    trace_ += '\'';
    model_.Type(character);
    op.Type(StringView(&character, 1));
    if (Below(2) == 0) Press(op, ui::kKeyEnter);
  }
  void Clear(headless::Operator& op) {
    trace_ += " clear";
    auto& box = op.Get<ui::EditBox>(model_.Focused().Name);
    model_.Clear();
    const std::size_t length = box.TextLength();
    box.SelStart = 0;
    box.SelLength = 0;
    box.Edited(0, length, u"");
  }
  void Press(headless::Operator& op, int key) {
    trace_ += key == ui::kKeyTab ? " tab" : " enter";
    key == ui::kKeyTab ? model_.Tab(1) : model_.Enter();
    op.Press(key);
  }
  void Back(headless::Operator& op) {
    trace_ += " shift-tab";
    model_.Tab(-1);
    op.Press(ui::kKeyTab, ui::kShift);
  }
  void Arrow(headless::Operator& op) {
    const bool right = Below(2) == 0;
    trace_ += right ? " right" : " left";
    model_.Arrow(right ? 1 : -1);
    op.Press(right ? ui::kKeyRight : ui::kKeyLeft);
  }
  void Point(headless::Operator& op) {
    const std::size_t item = Below(model_.Items().size());
    if (model_.Items()[item].Kind == Kind::Key) return;
    trace_ += " point-" + ToUtf8(model_.Items()[item].Name);
    model_.Point(item);
    op.Get(model_.Items()[item].Name).SetFocus();
  }
  void Choose(headless::Operator& op) {
    if (model_.Items().front().Kind != Kind::List) return Point(op);
    auto& box = op.Get<ui::KRXComboBox>(model_.Items().front().Name);
    const std::size_t entry = Below(box.Items().size());
    trace_ += " choose-" + std::to_string(entry);
    model_.Choose(0, box.Items()[entry]);
    box.SetFocus();
    box.Select(static_cast<int>(entry));
  }
  // A key by mouse or Space, or Esc.
  void Leave(headless::Operator& op) {
    const std::size_t choice = Below(model_.Items().size() + 4);
    if (choice < model_.Items().size()) {
      const DialogModel::Item& item = model_.Items()[choice];
      if (item.Kind == Kind::Key && item.Enabled) ClickKey(op, item.Name);
    } else if (choice == model_.Items().size()) {
      ClickKey(op, u"keyClose");
    } else if (choice == model_.Items().size() + 1) {
      trace_ += " esc";
      model_.Click(u"keyClose");
      op.Press(ui::kKeyEscape);
    } else if (model_.Focused().Kind == Kind::Key) {
      trace_ += " space";
      model_.Enter();
      op.Press(ui::kKeySpace);
    }
  }
  void ClickKey(headless::Operator& op, const String& key) {
    trace_ += " click-" + ToUtf8(key);
    model_.Click(key);
    op.Click(key);
  }

  std::string Difference(headless::Operator& op) const {
    const ui::Control* const focus = op.Form().ActiveControl();
    std::string found;
    if (op.Form().Visible() != model_.Open()) found += " open";
    if (!focus || focus->Name() != model_.Focused().Name) {
      found += " focus " + ToUtf8(op.Focus()) + " not " + ToUtf8(model_.Focused().Name);
    }
    for (std::size_t i = 0; i < controls_.size(); ++i) {
      const DialogModel::Item& item = model_.Items()[i];
      if (controls_[i]->Enabled() != item.Enabled) found += " enabled " + ToUtf8(item.Name);
      if (item.Kind != Kind::Key && TextOf(*controls_[i]) != item.Text) {
        found += " text of " + ToUtf8(item.Name) + ": " + ToUtf8(TextOf(*controls_[i]));
      }
    }
    return found;
  }
  static StringView TextOf(const ui::Control& control) {
    switch (control.Kind()) {
      case ui::Kind::TextBox:
        return static_cast<const ui::TextBox&>(control).Text();
      case ui::Kind::PasswordBox:
        return static_cast<const ui::PasswordBox&>(control).Text().View();
      default:
        return static_cast<const ui::KRXComboBox&>(control).Text();
    }
  }

  DialogModel& model_;
  Random& random_;
  std::vector<const ui::Control*> controls_;  // of the form shown, in the order of the model's
  std::string trace_;
};

}  // namespace krx::test
