#pragma once

#include <windows.h>

#include <commctrl.h>  // builds on the one above

#include "ports/win32/Screen.h"
#include "ui/RowList.h"

namespace krx::win32 {

// The pictures before the rows of a list. Their height is that of a row: it is how the system's
// list learns how high its rows are to be.
class RowImages {
 public:
  RowImages() = default;
  ~RowImages();
  RowImages(const RowImages&) = delete;
  RowImages& operator=(const RowImages&) = delete;

  // Makes pictures for rows of this height in pixels, with room for them where `visible` asks for
  // it.
  HIMAGELIST Make(Scale scale, int row_height, bool visible);
  // Number of a picture in the list; I_IMAGENONE without one.
  static int Index(ui::RowList::Image image);

 private:
  HIMAGELIST list_ = nullptr;
};

}  // namespace krx::win32
