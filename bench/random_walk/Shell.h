// velmoorctl in process, command by command, with a new amplifier on its line.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "BenchAdapters.h"
#include "console/Commands.h"
#include "console/ConsoleBoxes.h"
#include "platform/cli/RunProgram.h"
#include "platform/headless/HeadlessWorld.h"
#include "simulator/InProcessPort.h"
#include "simulator/SimulatedLine.h"

namespace velmoor::walk {

class Shell {
 public:
  explicit Shell(const std::string& folder) : port_(line_) {
    adapters_.Fill(headless_.world, folder);
    headless_.world.clock = &headless_.clock;
    headless_.world.boxes = &boxes_;
    line_.AddAmplifier({});
  }
  int Run(const std::vector<std::string>& words) {
    out.str("");
    err.str("");
    ConsoleBoxes boxes(err);
    headless_.world.boxes = &boxes;
    const int status = RunProgram(ConsoleTable(), words, out, err, [&](const CommandLine& line) {
      return RunCommand(line, {out, err, boxes, port_, [](SerialPort&, const std::string&) {},
                               nullptr, [] { return false; }});
    });
    headless_.world.boxes = &boxes_;
    return status;
  }
  // The value of a line of `show system`; empty where there is none.
  [[nodiscard]] std::string Shown(const std::string& name) const {
    std::istringstream lines(out.str());
    for (std::string line; std::getline(lines, line);) {
      if (!line.starts_with(name + ",")) continue;
      line.erase(0, name.size() + 1);
      return line.substr(0, line.find(','));
    }
    return {};
  }

  [[nodiscard]] SerialPort& Port() { return port_; }

  std::ostringstream out, err;

 private:
  headless::HeadlessWorld headless_;
  bench::BenchAdapters adapters_;
  SimulatedLine line_;
  InProcessPort port_;
  std::ostringstream said_;
  ConsoleBoxes boxes_{said_};  // between two commands
};

}  // namespace velmoor::walk
