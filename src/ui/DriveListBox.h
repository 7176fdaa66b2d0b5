#pragma once

#include "ui/ComboBox.h"
#include "ui/Questions.h"

namespace krx::ui {

// The drive list: the drives of the machine, each with the label of its volume. Change is raised
// when another drive is chosen.
class DriveListBox : public ComboBox {
  void Choose(StringView path);
  String Chosen() const;

 public:
  DriveListBox(Form& parent, String name);

  // Small letter and colon ("c:"); empty as long as the list is. Setting it chooses the drive that
  // the text begins with, as the operator does; runtime error 68 when the machine has no such
  // drive.
  Accessor<DriveListBox, &DriveListBox::Choose, &DriveListBox::Chosen> Drive{*this};

  // Whether two paths, or drives, begin with the same drive.
  static bool SameDrive(StringView one, StringView other);

  // Lists the machine's drives and chooses that of the current directory. Their labels follow when
  // the form is shown; one that cannot be read is left out. Raises what the file system raises.
  void Refresh();

 private:
  int Find(StringView path) const;
  void AskLabel(int index);

  std::vector<String> drives_;  // as Drive gives them, in the order of the entries
  Questions labels_;
};

}  // namespace krx::ui
