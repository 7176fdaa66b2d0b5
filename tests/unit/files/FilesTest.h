#pragma once

#include "files/FFileSelect.h"
#include "files/FSelectDirectory.h"
#include "support/DialogTest.h"
#include "ui/Keyboard.h"

namespace krx::test {

// Opens the selection dialogs as a client does. The machine has C: (label SYSTEM, in use) with
// C:\Data\{Alpha, Logs\{Old}, Zeta} and C:\Windows, the empty drive D:, and E:, which is not ready.
class FilesTest : public DialogTest {
 protected:
  using Operator = headless::Operator;
  using Script = headless::HeadlessPlatform::Script;

  FilesTest() {
    machine.RemoveDrive(u"C:");
    machine.AddDrive(u"C:", folders::DriveType::Fixed, true, u"SYSTEM");
    machine.AddDrive(u"D:", folders::DriveType::Removable);
    machine.AddDrive(u"E:", folders::DriveType::Optical, false);
    for (const StringView folder : {u"C:\\Data\\Alpha", u"C:\\Data\\Logs\\Old", u"C:\\Data\\Zeta",
                                    u"C:\\Windows", u"D:\\Backup"}) {
      machine.AddFolder(folder);
    }
    for (const StringView file :
         {u"C:\\boot.ini", u"C:\\Data\\readme.txt", u"C:\\Data\\plan.bmp", u"C:\\Data\\notes.TXT",
          u"C:\\Data\\Logs\\today.log", u"C:\\Windows\\secret.txt"}) {
      machine.AddFile(file);
    }
  }

  String SelectDirectory(const service::DirectoryRequest& request, Script script) {
    platform.Expect(u"FSelectDirectory", std::move(script));
    return dialog->KRSelectDirectory(request);
  }
  String OpenFile(const service::FileRequest& request, Script script) {
    platform.Expect(u"FFileSelect", std::move(script));
    return dialog->KROpenFile(request);
  }
  String SaveFile(const service::FileRequest& request, Script script) {
    platform.Expect(u"FFileSelect", std::move(script));
    return dialog->KRSaveFileAs(request);
  }

  // The directory list's row of a full path; the test fails when there is none.
  static int RowOf(const ui::DirListBox& list, StringView path) {
    for (int row = 0; row < list.RowCount(); ++row) {
      if (PathAt(list, row) == path) return row;
    }
    ADD_FAILURE() << "no row " << ToUtf8(path);
    return 0;
  }
  // Rows stand in the order of the entries, the last row being the last entry.
  static String PathAt(const ui::DirListBox& list, int row) {
    return list.List(row - (list.RowCount() - list.ListCount()));
  }
  static void ClickDirectory(Operator& op, StringView path) {
    op.ClickRow(u"dirSelect", RowOf(op.Get<ui::DirListBox>(u"dirSelect"), path));
  }
  static std::vector<std::string> FilesShown(const ui::FileListBox& list) {
    std::vector<std::string> names;
    for (int row = 0; row < list.RowCount(); ++row)
      names.push_back(ToUtf8(list.Cell(row, 0)));
    return names;
  }
  static String TextOf(Operator& op, StringView name) { return op.Get<ui::TextBox>(name).Text(); }

  headless::SimulatedFiles& machine = platform.Machine;
};

}  // namespace krx::test
