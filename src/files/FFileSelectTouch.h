#pragma once

#include <set>

#include "files/TouchForm.h"
#include "service/FileRequest.h"

namespace krx::files {

// Selects a file on a touch panel.
class FFileSelectTouch : public TouchForm {
 public:
  explicit FFileSelectTouch(service::Apartment& apartment);

  ui::Label lblPathName{*this, u"lblPathName"};
  ui::TextBox& txtPath = path_;
  ui::TextBox txtFullPath{*this, u"txtFullPath"};
  ui::Label lblDrivers{*this, u"lblDrivers"};
  ui::KRXComboBox& cboDrivers = drives_;
  ui::Label lblExtention{*this, u"lblExtention"};
  ui::KRXComboBox cboExtention{*this, u"cboExtention"};
  ui::KRXGrid grdFiles{*this, u"grdFiles"};
  ui::KRXIndex idxFileListBox{*this, u"idxFileListBox"};

  // Shows the dialog and returns the chosen path; empty when the operator gave up. Touch confines
  // nobody: whether he may change up is not asked; this is meant.
  String OpenFile(const service::FileRequest& request);

  // Texts and start position; `file_dialog` is 0 to open and 1 to save. A failing text raises
  // Error.
  void SetTexts(const String& file_name, const String& start_directory, const String& title,
                std::int32_t file_dialog);
  // Fills the list of file types from description|pattern pairs and selects the first one.
  void SetFilter(const String& filter);
  // The chosen path; empty until OK, after Cancel, and for OK without a file.
  const String& FileName() const { return result_; }

  // Takes over the extensions of an entry of the file types and lists the files anew.
  void ReadExtention(const String& entry);
  // Whether the chosen file type shows a file of this name.
  bool FilterFile(StringView file_name);
  void RefreshPath(StringView folder) override;
  void GetFiles();
  // Shows the path of a file, or that of the folder for the empty name.
  void RefreshFullPath(StringView file_name);
  void SelectFile(StringView file_name);

 protected:
  void LoadLook() override;
  void LayOut() override;
  void PathReplaced() override;
  void PathShown() override;
  void StartShown() override;
  void DriveNotReady() override;
  void FoldersFailed(const Error& error) override;
  void ReadingGrew() override;

 private:
  String Extension(StringView name) const;
  void FileTouched(int row);
  void TakeFiles();

  Listing shown_;          // its files are shown
  std::size_t taken_ = 0;  // of them
  String wish_;            // a file to be selected when it comes
  String file_name_;
  String result_;
  std::set<String> extensions_;  // lower case, or "*.*" alone
};

}  // namespace krx::files
