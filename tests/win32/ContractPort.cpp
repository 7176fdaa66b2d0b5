#include <windows.h>

#include <commctrl.h>  // builds on the one above

#include <algorithm>
#include <atomic>

#include "Person.h"
#include "RealDisk.h"
#include "contract/Port.h"
#include "driver/Input.h"
#include "driver/List.h"
#include "ports/win32/Screen.h"
#include "ports/win32/Win32Platform.h"
#include "ui/Keyboard.h"

namespace krx::test {

namespace {

WORD KeyOf(char16_t letter) {
  return static_cast<WORD>(letter >= u'a' && letter <= u'z' ? letter - u'a' + u'A' : letter);
}

// Its clock stands still once a touch is played, and moves as the touch says.
class TimedPlatform : public win32::Win32Platform {
 public:
  double Ticks() override {
    const double played = played_;
    return played > 0 ? played : Win32Platform::Ticks();
  }
  std::string KeyboardLayout(StringView name) override { return ContractLayout(name); }
  void Pass(double milliseconds) { played_ = Ticks() + milliseconds; }

 private:
  std::atomic<double> played_{0};
};

// Plays a touch on a list by messages, as the system sends them.
class PlayedFinger {
 public:
  PlayedFinger(const drive::List& list, ToldAs told) : list_(list), told_(told) {
    first_ = list.RowBounds(static_cast<int>(SendMessageW(Window(), LVM_GETTOPINDEX, 0, 0)));
  }

  void Act(const TouchAct& act) const {
    const POINT at{(first_.left + first_.right) / 2,
                   first_.top + static_cast<LONG>(act.Rows * (first_.bottom - first_.top))};
    if (told_ == ToldAs::Pointer) {
      Point(act.Act, at);
    } else {
      Click(act.Act, at);
    }
  }

 private:
  HWND Window() const { return list_.TheWindow().Handle(); }

  void Point(TouchAct::What what, POINT at) const {
    constexpr WORD kKnown = POINTER_MESSAGE_FLAG_PRIMARY | POINTER_MESSAGE_FLAG_INRANGE;
    constexpr WORD kTouching =
        kKnown | POINTER_MESSAGE_FLAG_INCONTACT | POINTER_MESSAGE_FLAG_FIRSTBUTTON;
    const auto send = [&](UINT message, WORD flags) {
      SendMessageW(Window(), message, MAKEWPARAM(1, flags), MAKELPARAM(at.x, at.y));
    };
    switch (what) {
      case TouchAct::What::Down:
        return send(WM_POINTERDOWN, kTouching | POINTER_MESSAGE_FLAG_NEW);
      case TouchAct::What::Move:
        return send(WM_POINTERUPDATE, kTouching);
      case TouchAct::What::Up:
        return send(WM_POINTERUP, kKnown);
      case TouchAct::What::Cancel:
        return send(WM_POINTERUP, kKnown | POINTER_MESSAGE_FLAG_CANCELED);
    }
  }

  void Click(TouchAct::What what, POINT at) const {
    ScreenToClient(Window(), &at);
    const auto send = [&](UINT message, WPARAM keys) {
      SendMessageW(Window(), message, keys, MAKELPARAM(at.x, at.y));
    };
    switch (what) {
      case TouchAct::What::Down:
        return send(WM_LBUTTONDOWN, MK_LBUTTON);
      case TouchAct::What::Move:
        return send(WM_MOUSEMOVE, MK_LBUTTON);
      case TouchAct::What::Up:
        return send(WM_LBUTTONUP, 0);
      case TouchAct::What::Cancel:
        return send(WM_CANCELMODE, 0);
    }
  }

  const drive::List& list_;
  const ToldAs told_;
  RECT first_{};
};

class RealHand final : public Hand {
 public:
  RealHand(Person& person, TimedPlatform& platform, StringView form)
      : person_(person), platform_(platform), form_(form), window_(person.AwaitForm(form)) {}

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
  void HoldWhile(StringView key, StringView form, const HandScript& script) override {
    const POINT at = drive::Window(person_.Control(window_, key)).Centre();
    person_.MoveTo(at);
    drive::PressMouse(drive::MouseButton::Left, at);
    RealHand inside(person_, platform_, form);
    script(inside);
    person_.AwaitForm(form_);
  }
  void LetGo(StringView key) override {
    drive::ReleaseMouse(drive::MouseButton::Left,
                        drive::Window(person_.Control(window_, key)).Centre());
  }
  void ClickRow(StringView list, int row) override { ListNamed(list).Click(row); }
  void DoubleClickRow(StringView list, int row) override { ListNamed(list).DoubleClick(row); }
  void PressRowAndLeave(StringView list, int row) override {
    const drive::List rows = ListNamed(list);
    const RECT at = rows.RowBounds(row);
    const RECT form = drive::Window(window_).Bounds();
    person_.DragTo({at.left + 20, (at.top + at.bottom) / 2}, {form.left + 3, form.top + 3});
  }
  void Touch(StringView list, ToldAs told, const Touching& acts) override {
    const drive::List rows = ListNamed(list);
    const PlayedFinger finger(rows, told);
    for (const TouchAct& act : acts) {
      PassTime(act.After);
      finger.Act(act);
    }
  }
  void Tap(StringView caption) override { person_.Click(BoardKey(caption)); }
  void HoldFor(StringView caption, StringView choice) override {
    const auto middle = [&](StringView key) { return drive::Window(BoardKey(key)).Centre(); };
    const POINT at = middle(caption);
    person_.MoveTo(at);
    drive::PressMouse(drive::MouseButton::Left, at);
    drive::ReleaseMouse(drive::MouseButton::Left, middle(choice));
  }
  void TouchField(StringView control) override { person_.Touch(person_.Control(window_, control)); }
  void AwaitBoard(bool in_sight) override {
    person_.Await([&] { return (BoardWindow() != nullptr) == in_sight; }, "keyboard");
  }
  Rect Board() override {
    RECT place{};
    GetWindowRect(BoardWindow(), &place);
    const win32::Scale scale = win32::Screen::Of(window_).Scale;
    return {scale.ToTwips(place.left), scale.ToTwips(place.top),
            scale.ToTwips(place.right - place.left), scale.ToTwips(place.bottom - place.top)};
  }
  void PassTime(double milliseconds) override { platform_.Pass(milliseconds); }
  void Open(StringView key, StringView form, const HandScript& script) override {
    Click(key);
    RealHand inside(person_, platform_, form);
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
  // The keyboard that belongs to this form and is in sight; null without one.
  HWND BoardWindow() const {
    const std::vector<drive::Window> boards = drive::Forms(L"FKeyboard");
    const auto ours = std::find_if(boards.begin(), boards.end(), [this](const drive::Window& one) {
      return GetWindow(one.Handle(), GW_OWNER) == window_;
    });
    return ours == boards.end() ? nullptr : ours->Handle();
  }
  HWND BoardKey(StringView caption) {
    HWND found = nullptr;
    const auto look = [&] {
      const HWND board = BoardWindow();
      if (!board) return false;
      for (const drive::Window& key : drive::Window(board).Descendants())
        if (key.Visible() && TextOf(key.Handle()) == caption) found = key.Handle();
      return found != nullptr;
    };
    person_.Await(look, "key " + ToUtf8(caption));
    return found;
  }
  drive::List ListNamed(StringView list) {
    return drive::List(drive::Window(person_.Control(window_, list)));
  }

  Person& person_;
  TimedPlatform& platform_;
  const String form_;
  const HWND window_;
};

class Win32Port final : public Port {
 public:
  ui::Platform& Platform() override { return platform_; }
  std::unique_ptr<Disk> MakeDisk() override { return std::make_unique<RealDisk>(); }
  void StopClock() override { platform_.Pass(0); }
  void Show(ui::Form& form, const HandScript& script) override {
    ShowWith(form, [&](Person& person) {
      RealHand hand(person, platform_, form.Name());
      script(hand);
    });
  }

 private:
  TimedPlatform platform_;
};

}  // namespace

std::unique_ptr<Port> MakePort() {
  return std::make_unique<Win32Port>();
}

}  // namespace krx::test
