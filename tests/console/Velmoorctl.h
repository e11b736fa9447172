// velmoorctl's commands in process, on a line with one simulated amplifier.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "console/Commands.h"
#include "console/ConsoleBoxes.h"
#include "platform/Rx900Utils.h"
#include "platform/cli/RunProgram.h"
#include "platform/json/NlohmannJson.h"
#include "simulator/InProcessPort.h"
#include "simulator/SimulatedLine.h"
#include "support/DataWorld.h"

namespace velmoor {

// Of an index table as comma-separated text.
inline constexpr const char* kIndexHead = "label,position,speed,rdst,rspd,pout,event,loop,next\n";

class Velmoorctl : public ::testing::Test {
 protected:
  Velmoorctl() : port(line) {
    world.world.rx900Utils = &rx900Utils;
    world.world.jsonTexts = &jsonTexts;
    line.AddAmplifier({});
    project = world.folder.At("a.spj");
  }

  int Run(
      const std::vector<std::string>& words, bool (*ends)() = [] { return false; }) {
    out.str("");
    err.str("");
    ConsoleBoxes boxes(err);
    world.world.boxes = &boxes;
    const int status = RunProgram(ConsoleTable(), words, out, err, [&](const CommandLine& line_) {
      return RunCommand(
          line_, {out, err, boxes, port, [](SerialPort&, const std::string&) {}, nullptr, ends});
    });
    world.world.boxes = &world.boxes;
    return status;
  }
  std::string WriteFile(const std::string& name, const std::string& text) {
    std::string path = world.folder.At(name);
    world.files.WriteDurably(path, text);
    return path;
  }

  StandardRx900Utils rx900Utils;
  json_texts::NlohmannJson jsonTexts;
  DataWorld world;
  SimulatedLine line;
  InProcessPort port;
  std::string project;
  std::ostringstream out, err;
};

}  // namespace velmoor
