// Something that is told when it begins and when it is over, and not in between.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/Events.h"
#include "platform/World.h"

namespace velmoor {

class Remark {
 public:
  using Tell = std::function<void(const std::string&)>;
  using Time = std::chrono::milliseconds;
  // What comes and goes is not told each time: it begins when it has been so for `begins`, and is
  // over when it has not been so for `settles`.
  struct Patience {
    Time begins{0};
    Time settles{0};
  };
  // `over` is told when it is over. `tell` must outlive the object.
  Remark(const Tell& tell, std::string over, Patience patience)
      : tell_(tell), over_(std::move(over)), patience_(patience) {}

  // To be called again and again. Empty: it is not, or no longer, so.
  void Note(const std::string& words) {
    const bool is = !words.empty();
    if (is == is_) {
      since_.reset();
      return;
    }
    const Time now = world().clock->Monotonic();
    if (!since_) since_ = now;
    if (now - *since_ < (is ? patience_.begins : patience_.settles)) return;
    since_.reset();
    is_ = is;
    tell_(is ? words : over_);
  }

 private:
  const Tell& tell_;
  std::string over_;
  Patience patience_;
  bool is_ = false;
  std::optional<Time> since_;  // it is the other way round
};

}  // namespace velmoor
