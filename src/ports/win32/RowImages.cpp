#include "ports/win32/RowImages.h"

#include <algorithm>

namespace krx::win32 {

RowImages::RowImages(Scale scale, int row_height, bool visible)
    : scale_(scale), row_height_(row_height), visible_(visible) {
  const int size = visible ? scale.Thickness(kPicture) : 1;
  list_.reset(ImageList_Create(size, std::max(row_height, size), ILC_COLOR, 0, 1));
}

}  // namespace krx::win32
