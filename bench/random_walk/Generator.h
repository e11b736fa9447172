// Steps that a user might do next, chosen by a seed.
#pragma once

#include <cstdint>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "random_walk/Walk.h"

namespace velmoor::walk {

class Generator {
 public:
  Generator(std::uint64_t seed, int steps) : random_(seed), left_(steps) {}

  // Nothing when all steps are done.
  std::optional<Step> operator()(Walk& walk);

 private:
  [[nodiscard]] int Below(int count);
  [[nodiscard]] bool OneIn(int count) { return Below(count) == 0; }
  template <typename Range>
  [[nodiscard]] std::string OneOf(const Range& range) {
    return std::string(range[static_cast<std::size_t>(Below(static_cast<int>(std::size(range))))]);
  }
  [[nodiscard]] Step Anything(Walk& walk);
  [[nodiscard]] Step InWindow(Walk& walk, const WindowKind& kind);
  [[nodiscard]] Step InMachine(Walk& walk, HeadlessForm& form);
  [[nodiscard]] Step EditOf(const WindowKind& kind, HeadlessForm& form);
  [[nodiscard]] Step EditOfTable(const WindowKind& kind, HeadlessForm& form);
  [[nodiscard]] Step Transfer();
  [[nodiscard]] std::string ValueFor(HeadlessForm& form, int row, int column);
  [[nodiscard]] std::string NumberWithin(const std::string& low, const std::string& high);
  [[nodiscard]] std::string Absurd();

  std::mt19937_64 random_;
  int left_;
  bool started_ = false;
};

// One walk of that seed, until its steps are done or something does not hold.
struct Walked {
  std::vector<Step> steps;
  std::vector<Violation> found;
};
[[nodiscard]] Walked WalkAtRandom(const std::string& folder, std::uint64_t seed, int steps,
                                  const std::set<std::string>& ignored);

}  // namespace velmoor::walk
