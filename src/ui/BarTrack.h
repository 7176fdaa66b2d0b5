#pragma once

namespace krx::ui {

// The parts of a scroll bar, in pixels from its upper end, and what they do to the rows that it
// scrolls. What scrolls sideways counts pixels instead, and a level bar begins where its texts do.
class BarTrack {
 public:
  enum class Part { None, LineUp, PageUp, Thumb, PageDown, LineDown };
  struct Rows {
    int Count = 0;
    int Page = 0;  // that are in sight at once
    int Top = 0;
    int Line = 1;  // that an arrow goes on by
    // Whether there are more of them than can be seen.
    bool Scroll() const { return Page > 0 && Count > Page; }
    bool operator==(const Rows&) const = default;
  };

  // The arrows are squares; a bar that is too short for a thumb has none.
  BarTrack(int length, int width, int lowest_thumb, const Rows& rows);

  int Length() const { return length_; }
  int Arrow() const { return arrow_; }
  int ThumbTop() const { return thumb_; }
  int ThumbEnd() const { return thumb_ + thumb_length_; }
  Part At(int y) const;
  // The row that belongs at the top when a part is pressed.
  int After(Part part) const;
  // The row that belongs at the top when the thumb is dragged to a place.
  int TopFor(int thumb) const;

 private:
  int Within(int row) const;

  Rows rows_;
  int length_;
  int arrow_;
  int thumb_ = 0;
  int thumb_length_ = 0;
};

}  // namespace krx::ui
