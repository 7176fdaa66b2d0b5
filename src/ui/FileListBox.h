#pragma once

#include <cstdint>

#include "folders/FilePattern.h"
#include "ui/FolderReadings.h"
#include "ui/RowList.h"

namespace krx::ui {

// The file list: the files of a folder that match a pattern, in the file system's order. A large
// folder goes on growing while it is read.
class FileListBox : public RowList, private FolderReadings::Watcher {
  void Show(StringView path);
  const String& ShownPath() const { return path_; }
  void Filter(StringView pattern);
  const String& FilteringPattern() const { return pattern_text_; }

 public:
  FileListBox(Form& parent, String name, FolderReadings& readings);

  // Setting it shows a folder, by the reading that another list of the form has begun. One that
  // cannot be read is shown without files, and this raises Error.
  Accessor<FileListBox, &FileListBox::Show, &FileListBox::ShownPath> Path{*this};
  // See folders::FilePattern; "*.*" at first.
  Accessor<FileListBox, &FileListBox::Filter, &FileListBox::FilteringPattern> Pattern{*this};

  int RowCount() const override { return shown_; }
  StringView Cell(int row, int column) const override;
  Image RowImage(int) const override { return Image::File; }
  bool HasImages() const override { return true; }

 private:
  void ShowRows();
  void TakeOver();
  void ListingsGrew() override;

  FolderReadings& readings_;
  String path_;
  String pattern_text_ = u"*.*";
  folders::FilePattern pattern_;
  FolderReadings::Listing listing_;
  std::vector<std::uint32_t> matches_;  // positions in the listing; unused where all match
  std::size_t looked_at_ = 0;           // files of the listing
  int shown_ = 0;
};

}  // namespace krx::ui
