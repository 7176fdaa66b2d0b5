#pragma once

#include <array>

#include "files/TouchForm.h"

namespace krx::files {

// Selects a directory on a touch panel.
class FDirectorySelectTouch : public TouchForm {
 public:
  explicit FDirectorySelectTouch(service::Apartment& apartment);

  std::array<ui::Label, 3> lbl{{{*this, u"lbl(0)"}, {*this, u"lbl(1)"}, {*this, u"lbl(2)"}}};
  ui::TextBox& txtDirectory = path_;
  ui::KRXComboBox& cboDrives = drives_;

  bool AllowChangeUp = true;  // kept and not asked for: touch confines nobody; this is meant
  bool Confirmed = false;

  // The path as it is shown when OK is touched; empty after Cancel.
  String SelectDirectory(const String& start_directory, bool allow_change_up, const String& title);

 protected:
  void DriveNotReady() override;

 private:
  void LoadTexts();
  void CalcPositions();
};

}  // namespace krx::files
