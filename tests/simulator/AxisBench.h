// An amplifier whose time the test lets pass.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "simulator/SimulatedAmplifier.h"

namespace velmoor {

class AxisBench {
 public:
  // With the finest of the encoders, so that its steps do not show in what is measured.
  AxisBench() : amplifier({.encoder = "00000011"}) { amplifier.AdvanceTo(now); }

  std::string Ask(const std::string& command) { return amplifier.Execute(command, now).text; }
  void Pass(Micros time) {
    now += time;
    amplifier.AdvanceTo(now);
  }
  [[nodiscard]] std::int32_t Value(std::string_view word) { return *axis().Value(word); }
  void Input(std::string_view word, int bit, bool on) {
    ASSERT_TRUE(amplifier.SetBit(word, bit, on));
  }
  [[nodiscard]] SimulatedAxis& axis() { return amplifier.State().axis; }
  // What stands behind the "=" of an answer.
  static std::string NumberOf(const std::string& answer) {
    return answer.substr(answer.find('=') + 1);
  }

  SimulatedAmplifier amplifier;
  Micros now{0};
};

class AxisTest : public testing::Test, public AxisBench {};

}  // namespace velmoor
