// The stretch of time that a chart shows of a whole, as its user looks closer and moves along.
#pragma once

#include <algorithm>

namespace velmoor {

class ShownStretch {
 public:
  static constexpr double kShortest = 0.02;  // s

  // Of a whole from one time to another, which is shown at once.
  void SetWhole(double begin, double end) {
    begin_ = begin;
    end_ = std::max(end, begin + kShortest);
    ShowWhole();
  }
  void ShowWhole() {
    from_ = begin_;
    to_ = end_;
  }
  // Looks closer or farther around `time`, which stays where it is, and never beyond the whole.
  void Zoom(double time, double factor) {
    const double length = std::max((to_ - from_) * factor, kShortest);
    from_ = time - (time - from_) * length / (to_ - from_);
    to_ = from_ + length;
    KeepInside();
  }
  void Pan(double seconds) {
    from_ += seconds;
    to_ += seconds;
    KeepInside();
  }
  // Moves to a stretch that is out of sight. Where it is longer than what is looked at, its
  // beginning counts.
  void MoveTo(double from, double to) {
    if (from >= from_ && to <= to_) return;
    const double length = to_ - from_;
    from_ = std::max(from - std::max(length - (to - from), 0.0) / 2, begin_);
    to_ = from_ + length;
    KeepInside();
  }
  [[nodiscard]] double From() const { return from_; }
  [[nodiscard]] double To() const { return to_; }

 private:
  void KeepInside() {
    const double whole = end_ - begin_;
    const double length = std::clamp(to_ - from_, kShortest, whole);
    from_ = std::clamp(from_, begin_, end_ - length);
    to_ = from_ + length;
  }

  double begin_ = 0, end_ = 1;
  double from_ = 0, to_ = 1;
};

}  // namespace velmoor
