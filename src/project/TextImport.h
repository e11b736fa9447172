// The reading half of a project's text: what its sections make of a project, judged before anything
// is changed. Each section has a judge of its own; all note their refusals with the line.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/KeyedText.h"
#include "project/ProjectPlan.h"
#include "project/TextValues.h"
#include "session/Project.h"

namespace velmoor {

class clsHX7Project;

namespace project_text {

class Faults {
 public:
  void Add(int line, const std::string& words);
  [[nodiscard]] bool None() const { return faults_.empty(); }
  // "axis1.toml:12: ...", in the order of the text.
  [[nodiscard]] std::vector<std::string> Told(const std::string& name) const;

 private:
  struct Fault {
    int line;
    std::string words;
  };
  std::vector<Fault> faults_;
};

// A section's entries, or none; one that is no table is a fault.
[[nodiscard]] std::span<const KeyedEntry> EntriesOf(const KeyedNode* section, std::string_view name,
                                                    Faults& faults);

// What the text makes of the project, and of what it does not name.
struct Judged {
  ProjectPlan plan;
  std::string motor;     // watts; empty: as it is
  bool whole = false;    // what is not named is as in a new project
  bool machine = false;  // the machine changes
};

// Parameters, in the units of the plan: those that are typed, and those as they were found.
void JudgeParameters(clsHX7Project& project, const NewProject& usual, const KeyedNode& text,
                     Judged& judged, Faults& faults);
// The three tables.
void JudgeTables(clsHX7Project& project, const KeyedNode& text, Judged& judged, Faults& faults);

}  // namespace project_text
}  // namespace velmoor
