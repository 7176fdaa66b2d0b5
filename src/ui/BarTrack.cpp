#include "ui/BarTrack.h"

#include <algorithm>
#include <cstdint>

namespace krx::ui {

namespace {

// So many parts of a length, to the nearest pixel or row.
int Share(int length, int part, int whole) {
  if (whole <= 0) return 0;
  return static_cast<int>((std::int64_t{length} * part + whole / 2) / whole);
}

}  // namespace

BarTrack::BarTrack(int length, int width, int lowest_thumb, const Rows& rows)
    : rows_(rows), length_(length), arrow_(std::max(std::min(width, length / 2), 0)) {
  const int room = length_ - 2 * arrow_;
  thumb_ = arrow_;
  if (!rows_.Scroll() || room < lowest_thumb) return;
  thumb_length_ = std::max(Share(room, rows_.Page, rows_.Count), lowest_thumb);
  thumb_ += Share(room - thumb_length_, Within(rows_.Top), rows_.Count - rows_.Page);
}

int BarTrack::Within(int row) const {
  return std::clamp(row, 0, std::max(rows_.Count - rows_.Page, 0));
}

BarTrack::Part BarTrack::At(int y) const {
  if (y < 0 || y >= length_) return Part::None;
  if (y < arrow_) return Part::LineUp;
  if (y >= length_ - arrow_) return Part::LineDown;
  if (thumb_length_ == 0) return Part::None;
  if (y < ThumbTop()) return Part::PageUp;
  return y < ThumbEnd() ? Part::Thumb : Part::PageDown;
}

int BarTrack::After(Part part) const {
  switch (part) {
    case Part::LineUp:
      return Within(rows_.Top - rows_.Line);
    case Part::LineDown:
      return Within(rows_.Top + rows_.Line);
    case Part::PageUp:
      return Within(rows_.Top - rows_.Page);
    case Part::PageDown:
      return Within(rows_.Top + rows_.Page);
    default:
      return Within(rows_.Top);
  }
}

int BarTrack::TopFor(int thumb) const {
  const int room = length_ - 2 * arrow_ - thumb_length_;
  return Within(
      Share(rows_.Count - rows_.Page, std::clamp(thumb - arrow_, 0, std::max(room, 0)), room));
}

}  // namespace krx::ui
