// Where the motion programme goes from a chosen start step, told from the cells as they stand.
#pragma once

#include <string>
#include <vector>

namespace velmoor {

class clsHX7Position;

enum class PathEnd {
  finished,    // a step whose next is "END"
  repeats,     // a step that was executed before
  undefined,   // a next label that no step bears
  incomplete,  // a step that is empty or filled in part
  runsOn,      // an endless move that nothing ends
};

struct ProgrammePath {
  std::vector<int> steps;  // in the order of their execution, each once
  PathEnd end = PathEnd::incomplete;
  // repeats: the step that is executed again. undefined: the step with that next label. incomplete:
  // the step that cannot be executed. Otherwise the last step.
  int endStep = 0;
  std::vector<int> unreachable;  // steps that hold anything and lie on no path from the start
  // repeats: no step of the loop waits for a selection input, so nothing from outside ends it.
  bool loopsWithoutEvent = false;
};

// The event of that cell waits for a selection input.
[[nodiscard]] bool WaitsForInput(const std::string& event);
// "SEL3" of "SEL3T100"; the time behind it in milliseconds, 0 where there is none.
[[nodiscard]] std::string EventWord(const std::string& event);
[[nodiscard]] int EventTime(const std::string& event);
[[nodiscard]] bool IsEndlessMove(const std::string& position);

[[nodiscard]] ProgrammePath FollowProgramme(const clsHX7Position& table, int start);
// One line of words about the end of the path.
[[nodiscard]] std::string DescribeEnd(const clsHX7Position& table, const ProgrammePath& path);
// One line of words about what is never executed; empty when all is.
[[nodiscard]] std::string DescribeUnreachable(const ProgrammePath& path);

}  // namespace velmoor
