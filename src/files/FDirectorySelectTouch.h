#pragma once

#include <array>

#include "files/TouchForm.h"
#include "service/FileRequest.h"

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

  // Shows the dialog and returns the path as it is shown when OK is touched; empty after Cancel.
  String SelectDirectory(const service::DirectoryRequest& request);

 protected:
  void LoadLook() override;
  void LayOut() override;
  void DriveNotReady() override;
};

}  // namespace krx::files
