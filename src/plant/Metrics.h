// The figures of a line as text in the form OpenMetrics, for collectors that read a file or ask.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "plant/AxisState.h"

namespace velmoor {

struct LineFigures {
  std::string line;
  bool watched = false;     // the port is open
  double roundSeconds = 0;  // of the latest round
  double wireSeconds = 0;   // of its bytes
  std::uint64_t rounds = 0;
  bool publishes = false;  // to a broker or file: the rest is of that
  bool connected = false;
  std::uint64_t delivered = 0, waiting = 0, droppedChanges = 0, droppedValues = 0;
};

[[nodiscard]] std::string MetricsText(const LineFigures& figures,
                                      const std::vector<AxisState>& axes,
                                      const std::vector<int>& items);

}  // namespace velmoor
