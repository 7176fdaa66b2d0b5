#pragma once

#include "ui/FolderReadings.h"
#include "ui/RowList.h"

namespace krx::ui {

// The directory list: the open directory with its ancestors above and its subdirectories below it.
// Entry -1 is the open directory, -2, -3 ... are its ancestors up to the root, 0 and above its
// subdirectories in the file system's order. A large directory goes on growing while it is read.
class DirListBox : public RowList, private FolderReadings::Watcher {
  void Open(StringView path);
  const String& OpenPath() const { return path_; }
  void HighlightEntry(int entry);
  int HighlightedEntry() const;

 public:
  static constexpr int kOpenEntry = -1;

  DirListBox(Form& parent, String name, FolderReadings& readings);

  // Setting it opens a directory afresh and highlights it. When it cannot be opened this raises
  // Error, and what was open stays so.
  Accessor<DirListBox, &DirListBox::Open, &DirListBox::OpenPath> Path{*this};
  // Setting it moves the highlight alone; runtime error 381 when there is no such entry.
  Accessor<DirListBox, &DirListBox::HighlightEntry, &DirListBox::HighlightedEntry> ListIndex{*this};

  Event<> Change;       // Path is another one
  Event<> Highlighted;  // the highlight has moved to the entry that Highlight waited for

  // Number of subdirectories known so far.
  int ListCount() const { return folders_; }
  // Full path of an entry; empty where there is none.
  String List(int entry) const;

  // Highlights the subdirectory of this path. One that is not known yet is highlighted when the
  // reading brings it, unless the operator has moved the highlight by then.
  void Highlight(StringView path);

  int RowCount() const override { return OpenRow() + 1 + folders_; }
  StringView Cell(int row, int column) const override;
  Image RowImage(int row) const override;
  bool HasImages() const override { return true; }
  int Indent(int row) const override;

 private:
  int OpenRow() const { return static_cast<int>(levels_.size()) - 1; }
  bool HighlightFrom(int first);
  void ListingsGrew() override;

  FolderReadings& readings_;
  String path_;
  std::vector<std::size_t> levels_;  // lengths of the ancestors' paths, and of path_
  std::shared_ptr<const folders::FolderListing> listing_;
  int folders_ = 0;  // that the list shows
  String wish_;      // a name to be highlighted when it comes
  int wished_at_ = kNoRow;
};

}  // namespace krx::ui
