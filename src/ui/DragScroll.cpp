#include "ui/DragScroll.h"

#include <algorithm>
#include <cmath>

namespace krx::ui {

namespace {

constexpr double kTrack = 100;    // milliseconds of the movement that make the speed
constexpr double kRest = 60;      // held still so long before the end, nothing glides
constexpr double kDecay = 325;    // milliseconds in which the speed falls to 37 percent
constexpr double kSlowest = 0.4;  // twips per millisecond (0.7 mm in 100 ms); slower is standing
constexpr double kFastest = 30;   // about 5 cm in 100 ms, so one push crosses a few screens

}  // namespace

void DragScroll::Begin(const List& list, int top_row, Twips y, double now) {
  state_ = Gliding() ? State::Dragged : State::Pressed;
  list_ = list;
  began_at_ = y;
  top_row_ = top_row;
  offset_ = static_cast<double>(top_row) * list.RowHeight;
  track_.clear();
  Note(y, now);
}

int DragScroll::Move(Twips y, double now) {
  if (!Touched()) return top_row_;
  Note(y, now);
  if (std::abs(y - began_at_) > kClickTolerance) state_ = State::Dragged;
  if (!Dragging()) return top_row_;
  const double wanted = offset_ + (began_at_ - y);
  const double at = std::clamp(wanted, 0.0, LastOffset());
  // Pulled beyond an end the rows come back with the finger at once, not from where they stopped.
  began_at_ -= static_cast<Twips>(wanted - at);
  return top_row_ = RowAt(at);
}

bool DragScroll::End(double now) {
  const bool click = state_ == State::Pressed;
  if (!Dragging()) {
    Stop();
    return click;
  }
  speed_ = Speed(now);
  offset_ = std::clamp(offset_ + (began_at_ - track_.back().Y), 0.0, LastOffset());
  gliding_from_ = now;
  state_ = std::abs(speed_) > kSlowest ? State::Gliding : State::Idle;
  return false;
}

// The speed decays exponentially, so the way is speed * decay * (1 - e^(-time/decay)).
int DragScroll::Glide(double now) {
  if (!Gliding()) return top_row_;
  const double remaining = std::exp(-(now - gliding_from_) / kDecay);
  const double at = offset_ + speed_ * kDecay * (1 - remaining);
  top_row_ = RowAt(at);
  const bool at_end = speed_ < 0 ? at <= 0 : at >= LastOffset();
  if (at_end || std::abs(speed_) * remaining <= kSlowest) Stop();
  return top_row_;
}

void DragScroll::Stop() {
  state_ = State::Idle;
  track_.clear();
}

void DragScroll::Note(Twips y, double now) {
  track_.push_back({y, now});
  while (track_.size() > 2 && now - track_.front().Time > kTrack)
    track_.pop_front();
}

double DragScroll::Speed(double now) const {
  const Sample& first = track_.front();
  const Sample& last = track_.back();
  if (now - last.Time > kRest || last.Time <= first.Time) return 0;
  return std::clamp((first.Y - last.Y) / (last.Time - first.Time), -kFastest, kFastest);
}

int DragScroll::RowAt(double offset) const {
  if (list_.RowHeight <= 0) return top_row_;
  return static_cast<int>(
      std::lround(std::clamp(offset, 0.0, LastOffset()) / static_cast<double>(list_.RowHeight)));
}

double DragScroll::LastOffset() const {
  return static_cast<double>(std::max(list_.Rows - list_.RowsInSight, 0)) * list_.RowHeight;
}

}  // namespace krx::ui
