// What an alarm usually comes from, and what helps.
#pragma once

#include <string_view>

namespace velmoor {

struct AlarmAdvice {
  std::string_view display;  // "A.40"
  std::string_view cause;
  std::string_view remedy;
};

// Null: nothing more than the alarm's name is known.
[[nodiscard]] const AlarmAdvice* AdviceOn(std::string_view display);

}  // namespace velmoor
