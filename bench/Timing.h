// Timing and printing shared by the benchmarks.
#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

namespace velmoor::bench {

// Runs `work` some times and prints the median and the worst in milliseconds, beside the goal.
inline void Time(const std::string& what, int runs, const std::string& goal,
                 const std::function<void()>& work) {
  std::vector<double> times;
  for (int i = 0; i < runs; ++i) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - start;
    times.push_back(taken.count());
  }
  std::ranges::sort(times);
  std::cout << std::left << std::setw(52) << what << std::right << std::fixed
            << std::setprecision(3) << std::setw(10) << times[times.size() / 2] << std::setw(10)
            << times.back() << "   " << goal << "\n";
}

inline void Heading() {
  std::cout << std::left << std::setw(52) << "ms" << std::right << std::setw(10) << "median"
            << std::setw(10) << "worst"
            << "   goal\n";
}

}  // namespace velmoor::bench
