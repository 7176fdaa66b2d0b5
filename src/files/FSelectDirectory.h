#pragma once

#include <array>

#include "files/MouseForm.h"
#include "service/FileRequest.h"

namespace krx::files {

// Lets the operator pick a directory, anywhere or confined to a start directory and below.
class FSelectDirectory : public MouseForm {
 public:
  explicit FSelectDirectory(service::Apartment& apartment);

  std::array<ui::Label, 3> lbl{{{*this, u"lbl(0)"}, {*this, u"lbl(1)"}, {*this, u"lbl(2)"}}};
  ui::TextBox txtDirectory{*this, u"txtDirectory"};

  // Shows the dialog and returns the chosen directory; empty when the operator gave up.
  String SelectDirectory(const service::DirectoryRequest& request);

  // Set-up, in the order in which SelectDirectory calls it. Fonts that cannot be had are left as
  // they are.
  void SetFonts();
  // An empty title is the language's own, an empty start directory the current one. A text that
  // cannot be had raises Error; a start directory that does not exist does not.
  void SetTexts(const String& start_directory, const String& title);
  void CalcPositions() override;

 private:
  std::span<ui::Label> Headings() override { return lbl; }
  void ShowEntry(const String& path) override { txtDirectory.Text = path; }
  void DriveChosen(const String& drive) override { txtDirectory.Text = drive.substr(0, 2); }
  String Chosen() const override { return txtDirectory.Text(); }
};

}  // namespace krx::files
