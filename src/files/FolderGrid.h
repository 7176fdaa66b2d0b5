#pragma once

#include "ui/RowList.h"

namespace krx::files {

// The touch grid of folders: a column of markers and one of names. The markers are seen as
// pictures.
class FolderGrid : public ui::KRXGrid {
 public:
  using KRXGrid::KRXGrid;

  Image RowImage(int row) const override;
  bool LeadsOn(int row) const override;
  StringView ShownCell(int row, int column) const override;
};

}  // namespace krx::files
