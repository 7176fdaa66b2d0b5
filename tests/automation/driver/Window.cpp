#include "driver/Window.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>

#include "driver/Input.h"

namespace krx::drive {

namespace {

BOOL CALLBACK AddToList(HWND handle, LPARAM list) {
  reinterpret_cast<std::vector<Window>*>(list)->emplace_back(handle);
  return TRUE;
}

std::vector<Window> TopLevelWindows() {
  std::vector<Window> windows;
  EnumWindows(AddToList, reinterpret_cast<LPARAM>(&windows));
  return windows;
}

HWND FocusOfThread(HWND window) {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  const DWORD thread = GetWindowThreadProcessId(window, nullptr);
  return thread && GetGUIThreadInfo(thread, &info) ? info.hwndFocus : nullptr;
}

template <class Matches>
Window WaitForTopLevel(const std::string& what, Milliseconds limit, Matches matches) {
  std::optional<Window> found;
  Within(limit, [&] {
    const auto windows = TopLevelWindows();
    const auto it = std::find_if(windows.begin(), windows.end(), [&](const Window& window) {
      return window.Visible() && matches(window);
    });
    if (it != windows.end()) found = *it;
    return found.has_value();
  });
  if (!found) throw std::runtime_error(what + " does not open");
  return *found;
}

}  // namespace

std::wstring Window::Name() const {
  const auto atom = static_cast<ATOM>(reinterpret_cast<ULONG_PTR>(GetPropW(handle_, L"KRXName")));
  std::array<wchar_t, 256> name{};
  if (!atom) return {};
  const UINT length = GlobalGetAtomNameW(atom, name.data(), static_cast<int>(name.size()));
  return {name.data(), length};
}

// A window that does not answer has no text. One that is busy is waited for like anything else.
std::wstring Window::Text() const {
  std::array<wchar_t, 8192> text{};
  DWORD_PTR length = 0;
  if (!SendMessageTimeoutW(handle_, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                           SMTO_NORMAL, static_cast<UINT>(kPatience.count()), &length))
    return {};
  return {text.data(), std::min<std::size_t>(length, text.size() - 1)};
}

RECT Window::Bounds() const {
  RECT bounds{};
  GetWindowRect(handle_, &bounds);
  return bounds;
}

POINT Window::Centre() const {
  const RECT bounds = Bounds();
  return {(bounds.left + bounds.right) / 2, (bounds.top + bounds.bottom) / 2};
}

bool Window::Focused() const {
  return FocusOfThread(handle_) == handle_;
}

std::vector<Window> Window::Descendants() const {
  std::vector<Window> windows;
  EnumChildWindows(handle_, AddToList, reinterpret_cast<LPARAM>(&windows));
  return windows;
}

std::optional<Window> Window::Find(const std::wstring& name) const {
  for (const Window& window : Descendants())
    if (window.Name() == name) return window;
  return std::nullopt;
}

Window Window::Child(const std::wstring& name) const {
  std::optional<Window> found;
  if (!Within(kPatience, [&] { return (found = Find(name)).has_value(); }))
    throw std::runtime_error("no control " + Narrow(name) + " on " + Narrow(Name()));
  return *found;
}

std::optional<Window> Window::FocusedChild() const {
  const HWND focus = FocusOfThread(handle_);
  if (!focus || !IsChild(handle_, focus)) return std::nullopt;
  return Window(focus);
}

void Window::WaitForFocusOn(const std::wstring& name) const {
  const auto has_focus = [&] {
    const auto child = FocusedChild();
    return child && child->Name() == name && GetForegroundWindow() == handle_;
  };
  if (Within(kPatience, has_focus)) return;
  const auto child = FocusedChild();
  throw std::runtime_error("the focus is not on " + Narrow(name) + " but on " +
                           (child ? Narrow(child->Name()) : "no control of the form"));
}

void Window::WaitForText(const std::wstring& text) const {
  if (!Within(kPatience, [&] { return Text() == text; }))
    throw std::runtime_error(Narrow(Name()) + " shows " + Narrow(Text()) + " instead of " +
                             Narrow(text));
}

void Window::WaitUntilActive() const {
  if (!Within(kPatience, [&] { return GetForegroundWindow() == handle_; }))
    throw std::runtime_error(Narrow(Name()) + " does not become active");
}

void Window::WaitUntilAtRest(const std::wstring& focus) const {
  constexpr int kLooks = 10;
  int looks = 0;
  const auto at_rest = [&] {
    const auto child = FocusedChild();
    const bool ours = GetForegroundWindow() == handle_ && child;
    looks = ours && (focus.empty() || child->Name() == focus) ? looks + 1 : 0;
    return looks == kLooks;
  };
  if (!Within(kPatience, at_rest))
    throw std::runtime_error(Narrow(Name()) + " does not come to rest" +
                             (focus.empty() ? "" : " on " + Narrow(focus)));
}

void Window::WaitUntilGone() const {
  if (!Within(kPatience, [&] { return !Visible(); }))
    throw std::runtime_error(Narrow(Name()) + " does not close");
}

void Window::Click() const {
  ClickMouse(MouseButton::Left, Centre());
}

std::vector<Window> Forms(const std::wstring& name) {
  std::vector<Window> forms;
  for (const Window& window : TopLevelWindows()) {
    const std::wstring own = window.Visible() ? window.Name() : std::wstring();
    if (!own.empty() && (name.empty() || own == name)) forms.push_back(window);
  }
  return forms;
}

std::vector<Window> WindowsOf(DWORD process) {
  std::vector<Window> windows = TopLevelWindows();
  std::erase_if(windows, [process](const Window& window) {
    DWORD owner = 0;
    GetWindowThreadProcessId(window.Handle(), &owner);
    return owner != process || !window.Visible();
  });
  return windows;
}

Window WaitForForm(const std::wstring& name, HWND before, Milliseconds limit) {
  return WaitForTopLevel(Narrow(name), limit, [&](const Window& window) {
    return window.Handle() != before && window.Name() == name;
  });
}

Window WaitForList(const Window& form) {
  const DWORD thread = GetWindowThreadProcessId(form.Handle(), nullptr);
  return WaitForTopLevel("a list of " + Narrow(form.Name()), kPatience, [&](const Window& window) {
    std::array<wchar_t, 16> name{};
    GetClassNameW(window.Handle(), name.data(), static_cast<int>(name.size()));
    return std::wstring_view(name.data()) == L"ComboLBox" &&
           GetWindowThreadProcessId(window.Handle(), nullptr) == thread;
  });
}

Window WaitForTitle(const std::wstring& title, Milliseconds limit) {
  return WaitForTopLevel("window " + Narrow(title), limit,
                         [&](const Window& window) { return window.Text() == title; });
}

std::string Narrow(const std::wstring& text) {
  const int wide = static_cast<int>(text.size());
  const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), wide, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), wide, narrow.data(), size, nullptr, nullptr);
  return narrow;
}

std::wstring Widen(const std::string& text) {
  const int narrow = static_cast<int>(text.size());
  const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), narrow, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(size), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), narrow, wide.data(), size);
  return wide;
}

}  // namespace krx::drive
