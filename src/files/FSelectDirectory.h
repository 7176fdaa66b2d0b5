#pragma once

#include <array>

#include "files/SelectForm.h"

namespace krx::files {

// Lets the operator pick a directory, anywhere or confined to a start directory and below.
class FSelectDirectory : public SelectForm {
 public:
  explicit FSelectDirectory(service::Apartment& apartment);

  std::array<ui::Label, 3> lbl{{{*this, u"lbl(0)"}, {*this, u"lbl(1)"}, {*this, u"lbl(2)"}}};
  ui::TextBox txtDirectory{*this, u"txtDirectory"};

  // Set-up, in this order. Fonts that cannot be had are left as they are.
  void SetFonts();
  // An empty title is the language's own, an empty start directory the current one. A text that
  // cannot be had raises Error; a start directory that does not exist does not.
  void SetTexts(const String& start_directory, const String& title);
  void CalcPositions();

 private:
  std::array<Heading, 3> Rows();
  void ShowEntry(const String& path) override { txtDirectory.Text = path; }
  void DriveChosen(const String& drive) override { txtDirectory.Text = drive.substr(0, 2); }
  String Chosen() const override { return txtDirectory.Text(); }
};

}  // namespace krx::files
