#include "panel/Board.h"

#include <algorithm>
#include <stdexcept>
#include <utility>
#include <vector>

#include "driver/Input.h"

namespace krx::drive {

namespace {

constexpr const wchar_t* kBoard = L"FKeyboard";
constexpr int kPages = 3;

std::vector<Window> KeysOf(const Window& board) {
  std::vector<Window> keys;
  for (const Window& window : board.Descendants())
    if (window.Visible() && window.Name().starts_with(L"key")) keys.push_back(window);
  return keys;
}

}  // namespace

Board::Board(Hand hand) : hand_(hand), window_(WaitForForm(kBoard)) {}

void Board::Press(const Window& key) const {
  if (hand_ == Hand::Finger) return TouchAt(key.Centre());
  key.Click();
}

void Board::Down(POINT at) const {
  hand_ == Hand::Finger ? PressFinger(at) : PressMouse(MouseButton::Left, at);
}

void Board::Up(POINT at) const {
  hand_ == Hand::Finger ? LiftFinger(at) : ReleaseMouse(MouseButton::Left, at);
}

void Board::HoldFor(const std::wstring& caption, const std::wstring& choice) const {
  Down(Key(caption).Centre());
  Up(Key(choice).Centre());
}

void Board::HoldUntil(const std::wstring& caption, const std::function<bool()>& condition) const {
  const POINT at = Key(caption).Centre();
  Down(at);
  const bool came = Within(kPatience, condition);
  Up(at);
  if (!came) throw std::runtime_error("holding " + krx::drive::Narrow(caption) + " does nothing");
}

std::optional<Window> Board::Find(const std::wstring& caption) const {
  for (const Window& key : window_.Descendants())
    if (key.Text() == caption && key.Visible()) return key;
  return std::nullopt;
}

Window Board::Key(const std::wstring& caption) const {
  std::optional<Window> found;
  if (!Within(kPatience, [&] { return (found = Find(caption)).has_value(); }))
    throw std::runtime_error("no key " + krx::drive::Narrow(caption));
  return *found;
}

std::wstring Board::Captions() const {
  std::wstring all;
  for (const Window& key : KeysOf(window_))
    all += key.Text() + L" ";
  return all;
}

void Board::Change(const Window& key) const {
  const std::wstring before = Captions();
  Press(key);
  // Until nothing changes any more.
  std::wstring last = before;
  const auto settled = [&] {
    const std::wstring now = Captions();
    return now != before && now == std::exchange(last, now);
  };
  if (!Within(kPatience, settled)) throw std::runtime_error("the keyboard stays as it is");
}

// The page key is the first one of the last row, where Shift stands one row above it.
Window Board::PageKey() const {
  const std::vector<Window> keys = KeysOf(window_);
  if (keys.empty()) throw std::runtime_error("the keyboard has gone");
  return *std::max_element(keys.begin(), keys.end(), [](const Window& a, const Window& b) {
    const RECT one = a.Bounds();
    const RECT other = b.Bounds();
    return one.top != other.top ? one.top < other.top : one.left > other.left;
  });
}

std::optional<Window> Board::FindOne(const std::vector<std::wstring>& captions) const {
  for (const std::wstring& caption : captions)
    if (auto key = Find(caption)) return key;
  return std::nullopt;
}

std::optional<Window> Board::ShiftKey() const {
  return FindOne({L"Shift", L"Umschalttaste", L"Majuscule"});
}

void Board::TypeOne(const std::wstring& character) const {
  for (int page = 0; page < kPages; ++page) {
    if (const auto key = Find(character)) return Press(*key);
    if (const auto shift = ShiftKey()) {
      Change(*shift);
      if (const auto key = Find(character)) return Change(*key);  // which lets Shift go
      Change(*shift);
    }
    Change(PageKey());
  }
  throw std::runtime_error("no key types " + krx::drive::Narrow(character));
}

void Board::Type(const std::wstring& text) const {
  for (const wchar_t character : text) {
    if (character == L' ') {
      Press(FindOne({L"Space", L"Leertaste", L"Espace"}).value());
    } else {
      TypeOne(std::wstring(1, character));
    }
    while (!Find(L"a"))
      Change(PageKey());
  }
}

void Board::WaitUntilHidden() const {
  if (!Within(kPatience, [&] { return !window_.Visible(); }))
    throw std::runtime_error("the keyboard stays");
}

bool BoardInSight() {
  return !Forms(kBoard).empty();
}

void TouchAt(POINT at) {
  PressFinger(at);
  LiftFinger(at);
}

}  // namespace krx::drive
