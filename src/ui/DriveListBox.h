#pragma once

#include "ui/ComboBox.h"
#include "ui/FileSystem.h"

namespace krx::ui {

// The drive list: the drives of the machine, each with the label of its volume. Change is raised
// when another drive is chosen.
class DriveListBox : public ComboBox {
 public:
  class DriveProperty {
   public:
    explicit DriveProperty(DriveListBox& list) : list_(list) {}
    // Chooses the drive that the text begins with, as the operator does; runtime error 68 when the
    // machine has no such drive.
    DriveProperty& operator=(StringView path);
    // Small letter and colon ("c:"); empty as long as the list is.
    String operator()() const;

   private:
    DriveListBox& list_;
  };

  DriveListBox(Form& parent, String name);

  DriveProperty Drive{*this};

  // Lists the machine's drives and chooses that of the current directory. Raises what the file
  // system raises; a label that cannot be read is left out.
  void Refresh();

 private:
  int Find(StringView path) const;

  std::vector<String> drives_;  // as Drive gives them, in the order of the entries
};

}  // namespace krx::ui
