// The typed commands of the simulator: show, set, misbehave.
//
// One axis is addressed at a time, the first of the line until another is chosen.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "simulator/SimulatedLine.h"

namespace velmoor {

class SimulatorConsole {
 public:
  // What the program has to do itself once a command was executed.
  enum class Request { nothing, quit, unplug, plug };

  struct Outcome {
    std::string text;  // to be shown; lines end with LF
    Request request = Request::nothing;
    bool failed = false;  // the command was not understood
  };

  // The line must have an amplifier and outlive the console.
  explicit SimulatorConsole(SimulatedLine& line);

  // Executes one typed line. Empty lines and lines that begin with "#" do nothing.
  Outcome Execute(std::string_view line, Micros now);

 private:
  struct Command;
  using Words = std::span<const std::string>;
  static std::span<const Command> Commands();

  Outcome Help(Words words, Micros now);
  Outcome ShowState(Words words, Micros now);
  Outcome ShowCounts(Words words, Micros now);
  Outcome ShowJournal(Words words, Micros now);
  Outcome ChooseAxis(Words words, Micros now);
  Outcome SendLine(Words words, Micros now);
  Outcome SetValue(Words words, Micros now);
  Outcome SetInput(Words words, Micros now);
  Outcome SetLoad(Words words, Micros now);
  Outcome SetEnds(Words words, Micros now);
  Outcome RaiseAlarm(Words words, Micros now);
  Outcome SetError(Words words, Micros now);
  Outcome SetEcho(Words words, Micros now);
  Outcome SetTime(Words words, Micros now);
  Outcome PlanFault(Words words, Micros now);
  Outcome ShowFaults(Words words, Micros now);
  Outcome ClearFaults(Words words, Micros now);
  Outcome PlanNoise(Words words, Micros now);
  Outcome Forget(Words words, Micros now);
  Outcome PowerCycle(Words words, Micros now);
  Outcome Unplug(Words words, Micros now);
  Outcome Plug(Words words, Micros now);
  Outcome Quit(Words words, Micros now);

  SimulatedLine& line_;
  SimulatedAmplifier* amplifier_;
};

}  // namespace velmoor
