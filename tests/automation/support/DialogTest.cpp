#include "support/DialogTest.h"

#include <algorithm>

namespace krx::drive {

std::string Ask(int style) {
  return "WScript.Echo Dialogs.KRMsgBox(\"Text\", " + std::to_string(style) + ", \"Title\")\r\n";
}

void DialogTest::SetUp() {
  ASSERT_TRUE(Forms(L"").empty()) << "a dialog of an earlier test is open";
}

void DialogTest::TearDown() {
  client_.reset();
  EXPECT_TRUE(Within(kPatience, [] { return Forms(L"").empty(); }))
      << "a dialog outlives its client";
}

void DialogTest::RunPlainScript(const std::string& text, const wchar_t* extension) {
  script_.emplace(text, extension);
  RunCommand(script_->Command());
}

void DialogTest::RunScript(const std::string& body) {
  RunPlainScript(
      "Option Explicit\r\n"
      "Dim Dialogs, Runtime\r\n"
      "Set Runtime = CreateObject(\"KorvelRuntime.RuntimeSettings\")\r\n"
      "Runtime.Language = \"en\"\r\n"
      "Set Dialogs = CreateObject(\"KRXDialogs.KRXDialog\")\r\n" +
      body);
}

void DialogTest::RunProgram(const std::string& arguments) {
  RunCommand((ProgramFolder() / "").wstring() + Widen(arguments));
}

void DialogTest::RunCommand(const std::wstring& command_line) {
  client_ = std::make_unique<Client>(command_line);
  last_ = nullptr;
}

Window DialogTest::NextBox() {
  std::vector<Window> open;
  const auto opened = [&] {
    open = Forms(L"FMessageBox");
    std::erase_if(open, [&](const Window& form) { return form.Handle() == last_; });
    return !open.empty() || !client_->Running();
  };
  Within(kPatience, opened);
  if (open.empty()) throw std::runtime_error("no message box opens; the client printed: " + Said());
  const Window box = open.front();
  last_ = box.Handle();
  box.WaitUntilActive();
  // The focus is moved on the first paint; a key sent before would go astray.
  if (!VisibleButtons(box).empty() &&
      !Within(kPatience, [&] { return box.FocusedChild().has_value(); }))
    throw std::runtime_error("no control of the box gets the focus");
  return box;
}

std::string DialogTest::Said() {
  // The last lines of a client that has ended may still be on their way.
  if (!client_->Running()) client_->Finish();
  std::string text;
  for (const std::string& line : client_->Lines())
    text += line + '\n';
  return text;
}

Lines DialogTest::Printed() {
  EXPECT_EQ(client_->Finish(), 0u);
  return client_->Lines();
}

std::wstring Shown(const Window& control) {
  std::wstring text = control.Text();
  std::erase(text, L'&');
  return text;
}

std::vector<std::wstring> VisibleButtons(const Window& box) {
  std::vector<Window> keys;
  for (const Window& window : box.Descendants()) {
    const std::wstring name = window.Name();
    if (window.Visible() && (name.starts_with(L"keyButton") || name == L"keyHelp"))
      keys.push_back(window);
  }
  std::sort(keys.begin(), keys.end(),
            [](const Window& a, const Window& b) { return a.Bounds().left < b.Bounds().left; });
  std::vector<std::wstring> names;
  for (const Window& key : keys)
    names.push_back(key.Name());
  return names;
}

}  // namespace krx::drive
