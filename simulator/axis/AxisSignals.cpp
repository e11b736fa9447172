#include "simulator/axis/AxisSignals.h"

#include "simulator/memory/AmplifierMemory.h"

namespace velmoor {
namespace {

bool BitOf(std::uint32_t bits, int bit) {
  return ((bits >> static_cast<unsigned>(bit)) & 1U) != 0;
}
std::uint32_t BitIf(bool on, int bit) {
  return on ? 1U << static_cast<unsigned>(bit) : 0U;
}

// A line whose parameter chooses: 0 normally open, 1 normally closed, 2 not used.
bool Input(const ParameterMemory& parameters, std::uint32_t pn, bool line) {
  const std::int64_t choice = parameters.Value(pn);
  return choice != 2 && line != (choice == 1);
}

// Of the end switches normally closed comes first.
bool EndSwitch(const ParameterMemory& parameters, std::uint32_t pn, bool line) {
  const std::int64_t choice = parameters.Value(pn);
  return choice != 2 && line != (choice == 0);
}

bool Output(const ParameterMemory& parameters, std::uint32_t pn, bool on) {
  return on != (parameters.Value(pn) == 1);
}

}  // namespace

AxisInputs ReadInputs(const ParameterMemory& parameters, const InputLines& lines) {
  const auto amplifier = [&](int bit) { return BitOf(lines.amplifier, bit); };
  const auto card = [&](std::uint32_t pn, int bit) {
    return Input(parameters, pn, BitOf(lines.card, bit));
  };
  AxisInputs inputs;
  const std::int64_t servoOn = parameters.Value(0x80B);
  inputs.alwaysOn = servoOn == 2;
  inputs.servoOn = servoOn < 2 && amplifier(0) != (servoOn == 1);
  inputs.forwardEnd = EndSwitch(parameters, 0x80C, amplifier(2));
  inputs.reverseEnd = EndSwitch(parameters, 0x80D, amplifier(3));
  inputs.homeSwitch = Input(parameters, 0x80E, amplifier(4));
  inputs.registration = Input(parameters, 0x80F, amplifier(6));
  const std::int64_t mode = parameters.Value(0x803);
  inputs.jogMode = mode == 3 || (mode < 2 && BitOf(lines.card, 0) != (mode == 1));
  if (inputs.jogMode) {
    inputs.home = card(0x804, 1);
    inputs.jogForward = card(0x805, 2);
    inputs.jogReverse = card(0x806, 3);
    for (int i = 0; i < 4; ++i) {
      inputs.jogRow |= BitIf(card(0x807 + static_cast<std::uint32_t>(i), 4 + i), i);
    }
  } else {
    inputs.start = card(0x804, 1);
    inputs.reset = card(0x805, 2);
    for (int i = 0; i < 5; ++i) {
      inputs.selection |= BitIf(card(0x806 + static_cast<std::uint32_t>(i), 3 + i), i);
    }
  }
  inputs.selection |= BitIf(Input(parameters, 0x833, amplifier(1)), 5);
  inputs.selection |= BitIf(Input(parameters, 0x834, amplifier(5)), 6);
  return inputs;
}

std::uint32_t AmplifierOutputs(const ParameterMemory& parameters, const AxisOutputs& outputs) {
  return BitIf(Output(parameters, 0x816, outputs.alarm), 0) | BitIf(outputs.warning, 1) |
         BitIf(Output(parameters, 0x817, outputs.brakeReleased), 2) |
         BitIf(Output(parameters, 0x818, outputs.ready), 3);
}

std::uint32_t CardOutputs(const ParameterMemory& parameters, const AxisOutputs& outputs) {
  std::uint32_t bits = BitIf(Output(parameters, 0x810, outputs.inPosition), 0);
  for (int i = 0; i < kProgrammeOutputs; ++i) {
    // 0 and 1 follow the programme, 2 and 3 the zones; the odd ones are normally closed.
    const std::int64_t choice = parameters.Value(0x811 + static_cast<std::uint32_t>(i));
    const bool on =
        choice >= 2 ? BitOf(outputs.zone, i) : outputs.programme[static_cast<std::size_t>(i)];
    bits |= BitIf(on != (choice % 2 == 1), i + 1);
  }
  return bits;
}

}  // namespace velmoor
