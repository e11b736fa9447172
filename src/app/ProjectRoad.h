// The road through a module: its tools and the steps on the amplifier in the order in which an axis
// is set up, each with its state and with what is to be done next.
//
// Made anew from what the project and the connection know; holds nothing.
#pragma once

#include <string>
#include <vector>

#include "app/ToolWindows.h"
#include "platform/Controls.h"
#include "project/ProjectCompare.h"
#include "project/clsHX7Project.h"
#include "session/Tools.h"

namespace velmoor {

struct RoadRow {
  std::string title;      // "Inputs and outputs"
  std::string purpose;    // of the step
  std::string state;      // "To download: 3"
  std::string action;     // "Open"
  MainCommand command{};  // behind the action
  Tone tone = Tone::normal;
  bool operator==(const RoadRow&) const = default;
};

// What is known beside the project.
struct RoadFacts {
  bool online = false;
  std::string line;  // the state of the connection in words
  Tone lineTone = Tone::faint;
  const std::vector<PartComparison>* compared = nullptr;  // the latest; null: none that holds
};

[[nodiscard]] std::vector<RoadRow> RoadOf(Module module, clsHX7Project& project,
                                          const RoadFacts& facts);

}  // namespace velmoor
