#include "ui/DriveListBox.h"

#include <algorithm>
#include <utility>

#include "base/Error.h"
#include "ui/Form.h"
#include "ui/Keyboard.h"
#include "ui/Platform.h"

namespace krx::ui {

namespace {

// An unreachable server would keep the dialog waiting, so network drives are not asked.
String LabelOf(folders::FileSystem& files, const folders::Drive& drive) {
  if (drive.Type == folders::DriveType::Network) return {};
  try {
    return files.DriveReady(drive.Path) ? files.VolumeLabel(drive.Path) : String();
  } catch (const Error&) {
    return {};
  }
}

String SmallDrive(StringView path) {
  String drive(path.substr(0, 2));
  if (!drive.empty()) drive[0] = AsciiLower(drive[0]);
  return drive;
}

}  // namespace

void DriveListBox::Choose(StringView path) {
  const int index = Find(path);
  if (index < 0) throw RuntimeError(68, u"Device unavailable");
  if (index != ListIndex()) Select(index);
}

String DriveListBox::Chosen() const {
  const int index = ListIndex();
  return index < 0 ? String() : drives_[static_cast<std::size_t>(index)];
}

DriveListBox::DriveListBox(Form& parent, String name) : ComboBox(parent, std::move(name)) {}

int DriveListBox::Find(StringView path) const {
  // "d" alone names a drive as well; a path that begins with a separator does not.
  String wanted = SmallDrive(path);
  if (wanted.size() == 1) wanted += u':';
  const auto found = std::find(drives_.begin(), drives_.end(), wanted);
  return found == drives_.end() ? -1 : static_cast<int>(found - drives_.begin());
}

void DriveListBox::Refresh() {
  folders::FileSystem& files = Parent().ThePlatform().Files();
  const std::vector<folders::Drive> drives = files.Drives();
  Clear();
  drives_.clear();
  for (const folders::Drive& drive : drives) {
    const String label = LabelOf(files, drive);
    drives_.push_back(SmallDrive(drive.Path));
    AddItem(label.empty() ? drives_.back() : drives_.back() + u" [" + label + u"]", kAtEnd);
  }
  const int current = Find(files.CurrentDirectory());
  if (current >= 0) Select(current);
}

}  // namespace krx::ui
