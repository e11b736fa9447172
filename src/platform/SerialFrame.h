// The settings of a serial line, taken apart.
#pragma once

#include <string_view>

namespace velmoor {

struct SerialFrame {
  int speed = 0;  // bits per second; 0 for one that no amplifier has, which is not set on the line
  char parity = 'e';
  int dataBits = 7;
  int stopBits = 2;
};

// "19200,e,7,2"; a part that is missing or means nothing is that of the amplifier.
[[nodiscard]] SerialFrame ParseSerialFrame(std::string_view settings);

}  // namespace velmoor
