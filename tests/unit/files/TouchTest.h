#pragma once

#include "files/FDirectorySelectTouch.h"
#include "files/FFileSelectTouch.h"
#include "files/FilesTest.h"

namespace krx::test {

// Opens the touch dialogs as a client does, on the machine of the selection tests.
class TouchTest : public FilesTest {
 protected:
  String SelectDirectory(const String& start, Script script, const String& title = {}) {
    platform.Expect(u"FDirectorySelectTouch", std::move(script));
    return dialog->KRSelectDirectoryTouch({start, false, title});
  }
  String OpenFile(const service::FileRequest& request, Script script) {
    platform.Expect(u"FFileSelectTouch", std::move(script));
    return dialog->KROpenFileTouch(request);
  }

  // The rows of a grid, marker and name.
  static std::vector<std::string> Rows(Operator& op, StringView grid = u"grdFolders") {
    const auto& rows = op.Get<ui::KRXGrid>(grid);
    std::vector<std::string> shown;
    for (int row = 0; row < rows.RowCount(); ++row) {
      std::string text;
      for (int column = 0; column < static_cast<int>(rows.Columns().size()); ++column)
        text +=
            ToUtf8(rows.Cell(row, column)) + (column == 0 && rows.Columns().size() > 1 ? "|" : "");
      shown.push_back(text);
    }
    return shown;
  }
  static int RowOf(Operator& op, StringView name, StringView grid = u"grdFolders") {
    const auto& rows = op.Get<ui::KRXGrid>(grid);
    for (int row = 0; row < rows.RowCount(); ++row) {
      if (rows.Cell(row, rows.MainColumn()) == name) return row;
    }
    ADD_FAILURE() << "no row " << ToUtf8(name);
    return 0;
  }
  static void Touch(Operator& op, StringView name) { op.ClickRow(u"grdFolders", RowOf(op, name)); }
  static void Open(Operator& op, StringView name) {
    op.DoubleClickRow(u"grdFolders", RowOf(op, name));
  }
  static void TouchFile(Operator& op, StringView name) {
    op.ClickRow(u"grdFiles", RowOf(op, name, u"grdFiles"));
  }
  static String Selected(Operator& op, StringView grid = u"grdFolders") {
    const auto& rows = op.Get<ui::KRXGrid>(grid);
    return rows.SelectedRow() < 0 ? String()
                                  : String(rows.Cell(rows.SelectedRow(), rows.MainColumn()));
  }
};

}  // namespace krx::test
