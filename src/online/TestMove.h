// The order of a test move: forward, a rest, back, a rest. It knows no amplifier: it says what is
// to be done next.
#pragma once

#include <cstdint>
#include <optional>

namespace velmoor {

class TestMove {
 public:
  struct Order {
    std::optional<std::int32_t> distance;  // reference units; nothing: by time
    double seconds = 1;                    // forward, where there is no distance
    double rest = 0.5;                     // s, behind each of both ways
  };
  enum class Wish { nothing, forward, stop, reverse, end };
  // A distance that is not reached by then ends the move.
  static constexpr double kLongest = 30;  // s, of one way

  // Where the axis stands, and when, s.
  void Begin(const Order& order, std::int32_t position, double now);
  // The wish comes once; what is wished is under way from then on. To be asked with each position.
  [[nodiscard]] Wish Next(std::int32_t position, double now);
  [[nodiscard]] bool IsUnderWay() const { return stage_ != Stage::none; }
  // The button was let go.
  void End() { stage_ = Stage::none; }

 private:
  enum class Stage { none, begin, forward, turn, reverse, rest };

  Order order_;
  Stage stage_ = Stage::none;
  std::int32_t origin_ = 0;
  double since_ = 0;    // s, of the stage
  double forward_ = 0;  // s, that the way forward took
};

}  // namespace velmoor
