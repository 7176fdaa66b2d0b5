// A client bound early, with windows and timers of its own. Its argument says what it does; what
// it finds it prints, one fact per line.

#include <windows.h>

#include <functional>
#include <map>
#include <string>

#include "client/Dialogs.h"
#include "client/Report.h"

namespace {

using krx::client::Dialogs;
using krx::client::ErrorText;
using krx::client::Hex;
using krx::client::Say;

Dialogs* dialogs = nullptr;

long Ask(const wchar_t* text, long style) {
  long result = -1;
  const HRESULT status = dialogs->MsgBox(text, style, L"Client", result);
  if (FAILED(status)) Say("failed");
  return result;
}

void Answer() {
  switch (static_cast<KRMsgBoxResult>(Ask(L"Early", 4))) {
    case krYes:
      return Say("yes");
    case krNo:
      return Say("no");
    default:
      return Say("another result");
  }
}

HANDLE nested_wanted = nullptr;

void CALLBACK OpenNested(HWND, UINT, UINT_PTR timer, DWORD) {
  if (WaitForSingleObject(nested_wanted, 0) != WAIT_OBJECT_0) return;
  KillTimer(nullptr, timer);
  Say("nested " + std::to_string(Ask(L"Nested", 5)));
}

// A second box opens while the first one is up, from a timer that only the modal loop can run, once
// somebody who has seen the first one wants it.
void Nested() {
  nested_wanted = CreateEventW(nullptr, TRUE, FALSE, L"krx-nested-wanted");
  SetTimer(nullptr, 0, 10, OpenNested);
  Say("outer " + std::to_string(Ask(L"Outer", 4)));
  CloseHandle(nested_wanted);
}

HWND NewWindow(const wchar_t* title, DWORD style) {
  const HWND window = CreateWindowExW(0, L"STATIC", title, WS_OVERLAPPEDWINDOW | style, 50, 50, 300,
                                      150, nullptr, nullptr, nullptr, nullptr);
  return window;
}

std::string EnabledOrNot(HWND window) {
  return IsWindowEnabled(window) ? "enabled" : "disabled";
}

// Other windows of the thread, one of them disabled by the client itself before the box opens.
void Windows() {
  const HWND window = NewWindow(L"Client window", WS_VISIBLE);
  const HWND own_disabled = NewWindow(L"Disabled window", WS_VISIBLE | WS_DISABLED);
  const HWND edit = CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_BORDER, 10, 10, 200,
                                    30, window, nullptr, nullptr, nullptr);
  SetForegroundWindow(window);
  SetFocus(edit);
  Ask(L"Text", 0);
  Say("client window " + EnabledOrNot(window));
  Say("disabled window " + EnabledOrNot(own_disabled));
  Say(GetFocus() == edit ? "focus restored" : "focus lost");
  DestroyWindow(window);
  DestroyWindow(own_disabled);
}

void CALLBACK PostQuit(HWND, UINT, UINT_PTR timer, DWORD) {
  KillTimer(nullptr, timer);
  PostQuitMessage(7);
}

// The client is told to quit while a box is up; its own loop has to learn of it.
void Quit() {
  SetTimer(nullptr, 0, 10, PostQuit);
  Say("result " + std::to_string(Ask(L"Text", 4)));
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0)
    DispatchMessageW(&message);
  Say("quit " + std::to_string(message.wParam));
}

// Status and text of two failures.
void Failures() {
  long result = -1;
  Say("mismatch " + Hex(dialogs->MsgBox(L"Text", 256, L"Title", result)));
  Say(ErrorText().empty() ? "without text" : "with text");
  Say("no place for a host " + Hex((*dialogs)->SetHostApp(nullptr)));
}

const std::map<std::string, std::function<void()>> kModes{
    {"answer", Answer}, {"nested", Nested},     {"windows", Windows},
    {"quit", Quit},     {"failures", Failures},
};

}  // namespace

int main(int count, char** arguments) {
  const auto mode = kModes.find(count > 1 ? arguments[1] : "");
  if (mode == kModes.end()) return 2;
  const krx::client::Automation automation;
  Dialogs own;
  if (!own) return 3;
  dialogs = &own;
  mode->second();
  return 0;
}
