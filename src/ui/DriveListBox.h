#pragma once

#include "folders/FileSystem.h"
#include "ui/ComboBox.h"

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

  // Lists the machine's drives and chooses that of the current directory. Raises what the file
  // system raises; a label that cannot be read is left out.
  void Refresh();

 private:
  int Find(StringView path) const;

  std::vector<String> drives_;  // as Drive gives them, in the order of the entries
};

}  // namespace krx::ui
