#pragma once

#include <optional>
#include <string>

#include "driver/List.h"
#include "files/SampleTree.h"
#include "support/DialogTest.h"

namespace krx::drive {

// A call of a selection dialog; what a test does not name is passed empty.
struct SelectCall {
  std::wstring Method;  // "directory", "open" or "save"
  std::wstring Start = {};
  std::wstring Filter = {};
  std::wstring Name = {};
  bool Free = true;
  std::wstring Title = {};
};

// Base of the tests of the selection dialogs: a tree of their own on the machine's disk, and a
// client that passes and prints texts of any kind.
class FilesTest : public DialogTest {
 protected:
  void SetUp() override;

  std::wstring PathOf(const std::wstring& name) const;
  void AddFolder(const std::wstring& name) const;
  void AddFile(const std::wstring& name) const;

  // Starts the client with this call and waits for the dialog with its focus set.
  Window Open(const SelectCall& call);
  // What the client's call returned.
  std::wstring Result();

  // Waits until a control is shown or hidden.
  static void WaitUntilVisible(const Window& form, const std::wstring& control, bool visible);
  // Chooses the entry of a combo box that begins with a character.
  static void Choose(const Window& form, const std::wstring& combo, wchar_t beginning);
  // Presses the left button on the first row of the directory list, lets go of it on the list's
  // label, and comes back by the label's access key.
  static void PressFirstRowAndLeave(const Window& form);
  // All rows of a list once these are all it shows.
  static void ExpectRows(const Window& form, const std::wstring& list,
                         const std::vector<std::wstring>& rows);

  std::optional<test::SampleTree> Tree;
};

}  // namespace krx::drive
