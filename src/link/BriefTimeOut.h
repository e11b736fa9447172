// A question that must not hold the program up: for the life of the object an answer is waited for
// half a second at most, and as long as usual behind it.
#pragma once

#include <cstdint>

#include "link/clsHX7Helix7.h"

namespace velmoor {

class [[nodiscard]] BriefTimeOut {
 public:
  explicit BriefTimeOut(clsHX7Helix7& helix) : helix_(helix) { helix_.SetTimeOut(kBrief); }
  ~BriefTimeOut() { helix_.SetTimeOut(kNormal); }
  BriefTimeOut(const BriefTimeOut&) = delete;
  BriefTimeOut& operator=(const BriefTimeOut&) = delete;

 private:
  static constexpr std::int32_t kBrief = 500;    // ms
  static constexpr std::int32_t kNormal = 5000;  // ms
  clsHX7Helix7& helix_;
};

}  // namespace velmoor
