// What happens at the inputs of a rehearsed axis, and when: a small table of comma-separated text
// with the columns "at", "input" and "state".
//
//   at,input,state
//   1.5,SEL0,on          1.5 s after the start
//   step 4,SEL0,off      when step 4 begins, each time
//
// An input is named by what it does. "on" is the state in which it does that, whether its line is
// normally open or closed; P-OT and N-OT are on when the axis stands on the end switch.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/memory/AmplifierMemory.h"

namespace velmoor {

// One line of the amplifier's inputs.
struct InputLine {
  std::string_view word;  // "IN1", the amplifier's; "IN2", the card's
  int bit = 0;
  bool level = false;
};

struct ScriptedInput {
  // One of the two.
  std::optional<double> seconds;
  std::optional<int> step;  // as the index table counts, from 1
  std::string input;        // "SEL0"
  bool on = false;
};

// what() tells the row and what is wrong in it.
class InputScriptError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The entries in the order of the file. Throws InputScriptError.
[[nodiscard]] std::vector<ScriptedInput> ReadInputScript(std::string_view csv);

// The names of all inputs, in the order of the guide.
[[nodiscard]] std::vector<std::string> InputNames();

// The line that stands for the input under these parameters. Nothing: the parameters use the line
// for nothing.
[[nodiscard]] std::optional<InputLine> LineOf(const std::string& input, bool on,
                                              const ParameterMemory& parameters);

}  // namespace velmoor
