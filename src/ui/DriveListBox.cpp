#include "ui/DriveListBox.h"

#include <algorithm>
#include <utility>

#include "base/Error.h"
#include "ui/Form.h"
#include "ui/Keyboard.h"
#include "ui/Platform.h"

namespace krx::ui {

namespace {

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

DriveListBox::DriveListBox(Form& parent, String name)
    : ComboBox(parent, std::move(name)), labels_(parent, u"tmrLabels") {}

bool DriveListBox::SameDrive(StringView one, StringView other) {
  return SmallDrive(one) == SmallDrive(other);
}

int DriveListBox::Find(StringView path) const {
  // "d" alone names a drive as well; a path that begins with a separator does not.
  String wanted = SmallDrive(path);
  if (wanted.size() == 1) wanted += u':';
  const auto found = std::find(drives_.begin(), drives_.end(), wanted);
  return found == drives_.end() ? -1 : static_cast<int>(found - drives_.begin());
}

void DriveListBox::Refresh() {
  folders::FileSystem& files = Parent().ThePlatform().Files();
  const std::vector<String> drives = files.Drives();
  labels_.Drop();
  Clear();
  drives_.clear();
  for (const String& drive : drives) {
    drives_.push_back(SmallDrive(drive));
    AddItem(drives_.back(), kAtEnd);
    AskLabel(static_cast<int>(drives_.size()) - 1);
  }
  const int current = Find(files.CurrentDirectory());
  if (current >= 0) Select(current);
}

void DriveListBox::AskLabel(int index) {
  const String drive = drives_[static_cast<std::size_t>(index)];
  labels_.AskWhenShown<folders::Drive>(
      [this, drive] { return Parent().ThePlatform().Files().AskDrive(drive); },
      [this, drive, index](const folders::Drive& known) {
        if (!known.Label.empty()) SetItem(index, drive + u" [" + known.Label + u"]");
      });
}

}  // namespace krx::ui
