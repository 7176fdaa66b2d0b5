#include <algorithm>

#include "Person.h"
#include "RealDisk.h"
#include "contract/Port.h"
#include "driver/List.h"
#include "ports/win32/Win32Platform.h"
#include "ui/Keyboard.h"

namespace krx::test {

namespace {

WORD KeyOf(char16_t letter) {
  return static_cast<WORD>(letter >= u'a' && letter <= u'z' ? letter - u'a' + u'A' : letter);
}

class RealHand final : public Hand {
 public:
  RealHand(Person& person, StringView form)
      : person_(person), form_(form), window_(person.AwaitForm(form)) {}

  void Press(int key, int shift) override {
    person_.Press(static_cast<WORD>(key), (shift & ui::kShift) != 0 ? VK_SHIFT : WORD{0});
  }
  void Type(StringView letters) override {
    std::vector<WORD> keys(letters.size());
    std::transform(letters.begin(), letters.end(), keys.begin(), KeyOf);
    person_.Type(keys);
  }
  void AccessKey(char16_t letter) override { person_.Press(KeyOf(letter), VK_MENU); }
  void Click(StringView key) override { person_.Click(person_.Control(window_, key)); }
  void ClickRow(StringView list, int row) override { ListNamed(list).Click(row); }
  void DoubleClickRow(StringView list, int row) override { ListNamed(list).DoubleClick(row); }
  void PressRowAndLeave(StringView list, int row) override {
    const drive::List rows = ListNamed(list);
    const RECT at = rows.RowBounds(row);
    const RECT form = drive::Window(window_).Bounds();
    person_.DragTo({at.left + 20, (at.top + at.bottom) / 2}, {form.left + 3, form.top + 3});
  }
  void Open(StringView key, StringView form, const HandScript& script) override {
    Click(key);
    RealHand inside(person_, form);
    script(inside);
    person_.AwaitForm(form_);
  }
  void AwaitFocus(StringView control) override {
    person_.AwaitFocus(person_.Control(window_, control));
  }
  void Await(const std::function<bool()>& condition) override {
    person_.Await(condition, "condition");
  }

 private:
  drive::List ListNamed(StringView list) {
    return drive::List(drive::Window(person_.Control(window_, list)));
  }

  Person& person_;
  const String form_;
  const HWND window_;
};

class Win32Port final : public Port {
 public:
  ui::Platform& Platform() override { return platform_; }
  std::unique_ptr<Disk> MakeDisk() override { return std::make_unique<RealDisk>(); }
  void Show(ui::Form& form, const HandScript& script) override {
    ShowWith(form, [&](Person& person) {
      RealHand hand(person, form.Name());
      script(hand);
    });
  }

 private:
  win32::Win32Platform platform_;
};

}  // namespace

std::unique_ptr<Port> MakePort() {
  return std::make_unique<Win32Port>();
}

}  // namespace krx::test
