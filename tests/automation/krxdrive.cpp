// Drives dialogs of other processes by hand or from a shell script: finds windows by their names
// and sends them real input. Without arguments it reads one command per line from its input and
// answers each with one line, "ok ..." or "error ...".

#include <windows.h>

#include <algorithm>
#include <functional>
#include <iostream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>

#include "driver/Input.h"
#include "driver/Window.h"

namespace {

using krx::drive::Narrow;
using krx::drive::Widen;
using krx::drive::Window;

constexpr const char* kUsage =
    "wait FORM         waits for a form and makes it the current one\n"
    "next [SECONDS]    waits for another form than the current one\n"
    "gone              waits until the current form has closed\n"
    "away              moves the pointer off every form\n"
    "click CONTROL     clicks in the middle of a control of the current form\n"
    "hold CONTROL      presses the button in the middle of a control and keeps it down\n"
    "key NAME          presses a key: Enter, Esc, Tab, Shift+Tab, Alt+y, ...\n"
    "type TEXT         types a text\n"
    "rect [CONTROL]    prints left, top, width and height in pixels\n"
    "read CONTROL      prints the text of a control, line breaks as \\n\n"
    "has CONTROL       prints yes when the control is visible, else no\n"
    "list              waits for an open list and prints how far it hangs below the form\n"
    "dump              prints every window of the current form\n";

HWND current = nullptr;

Window Current() {
  if (current && IsWindow(current)) return Window(current);
  const auto forms = krx::drive::Forms(L"");
  if (forms.empty()) throw std::runtime_error("no form is open");
  current = forms.front().Handle();
  return forms.front();
}

std::string Escaped(const std::wstring& text) {
  std::string line;
  for (const char c : Narrow(text)) {
    if (c == '\n') line += "\\n";
    if (c != '\n' && c != '\r') line += c;
  }
  return line;
}

std::string Rectangle(const Window& window) {
  const RECT r = window.Bounds();
  std::ostringstream line;
  line << r.left << ' ' << r.top << ' ' << r.right - r.left << ' ' << r.bottom - r.top;
  return line.str();
}

std::string Describe(const Window& window) {
  return Escaped(window.Name()) + " [" + Rectangle(window) + "]" +
         (window.Visible() ? "" : " hidden") + (window.Enabled() ? "" : " disabled") +
         (window.Focused() ? " focused" : "") + " '" + Escaped(window.Text()) + "'";
}

std::string Next(const std::string& seconds) {
  using krx::drive::Milliseconds;
  const auto limit =
      seconds.empty() ? krx::drive::kPatience : Milliseconds(std::stoi(seconds) * 1000);
  const HWND before = current;
  const auto opened = [before] {
    for (const Window& form : krx::drive::Forms(L""))
      if (form.Handle() != before) current = form.Handle();
    return current != before;
  };
  if (!krx::drive::Within(limit, opened)) throw std::runtime_error("no other form opens");
  return Narrow(Current().Name());
}

std::string Dump(const std::string&) {
  std::string lines = Describe(Current());
  for (const Window& window : Current().Descendants())
    lines += "\n  " + Describe(window);
  return lines;
}

std::string Wait(const std::string& form) {
  current = krx::drive::WaitForForm(Widen(form)).Handle();
  return {};
}

std::string Gone(const std::string&) {
  if (current) Window(current).WaitUntilGone();
  return {};
}

std::string Has(const std::string& control) {
  const auto found = Current().Find(Widen(control));
  return found && found->Visible() ? "yes" : "no";
}

std::string Away(const std::string&) {
  krx::drive::MoveMouse({0, 0});
  return {};
}

std::string Click(const std::string& control) {
  Current().Child(Widen(control)).Click();
  return {};
}

std::string Key(const std::string& name) {
  Current().WaitUntilActive();
  krx::drive::PressKey(Widen(name));
  return {};
}

std::string Type(const std::string& text) {
  Current().WaitUntilActive();
  krx::drive::TypeText(Widen(text));
  return {};
}

std::string Rect(const std::string& control) {
  return Rectangle(control.empty() ? Current() : Current().Child(Widen(control)));
}

std::string Read(const std::string& control) {
  return Escaped(Current().Child(Widen(control)).Text());
}

std::string List(const std::string&) {
  const LONG below = krx::drive::WaitForList(Current()).Bounds().bottom - Current().Bounds().bottom;
  return std::to_string(std::max(below, 0L));
}

std::string Hold(const std::string& name) {
  krx::drive::PressMouse(krx::drive::MouseButton::Left, Current().Child(Widen(name)).Centre());
  return {};
}

std::string Run(const std::string& command) {
  static const std::map<std::string, std::function<std::string(const std::string&)>> commands{
      {"wait", Wait}, {"next", Next}, {"gone", Gone}, {"click", Click}, {"away", Away},
      {"key", Key},   {"type", Type}, {"rect", Rect}, {"read", Read},   {"has", Has},
      {"list", List}, {"dump", Dump}, {"hold", Hold},
  };
  const auto space = command.find(' ');
  const auto it = commands.find(command.substr(0, space));
  if (it == commands.end())
    throw std::runtime_error("unknown command; there are:\n" + std::string(kUsage));
  return it->second(space == std::string::npos ? std::string() : command.substr(space + 1));
}

bool Answer(const std::string& command) {
  try {
    std::cout << ("ok " + Run(command)) << std::endl;
    return true;
  } catch (const std::exception& error) {
    std::cout << "error " << error.what() << std::endl;
    return false;
  }
}

}  // namespace

int main(int count, char** arguments) {
  SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
  if (count > 1) {
    std::string command = arguments[1];
    for (int i = 2; i < count; ++i)
      command += std::string(" ") + arguments[i];
    return Answer(command) ? 0 : 1;
  }
  for (std::string command; std::getline(std::cin, command);) {
    if (!command.empty() && command.back() == '\r') command.pop_back();
    Answer(command);
  }
}
