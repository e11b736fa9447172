// Asks the axes of a line in turn, as fast as its wire allows.
//
// A round asks each axis that answers for its display and its items. One that falls silent is asked
// once more, costs these two time-outs, and leaves the round; it is looked for from time to time,
// which takes at most a tenth of the line's time, and comes back by itself.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "link/LineQuestion.h"
#include "plant/AxisState.h"
#include "platform/Event.h"

namespace velmoor {

// The value of an item of one axis; nothing: it could not be read.
[[nodiscard]] std::optional<std::int32_t> AskValue(ClassSerialComm& comm, const std::string& axis,
                                                   int item);

class LineRound {
 public:
  // `comm` has the open port and must outlive the object, as must `axes`, which it keeps up to
  // date. `items` are asked for beside the display, in that order.
  LineRound(ClassSerialComm& comm, std::vector<AxisState>& axes, std::vector<int> items);

  // One question, or a wait of a tenth of a second where no axis is to be asked. False: the port is
  // gone.
  [[nodiscard]] bool Ask();

  // The display, or the silence, of an axis is known anew: its place among the axes.
  Event<std::size_t> Seen;
  Event<std::size_t, int, std::int32_t> ValueRead;  // axis, item, as the amplifier told it
  Event<std::size_t> AxisRead;                      // behind its last item
  Event<> RoundDone;

  // Of the latest round that asked every axis that answers: how long it took, and how long its
  // bytes were on the wire, in s. 0 before the first.
  [[nodiscard]] double RoundSeconds() const { return roundSeconds_; }
  [[nodiscard]] double WireSeconds() const { return wireSeconds_; }
  [[nodiscard]] std::uint64_t Rounds() const { return rounds_; }

 private:
  using Time = std::chrono::milliseconds;

  // False: the port is gone.
  [[nodiscard]] bool AskDisplay(std::size_t axis, const LineWait& wait);
  [[nodiscard]] bool AskItem(std::size_t axis);
  [[nodiscard]] bool Probe();
  void NextQuestion();
  // The first axis from this one on that is in the round; none: the round is done.
  void TurnTo(std::size_t axis);
  void EndRound();
  // Counts the question; a silence is dealt with.
  [[nodiscard]] bool IsAnswered(std::size_t axis, const LineAnswer& answer);
  void Silence(std::size_t axis);
  [[nodiscard]] std::size_t FirstSilentBehind(std::size_t axis) const;

  ClassSerialComm& comm_;
  std::vector<AxisState>& axes_;
  std::vector<int> items_;
  std::size_t axis_ = 0;      // whose turn it is
  std::size_t question_ = 0;  // 0: its display
  int silences_ = 0;          // in a row, of that axis
  std::size_t probed_ = 0;    // the silent axis that was looked for last
  Time nextProbe_{0};
  double began_ = -1;  // s of the monotonic clock
  std::size_t bytes_ = 0;
  double roundSeconds_ = 0;
  double wireSeconds_ = 0;
  std::uint64_t rounds_ = 0;
};

}  // namespace velmoor
