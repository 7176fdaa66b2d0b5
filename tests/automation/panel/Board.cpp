#include "panel/Board.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "driver/Input.h"

namespace krx::drive {

namespace {

constexpr const wchar_t* kBoard = L"FKeyboard";
constexpr int kPages = 3;
constexpr ULONG_PTR kFromAFinger = 0xFF515780;

std::vector<Window> KeysOf(const Window& board) {
  std::vector<Window> keys;
  for (const Window& window : board.Descendants())
    if (window.Visible() && window.Name().starts_with(L"key")) keys.push_back(window);
  return keys;
}

}  // namespace

Board::Board() : window_(WaitForForm(kBoard)) {}

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
  key.Click();
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

std::optional<Window> Board::ShiftKey() const {
  const auto german = Find(L"Umschalttaste");
  return german ? german : Find(L"Shift");
}

void Board::TypeOne(const std::wstring& character) const {
  for (int page = 0; page < kPages; ++page) {
    if (const auto key = Find(character)) return key->Click();
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
      Press(Find(L"Leertaste") ? L"Leertaste" : L"Space");
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
  MoveMouse(at);
  for (const DWORD flag : {DWORD{MOUSEEVENTF_LEFTDOWN}, DWORD{MOUSEEVENTF_LEFTUP}}) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flag;
    input.mi.dwExtraInfo = kFromAFinger;
    if (SendInput(1, &input, sizeof input) != 1) throw std::runtime_error("input is refused");
  }
}

}  // namespace krx::drive
