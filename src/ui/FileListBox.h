#pragma once

#include <cstdint>

#include "ui/FilePattern.h"
#include "ui/FolderListing.h"
#include "ui/RowList.h"

namespace krx::ui {

// The file list: the files of a folder that match a pattern, in the file system's order. A large
// folder goes on growing while it is read.
class FileListBox : public RowList, private FolderReadings::Watcher {
 public:
  class PathProperty {
   public:
    explicit PathProperty(FileListBox& list) : list_(list) {}
    // Shows a folder, by the reading that another list of the form has begun. One that cannot be
    // read is shown without files, and this raises Error.
    PathProperty& operator=(StringView path);
    const String& operator()() const { return list_.path_; }

   private:
    FileListBox& list_;
  };
  class PatternProperty {
   public:
    explicit PatternProperty(FileListBox& list) : list_(list) {}
    PatternProperty& operator=(StringView pattern);
    const String& operator()() const { return list_.pattern_text_; }

   private:
    FileListBox& list_;
  };

  FileListBox(Form& parent, String name, FolderReadings& readings);

  PathProperty Path{*this};
  PatternProperty Pattern{*this};  // see FilePattern; "*.*" at first

  int RowCount() const override { return shown_; }
  StringView Cell(int row, int column) const override;
  Image RowImage(int) const override { return Image::File; }
  bool HasImages() const override { return true; }

 private:
  void Show(StringView path);
  void ShowRows();
  void TakeOver();
  void ListingsGrew() override;

  FolderReadings& readings_;
  String path_;
  String pattern_text_ = u"*.*";
  FilePattern pattern_;
  std::shared_ptr<const FolderListing> listing_;
  std::vector<std::uint32_t> matches_;  // positions in the listing; unused where all match
  std::size_t looked_at_ = 0;           // files of the listing
  int shown_ = 0;
};

}  // namespace krx::ui
