// The figures of a recording, as a table tells them and compares them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "recordings/Recording.h"

namespace velmoor {

struct RecordingFigure {
  std::string name;  // "Overshoot"
  std::string unit;  // "mm"
  int decimals = 3;
  std::optional<double> value;  // nothing: it was not recorded, or does not apply
};

// Always the same figures in the same order. Rise, overshoot, settling and length are those of the
// first motion, by the position; the others of the whole.
[[nodiscard]] std::vector<RecordingFigure> FiguresOf(const Recording& recording);
// When the first motion begins; nothing where nothing moves, or neither speed nor position was
// recorded.
[[nodiscard]] std::optional<double> BeginOfMotion(const Recording& recording);

}  // namespace velmoor
