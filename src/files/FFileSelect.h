#pragma once

#include <array>

#include "files/MouseForm.h"
#include "service/FileRequest.h"
#include "ui/FileListBox.h"

namespace krx::files {

// Lets the operator pick a file to open or a name to save under.
class FFileSelect : public MouseForm {
 public:
  explicit FFileSelect(service::Apartment& apartment);

  std::array<ui::Label, 4> lbl{
      {{*this, u"lbl(0)"}, {*this, u"lbl(1)"}, {*this, u"lbl(2)"}, {*this, u"lbl(3)"}}};
  ui::TextBox txtFileName{*this, u"txtFileName"};
  ui::FileListBox filSelect{*this, u"filSelect", readings_};
  // The second one is never shown; it holds the pattern of each description of the first.
  std::array<ui::ComboBox, 2> cboFileType{{{*this, u"cboFileType(0)"}, {*this, u"cboFileType(1)"}}};

  // Shows the dialog and returns the chosen path; empty when the operator gave up.
  String SelectFile(const service::FileRequest& request, service::FileDialogKind kind);

  // Set-up, in the order in which SelectFile calls it. Fonts that cannot be had are left as they
  // are.
  void SetFonts();
  // An empty title is the language's own, an empty start directory the current one. A text that
  // cannot be had raises Error; a start directory that does not exist does not.
  void SetTexts(const String& file_name, const String& start_directory, const String& title,
                std::int32_t file_dialog);
  // Description and pattern pairs parted by "|"; a text that begins with "@" is resolved first.
  void SetFilter(const String& filter);
  void CalcPositions() override;

 private:
  std::span<ui::Label> Headings() override { return lbl; }
  void ShowEntry(const String& path) override;
  void DriveChosen(const String& drive) override;
  String Chosen() const override { return filSelect.Path() + u'\\' + txtFileName.Text(); }

  void FileTypeClick();
  void FileClick();
  void ChooseFile();
};

}  // namespace krx::files
