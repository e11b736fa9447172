// What the connected amplifier and its motor are, judged against what the project describes: each
// difference with its consequence in numbers.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace velmoor {

class clsHX7Project;

// As the amplifier tells it; 0 and empty: not known.
struct MotorFacts {
  std::int32_t encoderLines = 0;  // of a turn
  std::string watts{};            // rated power
  std::string firmware{};         // of the option card, hexadecimal
};

struct MotorJudgement {
  std::vector<std::string> differences;  // a sentence or two each; empty: they match
  // What the project can take over: the encoder's place in the machine's list, and the rated power.
  std::int32_t encoderIndex = -1;
  std::string watts;
  // Values of the project lie outside of the motor's limits.
  bool outside = false;

  [[nodiscard]] bool CanBeMended() const { return encoderIndex >= 0 || !watts.empty(); }
  // The project takes nothing over.
  void CannotBeMended() {
    encoderIndex = -1;
    watts.clear();
  }
};

// Throws DatabaseError where the catalogue cannot be read.
[[nodiscard]] MotorJudgement Judge(clsHX7Project& project, const MotorFacts& facts);

}  // namespace velmoor
