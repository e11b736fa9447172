// The lines of amplifier and card: what the input bits mean under the parameters that assign them,
// and how outputs become bits.
#pragma once

#include <array>
#include <cstdint>

namespace velmoor {

class ParameterMemory;

inline constexpr int kProgrammeOutputs = 5;

// Raw states of the lines, bit 0 first.
struct InputLines {
  // The end switches are normally closed: a machine that stands between them holds their lines on.
  std::uint32_t amplifier = 0b1100;  // IN1
  std::uint32_t card = 0;            // IN2
};

struct AxisInputs {
  bool servoOn = false, alwaysOn = false;
  bool forwardEnd = false, reverseEnd = false;
  bool homeSwitch = false;
  bool registration = false;
  bool jogMode = false;
  // In programme mode.
  bool start = false, reset = false;
  std::uint32_t selection = 0;  // bits of SEL0 to SEL6
  // In jog mode.
  bool home = false, jogForward = false, jogReverse = false;
  std::uint32_t jogRow = 0;
};

[[nodiscard]] AxisInputs ReadInputs(const ParameterMemory& parameters, const InputLines& lines);

struct AxisOutputs {
  bool alarm = false, warning = false, brakeReleased = false, ready = false;
  bool inPosition = false;
  std::array<bool, kProgrammeOutputs> programme{};
  std::uint32_t zone = 0;  // the number of the zone in which the axis is
};

[[nodiscard]] std::uint32_t AmplifierOutputs(const ParameterMemory& parameters,
                                             const AxisOutputs& outputs);
[[nodiscard]] std::uint32_t CardOutputs(const ParameterMemory& parameters,
                                        const AxisOutputs& outputs);

}  // namespace velmoor
