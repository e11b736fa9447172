// Taking times, in seconds.
#pragma once

#include <chrono>
#include <functional>
#include <vector>

namespace velmoor::bench {

class Stopwatch {
 public:
  [[nodiscard]] double Seconds() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  }

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

// What each run of `work` took.
[[nodiscard]] inline std::vector<double> Times(int runs, const std::function<void()>& work) {
  std::vector<double> times;
  for (int i = 0; i < runs; ++i) {
    const Stopwatch watch;
    work();
    times.push_back(watch.Seconds());
  }
  return times;
}

}  // namespace velmoor::bench
