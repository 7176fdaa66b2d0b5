#pragma once

#include <ostream>

#include "base/Geometry.h"

namespace krx {

// How the test library shows lengths when an expectation fails.
inline void PrintTo(const Size& size, std::ostream* out) {
  *out << size.Width << " x " << size.Height;
}
inline void PrintTo(const Rect& rect, std::ostream* out) {
  *out << "left " << rect.Left << " top " << rect.Top << " width " << rect.Width << " height "
       << rect.Height;
}

}  // namespace krx
