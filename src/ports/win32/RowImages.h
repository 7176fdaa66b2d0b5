#pragma once

#include <windows.h>

#include <commctrl.h>  // builds on the one above

#include <memory>
#include <type_traits>

#include "ports/win32/Screen.h"

namespace krx::win32 {

// The room for pictures before the rows of a list, which are drawn with the rows. Its height is
// that of a row: it is how the system's list learns how high its rows are to be.
class RowImages {
 public:
  static constexpr int kPicture = 16;  // pixels at 96 dpi, in both directions

  // Room for rows of this height in pixels, for pictures where `visible` asks for it.
  RowImages(Scale scale, int row_height, bool visible);
  // Whether these are the images that would be made so.
  bool Are(Scale scale, int row_height, bool visible) const {
    return scale == scale_ && row_height == row_height_ && visible == visible_;
  }

  HIMAGELIST List() const { return list_.get(); }

 private:
  struct Destroyer {
    void operator()(HIMAGELIST list) const { ImageList_Destroy(list); }
  };
  Scale scale_;
  int row_height_;
  bool visible_;
  std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, Destroyer> list_;
};

using SharedImages = std::shared_ptr<const RowImages>;

}  // namespace krx::win32
