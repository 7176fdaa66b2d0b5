#include "files/FilesTest.h"

#include <stdexcept>

#include "access/Reader.h"
#include "driver/Input.h"

namespace krx::drive {

namespace {

String Units(const std::wstring& text) {
  return String(text.begin(), text.end());
}

// As the client's command line takes it apart again.
std::wstring Quoted(const std::wstring& argument) {
  std::wstring quoted = L"\"" + argument;
  for (auto last = argument.rbegin(); last != argument.rend() && *last == L'\\'; ++last)
    quoted += L'\\';
  return quoted + L'"';
}

}  // namespace

void FilesTest::SetUp() {
  DialogTest::SetUp();
  Tree.emplace();
}

std::wstring FilesTest::PathOf(const std::wstring& name) const {
  return Tree->WidePath(name);
}

void FilesTest::AddFolder(const std::wstring& name) const {
  Tree->AddFolder(Units(name));
}

void FilesTest::AddFile(const std::wstring& name) const {
  Tree->AddFile(Units(name));
}

Window FilesTest::Open(const SelectCall& call) {
  std::wstring command = (ProgramFolder() / "file_client.exe").wstring();
  for (const std::wstring& argument : {call.Method, call.Start, call.Filter, call.Name,
                                       std::wstring(call.Free ? L"free" : L"confined"), call.Title})
    command += L' ' + Quoted(argument);
  RunCommand(command);
  const bool directory = call.Method == L"directory";
  const Window form = WaitForForm(directory ? L"FSelectDirectory" : L"FFileSelect");
  form.WaitUntilActive();
  form.WaitForFocusOn(directory ? L"dirSelect" : L"txtFileName");
  return form;
}

std::wstring FilesTest::Result() {
  const Lines lines = Printed();
  if (lines.size() != 1) throw std::runtime_error("the client printed no result");
  const std::string& line = lines.front();
  if (line.size() < 2 || line.front() != '[') throw std::runtime_error("the call failed: " + line);
  return Widen(line.substr(1, line.size() - 2));
}

void FilesTest::WaitUntilVisible(const Window& form, const std::wstring& control, bool visible) {
  EXPECT_TRUE(Within(kPatience, [&] {
    const auto found = form.Find(control);
    return (found && found->Visible()) == visible;
  })) << Narrow(control);
}

void FilesTest::Choose(const Window& form, const std::wstring& combo, wchar_t beginning) {
  // A second click in the same place would be a double click, so the keyboard does it then.
  const bool focused = form.Child(combo).Focused();
  if (!focused) {
    form.Child(combo).Click();
    WaitForList(form);
  }
  TypeText(std::wstring(1, beginning));
  if (!focused) PressKey(L"Enter");
}

void FilesTest::PressFirstRowAndLeave(const Window& form) {
  const List list(form, L"dirSelect");
  const Heading heading = HeadingOf(form, L"dirSelect");
  constexpr int kToTheTop = 10;
  TurnWheel(kToTheTop, form.Child(L"dirSelect").Centre());
  if (!Within(kPatience, [&] { return list.Top() == 0; }))
    throw std::runtime_error("the list does not scroll to its top");
  const RECT row = list.RowBounds(0);
  DragMouse(MouseButton::Left, {row.left + 30, (row.top + row.bottom) / 2}, heading.Centre);
  PressKey(heading.Key);
  form.WaitForFocusOn(L"dirSelect");
}

void FilesTest::ExpectRows(const Window& form, const std::wstring& list,
                           const std::vector<std::wstring>& rows) {
  // A list that changes while it is read may lose a row that was there just before.
  const List shown(form, list);
  std::vector<std::wstring> found;
  Within(kPatience, [&] {
    try {
      found = shown.Column(0);
    } catch (const std::runtime_error&) {
      return false;
    }
    return found == rows;
  });
  EXPECT_EQ(found, rows);
}

}  // namespace krx::drive
