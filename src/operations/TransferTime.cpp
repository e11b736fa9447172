#include "operations/TransferTime.h"

#include <algorithm>

#include "link/BaudRates.h"
#include "platform/Numbers.h"

namespace velmoor {

int TransferSeconds(int values, Way way, std::int32_t bitsPerSecond) {
  constexpr std::int64_t kBitsOfACharacter = 11;
  const std::int64_t characters = way == Way::write ? 28 : 32;
  const std::int64_t rate = std::max(1, bitsPerSecond);
  return static_cast<int>((values * characters * kBitsOfACharacter + rate - 1) / rate);
}

std::string TransferCost(int values, Way way, std::int32_t bitsPerSecond) {
  const auto seconds = [&](std::int32_t rate) {
    return NumberText(TransferSeconds(values, way, rate)) + " s at " + NumberText(rate);
  };
  constexpr std::int32_t kFastest = kBaudRates.back();
  std::string text = NumberText(values) + (values == 1 ? " exchange" : " exchanges") + ", about " +
                     seconds(bitsPerSecond) + " bit/s";
  if (bitsPerSecond != kFastest) text += " (" + seconds(kFastest) + ")";
  return text + ".";
}

}  // namespace velmoor
