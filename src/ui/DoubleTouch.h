#pragma once

namespace krx::ui {

// Tells the second of two quick touches: a finger comes back to the row, hardly ever to the pixel.
// Times are milliseconds of any clock that does not go back.
class DoubleTouch {
 public:
  static constexpr double kTime = 500;  // from the begin of the one to that of the other

  // A touch of the row, begun at `began`, has been a click.
  void Clicked(int row, double began) {
    row_ = row;
    began_ = began;
  }
  void Forget() { row_ = kNone; }
  // Whether a touch of the row now is the second one.
  bool IsSecond(int row, double now) const {
    return row_ != kNone && row == row_ && now - began_ <= kTime;
  }

 private:
  static constexpr int kNone = -1;
  int row_ = kNone;
  double began_ = 0;
};

}  // namespace krx::ui
