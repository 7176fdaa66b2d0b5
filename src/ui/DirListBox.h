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
  // Error, and what was open stays so. One whose medium keeps its answer counts as open meanwhile.
  Accessor<DirListBox, &DirListBox::Open, &DirListBox::OpenPath> Path{*this};
  // Setting it moves the highlight alone; runtime error 381 when there is no such entry.
  Accessor<DirListBox, &DirListBox::HighlightEntry, &DirListBox::HighlightedEntry> ListIndex{*this};

  Event<> Change;  // Path is another one
  // A directory that counted as open cannot be opened after all; the one before it is open again.
  Event<const String&> Refused;
  Event<> FellBack;     // another one of the directories that OpenFirst was given is open now
  Event<> Highlighted;  // the highlight has moved to the entry that Highlight waited for

  // Opens the first of these directories that can be opened, as setting Path does. They are whole
  // paths in normal form.
  void OpenFirst(std::vector<String> paths) { Enter(readings_.Open(std::move(paths))); }
  // Opens what has been begun to be read.
  void OpenBegun(const FolderReadings::Listing& listing);
  // Whether the medium of the open directory keeps its answer.
  bool Opening() const { return listing_ && !listing_->Opened() && !listing_->Refusal(); }

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
  void Enter(FolderReadings::Listing listing);
  void Show(FolderReadings::Listing listing);
  void GoBack();
  void ListingsGrew() override;

  FolderReadings& readings_;
  String path_;
  std::vector<std::size_t> levels_;  // lengths of the ancestors' paths, and of path_
  FolderReadings::Listing listing_;
  FolderReadings::Listing before_;  // what was open before the one that keeps its answer
  int folders_ = 0;                 // that the list shows
  String wish_;                     // a name to be highlighted when it comes
  int wished_at_ = kNoRow;
};

}  // namespace krx::ui
