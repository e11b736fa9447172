#include "platform/SerialFrame.h"

#include <algorithm>
#include <array>
#include <string>

#include "platform/Numbers.h"

namespace velmoor {
namespace {

constexpr std::array<int, 3> kSpeeds = {9600, 19200, 38400};

// Cuts the part before the next comma off the front.
std::string_view NextPart(std::string_view& text) {
  const std::size_t comma = text.find(',');
  const std::string_view part = text.substr(0, comma);
  text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
  return Trim(part);
}

}  // namespace

SerialFrame ParseSerialFrame(std::string_view settings) {
  SerialFrame frame;
  const auto number = ParseWhole(NextPart(settings));
  const auto speed = std::ranges::find_if(kSpeeds, [&](int one) { return number == one; });
  if (speed != kSpeeds.end()) frame.speed = *speed;
  const std::string parity = LowerCase(NextPart(settings));
  if (!parity.empty()) frame.parity = parity.front();
  frame.dataBits = ParseWhole(NextPart(settings)) == 8 ? 8 : 7;
  frame.stopBits = ParseWhole(NextPart(settings)) == 1 ? 1 : 2;
  return frame;
}

}  // namespace velmoor
