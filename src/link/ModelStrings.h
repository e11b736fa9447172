// How model names are made up from the type codes that the amplifier reports.
//
// Codes that are unknown, or texts too short for them, give an empty piece.
#pragma once

#include <string>
#include <string_view>

namespace velmoor {

// From the last two characters of the motor type.
[[nodiscard]] std::string GetMotorW(std::string_view strMotorType);
// From the fifth and sixth character of the motor type; the amplifier's letter is taken from the
// motor's type too.
[[nodiscard]] std::string GetMotorX(std::string_view strMotorType);
[[nodiscard]] std::string GetServoX(std::string_view strMotorType);
// From the last four characters of the encoder information.
[[nodiscard]] std::string GetMotorV(std::string_view strEncoderInfo);
// From the rated power in watts as text. 750 W gives "07.5": one character more than the others.
[[nodiscard]] std::string GetMotorYY(std::string_view strSize);
[[nodiscard]] std::string GetServoYY(std::string_view strSize);
// "VKLM-ccvE" for a text that is numerically 2, "UNKNOWN" otherwise.
[[nodiscard]] std::string GetServoTypeModelString(std::string_view strType);

}  // namespace velmoor
