#include <algorithm>

#include "base/String.h"
#include "failures/Calls.h"
#include "ui/DirListBox.h"
#include "ui/DriveListBox.h"
#include "ui/Keyboard.h"

namespace krx::test {

namespace {

using headless::Operator;

const StringView kLogs = u"C:\\Data\\The logs of all pumps";

// Whatever an operator can do, as far as the lists that came about allow it; he ends in the folder
// where he began.
void Wander(Operator& op) {
  auto& list = op.Get<ui::DirListBox>(u"dirSelect");
  auto& drives = op.Get<ui::DriveListBox>(u"drvSelect");
  for (const int drive : {1, 2, 0}) {
    if (drive < static_cast<int>(drives.Items().size())) drives.Select(drive);
  }
  if (list.Visible()) {
    list.SetFocus();
    for (const int key : {ui::kKeyHome, ui::kKeyDown, ui::kKeyRight, ui::kKeyDown, ui::kKeyRight,
                          ui::kKeyLeft, ui::kKeyEnd, ui::kKeyUp})
      op.Press(key);
    for (int row = 0; row < std::min(list.RowCount(), 2); ++row)
      op.ClickRow(u"dirSelect", row);
  }
  op.Click(u"keyOK");
}

// The same at a grid; a file is selected where there are some.
void WanderByTouch(Operator& op) {
  const bool files = op.Form().Find(u"grdFiles") != nullptr;
  auto& drives = op.Get<ui::KRXComboBox>(files ? u"cboDrivers" : u"cboDrives");
  auto& folders = op.Get<ui::KRXGrid>(u"grdFolders");
  const auto open = [&](int row) {
    if (row >= 0 && row < folders.RowCount() && folders.Enabled())
      op.DoubleClickRow(u"grdFolders", row);
  };
  open(folders.RowCount() - 1);
  open(0);
  for (const int drive : {2, 1, 0}) {
    if (drive < static_cast<int>(drives.Items().size())) drives.Select(drive);
    open(0);
  }
  if (files) {
    auto& types = op.Get<ui::KRXComboBox>(u"cboExtention");
    for (int i = 0; i < static_cast<int>(types.Items().size()); ++i)
      types.Select(i);
    if (op.Get<ui::KRXGrid>(u"grdFiles").RowCount() > 0) op.ClickRow(u"grdFiles", 0);
  }
  op.Click(op.Get(u"keyOK").Enabled() ? u"keyOK" : u"keyCancel");
}

service::FileRequest Request() {
  return {u"name", String(kLogs), u"@Text files|*.txt|All files of the plant|*", true, {}};
}

template <class Method, class Request>
PlantCall Selecting(std::string name, String form, headless::HeadlessPlatform::Script script,
                    Method method, Request request) {
  return {std::move(name), [form, script](Plant& plant) { plant.Platform.Expect(form, script); },
          [method, request](Plant& plant) { return ToUtf8(((*plant.Dialog).*method)(request)); }};
}

}  // namespace

std::vector<PlantCall> FileCalls() {
  using service::KRXDialog;
  const service::DirectoryRequest folder{String(kLogs), true, u"Where the logs are kept"};
  return {
      Selecting("KRSelectDirectory", u"FSelectDirectory", Wander, &KRXDialog::KRSelectDirectory,
                folder),
      Selecting("KRSelectDirectoryTouch", u"FDirectorySelectTouch", WanderByTouch,
                &KRXDialog::KRSelectDirectoryTouch, folder),
      Selecting("KRSaveFileAs", u"FFileSelect", Wander, &KRXDialog::KRSaveFileAs, Request()),
      Selecting("KROpenFile", u"FFileSelect", Wander, &KRXDialog::KROpenFile, Request()),
      Selecting("KROpenFileTouch", u"FFileSelectTouch", WanderByTouch, &KRXDialog::KROpenFileTouch,
                Request()),
  };
}

}  // namespace krx::test
