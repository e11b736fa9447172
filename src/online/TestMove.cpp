#include "online/TestMove.h"

#include <cstdlib>

namespace velmoor {

void TestMove::Begin(const Order& order, std::int32_t position, double now) {
  order_ = order;
  stage_ = Stage::begin;
  origin_ = position;
  since_ = now;
}

TestMove::Wish TestMove::Next(std::int32_t position, double now) {
  const double passed = now - since_;
  const auto go = [&](Stage stage, Wish wish) {
    stage_ = stage;
    since_ = now;
    return wish;
  };
  const auto way = static_cast<std::int64_t>(position) - origin_;
  switch (stage_) {
    case Stage::none:
      return Wish::nothing;
    case Stage::begin:
      return go(Stage::forward, Wish::forward);
    case Stage::forward: {
      const bool there =
          order_.distance ? std::abs(way) >= std::abs(*order_.distance) : passed >= order_.seconds;
      if (!there && passed < kLongest) return Wish::nothing;
      forward_ = passed;
      return go(Stage::turn, Wish::stop);
    }
    case Stage::turn:
      return passed < order_.rest ? Wish::nothing : go(Stage::reverse, Wish::reverse);
    case Stage::reverse: {
      // Forward counts upwards.
      const bool back = order_.distance ? way <= 0 : passed >= forward_;
      if (!back && passed < kLongest) return Wish::nothing;
      return go(Stage::rest, Wish::stop);
    }
    case Stage::rest:
      return passed < order_.rest ? Wish::nothing : go(Stage::none, Wish::end);
  }
  return Wish::nothing;
}

}  // namespace velmoor
