#pragma once

#include "ui/FolderListing.h"
#include "ui/RowList.h"

namespace krx::ui {

// The directory list: the open directory with its ancestors above and its subdirectories below it.
// Entry -1 is the open directory, -2, -3 ... are its ancestors up to the root, 0 and above its
// subdirectories in the file system's order. A large directory goes on growing while it is read.
class DirListBox : public RowList, private FolderReadings::Watcher {
 public:
  static constexpr int kOpenEntry = -1;

  class PathProperty {
   public:
    explicit PathProperty(DirListBox& list) : list_(list) {}
    // Opens a directory afresh and highlights it. When it cannot be opened this raises Error, and
    // what was open stays so.
    PathProperty& operator=(StringView path);
    const String& operator()() const { return list_.path_; }

   private:
    DirListBox& list_;
  };
  class ListIndexProperty {
   public:
    explicit ListIndexProperty(DirListBox& list) : list_(list) {}
    // Moves the highlight alone; runtime error 381 when there is no such entry.
    ListIndexProperty& operator=(int entry);
    int operator()() const;

   private:
    DirListBox& list_;
  };

  DirListBox(Form& parent, String name, FolderReadings& readings);

  PathProperty Path{*this};
  ListIndexProperty ListIndex{*this};

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
  void Open(StringView path);
  bool HighlightFrom(int first);
  void ListingsGrew() override;

  FolderReadings& readings_;
  String path_;
  std::vector<std::size_t> levels_;  // lengths of the ancestors' paths, and of path_
  std::shared_ptr<const FolderListing> listing_;
  int folders_ = 0;  // that the list shows
  String wish_;      // a name to be highlighted when it comes
  int wished_at_ = kNoRow;
};

}  // namespace krx::ui
