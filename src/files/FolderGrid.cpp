#include "files/FolderGrid.h"

#include "files/TouchPath.h"

namespace krx::files {

namespace {

constexpr int kMarkerColumn = 0;
constexpr int kNameColumn = 1;

}  // namespace

FolderGrid::Image FolderGrid::RowImage(int row) const {
  const StringView marker = Cell(row, kMarkerColumn);
  if (!marker.empty() && marker != kHasFolders) return Image::None;  // a notice
  return Cell(row, kNameColumn) == kParent ? Image::Parent : Image::Folder;
}

bool FolderGrid::LeadsOn(int row) const {
  return Cell(row, kMarkerColumn) == kHasFolders;
}

StringView FolderGrid::ShownCell(int row, int column) const {
  return column == kMarkerColumn && RowImage(row) != Image::None ? StringView() : Cell(row, column);
}

}  // namespace krx::files
