// Recordings laid over each other: their curves over one time axis, and their figures side by side.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/TimeChart.h"
#include "recordings/Recording.h"
#include "recordings/RecordingFigures.h"
#include "windows/ShownStretch.h"

namespace velmoor {

// What stands at the same place of the time axis.
enum class Alignment {
  begin,   // where each began: by hand, or its trigger
  motion,  // the start of its first motion
};

class Overlay {
 public:
  struct Shown {
    std::string name;
    Recording recording;
    std::vector<RecordingFigure> figures = {};
    std::optional<double> motion = {};  // s, where it begins
    double shift = 0;                   // s, to the right, by hand
  };

  // Both show the whole; what was shifted by hand or pointed at is forgotten.
  void Take(std::vector<Shown> shown, Alignment alignment);
  void Align(Alignment alignment);
  [[nodiscard]] const std::vector<Shown>& All() const { return shown_; }
  // Moves that one by hand, to the right by a part of the stretch that is looked at.
  void Shift(std::size_t which, double part);

  void Zoom(double time, double factor) { stretch_.Zoom(time, factor); }
  void Pan(double seconds) { stretch_.Pan(seconds); }
  void ShowWhole() { stretch_.ShowWhole(); }
  // Sets the first cursor, the second, and both anew, in turn.
  void PointAt(double time);
  // "A 0.120 s, B 0.250 s: 0.130 s apart"; empty without a cursor.
  [[nodiscard]] std::string CursorWords() const;
  // A lane for each item; what is of another unit has a lane of its own.
  [[nodiscard]] TimeChartData Visible(int widthInPoints) const;

  // Of the figures: a heading, a row for each, and for two recordings their difference.
  [[nodiscard]] std::vector<std::vector<std::string>> FigureTable() const;

 private:
  [[nodiscard]] double ShiftOf(const Shown& shown) const;
  void ShowAll();

  std::vector<Shown> shown_;
  Alignment alignment_ = Alignment::begin;
  ShownStretch stretch_;
  std::vector<double> cursors_;  // two at most
};

}  // namespace velmoor
