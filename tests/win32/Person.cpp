#include "Person.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>

#include "driver/Input.h"
#include "ports/win32/Screen.h"

namespace krx::test {

namespace {

constexpr auto kLimit = std::chrono::minutes(3);  // far more than the busiest machine takes
constexpr auto kPoll = std::chrono::milliseconds(5);

struct ControlSearch {
  StringView Name;
  HWND Found = nullptr;
};

BOOL CALLBACK MatchName(HWND window, LPARAM data) {
  auto& search = *reinterpret_cast<ControlSearch*>(data);
  if (!IsWindowVisible(window) || NameOf(window) != search.Name) return TRUE;
  search.Found = window;
  return FALSE;
}

INPUT KeyInput(WORD key, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = key;
  input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
  input.ki.dwFlags = flags;
  return input;
}

void Mouse(DWORD flags, DWORD data = 0, ULONG_PTR mark = 0) {
  INPUT input{};
  input.mi.dwExtraInfo = mark;
  input.mi.mouseData = data;
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = flags;
  SendInput(1, &input, sizeof input);
}

POINT Middle(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

BOOL CALLBACK CloseForm(HWND window, LPARAM) {
  if (!NameOf(window).empty()) PostMessageW(window, WM_CLOSE, 0, 0);
  return TRUE;
}

std::string Described(HWND window) {
  if (!window) return "none";
  std::array<wchar_t, 64> type{};
  const int length = GetClassNameW(window, type.data(), static_cast<int>(type.size()));
  return ToUtf8(String(type.begin(), type.begin() + length)) + " '" + ToUtf8(NameOf(window)) + "'";
}

}  // namespace

bool Within(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + kLimit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(kPoll);
  }
  return true;
}

// Who waits in vain wants to know where the keyboard was instead, and what covered the form.
std::string Person::WhatIsThere() {
  const HWND foreground = GetForegroundWindow();
  RECT place{};
  if (foreground) GetWindowRect(foreground, &place);
  const POINT middle{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
  return " [foreground " + Described(foreground) + " at " + std::to_string(place.left) + "," +
         std::to_string(place.top) + " to " + std::to_string(place.right) + "," +
         std::to_string(place.bottom) + ", focus " +
         Described(foreground ? FocusOf(foreground) : nullptr) + ", in its middle " +
         Described(WindowFromPoint(middle)) + "]";
}

void Person::Await(const std::function<bool()>& condition, const std::string& what) {
  if (!Within(condition)) throw std::runtime_error("waited in vain: " + what + WhatIsThere());
}

HWND Person::AwaitForm(StringView name) {
  // The window manager may take the focus away once more while a window appears; a key pressed then
  // would go nowhere. A person waits until the form is at rest, too.
  constexpr int kRestingPolls = 20;
  int resting = 0;
  ControlSearch search{name};
  Await(
      [&] {
        search.Found = nullptr;
        EnumWindows(MatchName, reinterpret_cast<LPARAM>(&search));
        const bool ready =
            search.Found && GetForegroundWindow() == search.Found && FocusOf(search.Found);
        resting = ready ? resting + 1 : 0;
        return resting >= kRestingPolls;
      },
      "form " + ToUtf8(name));
  return search.Found;
}

HWND Person::FindControl(HWND form, StringView name) {
  ControlSearch search{name};
  EnumChildWindows(form, MatchName, reinterpret_cast<LPARAM>(&search));
  return search.Found;
}

HWND Person::Control(HWND form, StringView name) {
  HWND found = nullptr;
  Await([&] { return (found = FindControl(form, name)) != nullptr; }, "control " + ToUtf8(name));
  return found;
}

Person::~Person() {
  while (!down_.empty())
    Up(*down_.begin());
}

void Person::Down(WORD key) {
  down_.insert(key);
  INPUT input = KeyInput(key, 0);
  SendInput(1, &input, sizeof input);
}

void Person::Up(WORD key) {
  down_.erase(key);
  INPUT input = KeyInput(key, KEYEVENTF_KEYUP);
  SendInput(1, &input, sizeof input);
}

void Person::Press(WORD key, WORD held) {
  if (held) Down(held);
  Down(key);
  Up(key);
  if (held) Up(held);
}

void Person::Type(const std::vector<WORD>& keys) {
  std::vector<INPUT> strokes;
  for (const WORD key : keys) {
    strokes.push_back(KeyInput(key, 0));
    strokes.push_back(KeyInput(key, KEYEVENTF_KEYUP));
  }
  SendInput(static_cast<UINT>(strokes.size()), strokes.data(), sizeof(INPUT));
}

void Person::Repeat(HWND form, WORD key, int times) {
  constexpr LPARAM kWasDown = 1L << 30;
  const LPARAM scan = static_cast<LPARAM>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC)) << 16;
  for (int i = 0; i < times; ++i)
    PostMessageW(FocusOf(form), WM_KEYDOWN, key, kWasDown | scan | 1);
}

// The window system may still report where the pointer was before; it must have come to rest.
void Person::MoveTo(POINT at) {
  constexpr int kRest = 4;
  int rested = 0;
  SetCursorPos(at.x, at.y);
  Await(
      [&] {
        POINT now{};
        GetCursorPos(&now);
        const bool there = now.x == at.x && now.y == at.y;
        if (!there) SetCursorPos(at.x, at.y);
        rested = there ? rested + 1 : 0;
        return rested == kRest;
      },
      "the pointer");
}

void Person::Click(HWND window) {
  ClickAt(Middle(window));
}

void Person::ClickAt(POINT at) {
  MoveTo(at);
  drive::ClickMouse(drive::MouseButton::Left, at);
}

void Person::Touch(HWND window) {
  constexpr ULONG_PTR kOfATouch = 0xFF515780;  // as the system marks the mouse of a finger
  MoveTo(Middle(window));
  Mouse(MOUSEEVENTF_LEFTDOWN, 0, kOfATouch);
  Mouse(MOUSEEVENTF_LEFTUP, 0, kOfATouch);
}

void Person::RightClickAt(POINT at) {
  MoveTo(at);
  drive::ClickMouse(drive::MouseButton::Right, at);
}

void Person::PointAway() {
  MoveTo({0, 0});
}

void Person::Turn(int notches) {
  Mouse(MOUSEEVENTF_WHEEL, static_cast<DWORD>(notches * WHEEL_DELTA));
}

void Person::Drag(HWND handle, int dx, int dy) {
  const HWND window = GetAncestor(handle, GA_ROOT);
  const POINT start = CornerOf(window);
  const POINT end{start.x + dx, start.y + dy};
  const POINT from = Middle(handle);
  const POINT to{from.x + dx, from.y + dy};
  TakeAlong(from, to);
  // A window that the manager has set back follows the next movement of the mouse.
  AwaitAtRest(window, end, [&] {
    MoveTo({to.x + 1, to.y});
    MoveTo(to);
  });
  Mouse(MOUSEEVENTF_LEFTUP);
  AwaitAtRest(window, end);
}

void Person::AwaitAtRest(HWND window, POINT at, const std::function<void()>& meanwhile) {
  constexpr int kLooksAtRest = 20;
  int looks = 0;
  Await(
      [&] {
        const POINT now = CornerOf(window);
        if (now.x == at.x && now.y == at.y) return ++looks == kLooksAtRest;
        looks = 0;
        meanwhile();
        return false;
      },
      "the window at rest at " + std::to_string(at.x) + "," + std::to_string(at.y));
}

void Person::DragTo(POINT from, POINT to, std::chrono::milliseconds rest) {
  TakeAlong(from, to);
  std::this_thread::sleep_for(rest);
  Mouse(MOUSEEVENTF_LEFTUP);
}

void Person::TakeAlong(POINT from, POINT to) {
  MoveTo(from);
  Mouse(MOUSEEVENTF_LEFTDOWN);
  constexpr int kSteps = 7;  // no divisor of usual distances, so every step rounds
  for (int i = 1; i <= kSteps; ++i)
    MoveTo({from.x + (to.x - from.x) * i / kSteps, from.y + (to.y - from.y) * i / kSteps});
}

// The end of the movement and the release are one input, however slow the machine is.
void Person::Push(POINT from, POINT to) {
  MoveTo(from);
  Mouse(MOUSEEVENTF_LEFTDOWN);
  MoveTo({(from.x + to.x) / 2, (from.y + to.y) / 2});
  drive::ReleaseMouse(drive::MouseButton::Left, to);
}

void Person::AwaitFocus(HWND window) {
  Await([&] { return FocusOf(GetAncestor(window, GA_ROOT)) == window; },
        "focus on " + ToUtf8(NameOf(window)));
}

void Person::AwaitRelease(HWND button) {
  Await([&] { return (SendMessageW(button, BM_GETSTATE, 0, 0) & BST_PUSHED) == 0; },
        "release of " + ToUtf8(NameOf(button)));
}

POINT CornerOf(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  return {place.left, place.top};
}

String NameOf(HWND window) {
  const auto atom = reinterpret_cast<ULONG_PTR>(GetPropW(window, L"KRXName"));
  std::array<wchar_t, 256> text{};
  if (!atom) return {};
  const UINT length =
      GlobalGetAtomNameW(static_cast<ATOM>(atom), text.data(), static_cast<int>(text.size()));
  return String(text.begin(), text.begin() + length);
}

String TextOf(HWND window) {
  std::array<wchar_t, 256> text{};
  const auto length =
      SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  return String(text.begin(), text.begin() + length);
}

HWND FocusOf(HWND form) {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  GetGUIThreadInfo(GetWindowThreadProcessId(form, nullptr), &info);
  return info.hwndFocus;
}

void RunWith(const std::function<void()>& call, const std::function<void(Person&)>& person) {
  const DWORD shown_by = GetCurrentThreadId();
  std::atomic<bool> over = false;
  std::string complaint;
  std::thread thread([&] {
    const win32::DpiScope scope;
    try {
      Person somebody;
      person(somebody);
    } catch (const std::exception& e) {
      complaint = e.what();
    }
    // A form that is still open would keep the test for ever.
    if (!Within([&] { return over.load(); })) complaint += " [form left open]";
    while (!over) {
      EnumThreadWindows(shown_by, CloseForm, 0);
      std::this_thread::sleep_for(kPoll);
    }
  });
  try {
    call();
  } catch (...) {
    over = true;
    thread.join();
    EXPECT_EQ(complaint, "");
    throw;
  }
  over = true;
  thread.join();
  EXPECT_EQ(complaint, "");
}

void ShowWith(ui::Form& form, const std::function<void(Person&)>& person) {
  RunWith([&] { form.ShowModal(); }, person);
}

}  // namespace krx::test
