#include "console/SetCommand.h"

#include <algorithm>
#include <vector>

#include "console/ConsoleBoxes.h"
#include "console/SystemCommand.h"
#include "project/SetParameters.h"

namespace velmoor {
namespace {

bool IsParameterAssignment(const std::string& word) {
  return word.starts_with("Pn");
}

// The assignments to the machine. Throws UsageError.
std::vector<Assignment> MachineAssignments(std::span<const std::string> words) {
  std::vector<Assignment> assignments;
  for (const std::string& word : words) {
    const std::size_t equals = word.find('=');
    if (equals == std::string::npos) throw UsageError("'" + word + "' is no assignment");
    const std::string name = word.substr(0, equals);
    if (!IsSystemKey(name)) {
      throw UsageError("'" + name +
                       "' cannot be set: it is no parameter such as Pn81B, and none of "
                       "system, measure, n1, n2, resolution, units, time, encoder and motor");
    }
    if (std::ranges::find(assignments, name, &Assignment::first) != assignments.end()) {
      throw UsageError("'" + word + "' assigns a second time");
    }
    assignments.emplace_back(name, word.substr(equals + 1));
  }
  return assignments;
}

// The machine or parameters; not both in one command, which could not keep one of them only.
bool Set(const Context& context) {
  const auto words = std::span(context.line.Arguments()).subspan(2);
  CheckAssignments(words);
  context.program.boxes.Agree(context.line.Has("yes"));
  Work work(context);
  if (!work.Open(context.Argument(1))) return false;
  return TakeAssignments(context, work.project(), words) && work.Save();
}

}  // namespace

void CheckAssignments(std::span<const std::string> words) {
  const auto parameters = std::ranges::count_if(words, IsParameterAssignment);
  if (parameters == std::ssize(words)) return;
  if (parameters > 0) throw UsageError("Set the machine and parameters by one command each");
  (void)MachineAssignments(words);
}

bool TakeAssignments(const Context& context, clsHX7Project& project,
                     std::span<const std::string> words) {
  if (!std::ranges::all_of(words, IsParameterAssignment)) {
    return SetSystem(project, MachineAssignments(words));
  }
  const std::vector<std::string> faults = SetParameters(project, words);
  TellFaults(context, faults);
  return faults.empty();
}

Commands SetCommands() {
  return {{{"set",
            "change the machine (system, measure, n1, n2, resolution, units, time, encoder, motor) "
            "or parameters (Pn81B=12.5) and save; all or nothing",
            {FileArgument(),
             {.value = {"NAME=VALUE",
                        ValueEntry::Kind::words,
                        {"system=", "measure=", "n1=", "n2=", "resolution=", "units=", "time=",
                         "encoder=", "motor="}},
              .many = true}},
            {"motor-size", "yes"}},
           Set}};
}

}  // namespace velmoor
