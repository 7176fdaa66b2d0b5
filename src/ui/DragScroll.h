#pragma once

#include <deque>

#include "base/Geometry.h"

namespace krx::ui {

// Drags the rows of a list along with a finger or the mouse, and lets them glide on when they are
// let go in motion. Positions are twips from the list's upper edge, times milliseconds of any clock
// that does not go back.
class DragScroll {
 public:
  // A touch that moves less is a click: a finger never rests quite still.
  static constexpr Twips kClickTolerance = 120;  // 2 millimetres

  // What is dragged; the rows in sight are those that are completely so.
  struct List {
    Twips RowHeight = 0;
    int Rows = 0;
    int RowsInSight = 0;
  };

  // The list is touched. Touching a gliding list stops it, which is no click.
  void Begin(const List& list, int top_row, Twips y, double now);
  // The touch has moved; returns the row that belongs at the top.
  int Move(Twips y, double now);
  // The touch is over; afterwards the list may be gliding. True when it was a click.
  bool End(double now);
  // The row that belongs at the top while the list glides; ends the gliding in time.
  int Glide(double now);
  // Ends touch and gliding at once, without a click.
  void Stop();

  bool Touched() const { return state_ == State::Pressed || state_ == State::Dragged; }
  bool Dragging() const { return state_ == State::Dragged; }
  bool Gliding() const { return state_ == State::Gliding; }

 private:
  enum class State { Idle, Pressed, Dragged, Gliding };
  struct Sample {
    Twips Y;
    double Time;
  };

  void Note(Twips y, double now);
  double Speed(double now) const;
  int RowAt(double offset) const;
  double LastOffset() const;

  State state_ = State::Idle;
  List list_;
  Twips began_at_ = 0;
  double offset_ = 0;        // twips above the upper edge, when the touch or the gliding began
  double speed_ = 0;         // of the gliding when it began, twips of the list per millisecond
  double gliding_from_ = 0;  // its time
  int top_row_ = 0;
  std::deque<Sample> track_;  // the latest positions, for the speed
};

}  // namespace krx::ui
