#include "tables/ProgrammePath.h"

#include <algorithm>

#include "platform/Numbers.h"
#include "tables/clsHX7Position.h"

namespace velmoor {
namespace {

using Position = clsHX7Position;

// The first step with that label; 0 when no step bears it.
int StepWithLabel(const Position& table, const std::string& label) {
  for (int row = 1; row <= table.RowsInArray(); ++row) {
    if (table.Text(row, Position::label) == label) return row;
  }
  return 0;
}

// In position, near and distribution end never come during an endless move: only an input or the
// time alone ends it.
bool EndsByItself(const Position& table, int step) {
  if (!IsEndlessMove(table.Text(step, Position::position))) return true;
  const std::string& event = table.Text(step, Position::event);
  return WaitsForInput(event) || (EventWord(event).empty() && EventTime(event) > 0);
}

void FindEnd(const Position& table, int start, ProgrammePath& path) {
  std::vector<bool> executed(static_cast<std::size_t>(table.RowsInArray()) + 1, false);
  for (int step = start;;) {
    path.endStep = step;
    if (executed[static_cast<std::size_t>(step)]) {
      path.end = PathEnd::repeats;
      return;
    }
    if (!table.IsDataSetComplete(step)) {
      path.end = PathEnd::incomplete;
      return;
    }
    executed[static_cast<std::size_t>(step)] = true;
    path.steps.push_back(step);
    if (!EndsByItself(table, step)) {
      path.end = PathEnd::runsOn;
      return;
    }
    const std::string& next = table.Text(step, Position::next);
    if (next == "END") {
      path.end = PathEnd::finished;
      return;
    }
    const int following = StepWithLabel(table, next);
    if (following == 0) {
      path.end = PathEnd::undefined;
      return;
    }
    step = following;
  }
}

std::string StepName(const Position& table, int step) {
  const std::string& label = table.Text(step, Position::label);
  return "step " + NumberText(step) + (label.empty() ? "" : " \"" + label + "\"");
}

}  // namespace

std::string EventWord(const std::string& event) {
  return event.substr(0, event.find('T'));
}

int EventTime(const std::string& event) {
  const std::size_t at = event.find('T');
  if (at == std::string::npos) return 0;
  const auto time = ParseWhole(event.substr(at + 1));
  return time && std::in_range<int>(*time) ? static_cast<int>(*time) : 0;
}

bool WaitsForInput(const std::string& event) {
  return event.starts_with("SEL");
}

bool IsEndlessMove(const std::string& position) {
  return position == "+INFINITE" || position == "-INFINITE";
}

ProgrammePath FollowProgramme(const Position& table, int start) {
  ProgrammePath path;
  FindEnd(table, start, path);
  if (path.end == PathEnd::repeats) {
    const auto begin = std::ranges::find(path.steps, path.endStep);
    path.loopsWithoutEvent = std::none_of(begin, path.steps.end(), [&](int step) {
      return WaitsForInput(table.Text(step, Position::event));
    });
  }
  for (int row = 1; row <= table.RowsInArray(); ++row) {
    if (table.IsBlank(row) || std::ranges::find(path.steps, row) != path.steps.end()) continue;
    path.unreachable.push_back(row);
  }
  return path;
}

std::string DescribeEnd(const Position& table, const ProgrammePath& path) {
  const std::string name = StepName(table, path.endStep);
  switch (path.end) {
    case PathEnd::finished:
      return "Ends after " + name + ".";
    case PathEnd::repeats:
      return path.loopsWithoutEvent
                 ? "Endless loop from " + name + " on: no step of it waits for an input!"
                 : "Repeats from " + name + " on.";
    case PathEnd::undefined:
      return "Stops after " + name + ": no step has the label \"" +
             table.Text(path.endStep, Position::next) + "\"!";
    case PathEnd::runsOn:
      return "Runs on in " + name + ": nothing ends its move!";
    case PathEnd::incomplete:
      break;
  }
  return table.IsBlank(path.endStep) ? "Step " + NumberText(path.endStep) + " is empty."
                                     : "Stops before " + name + ": its definition is incomplete!";
}

std::string DescribeUnreachable(const ProgrammePath& path) {
  if (path.unreachable.empty()) return {};
  std::string words =
      path.unreachable.size() == 1 ? "Not on the path: step " : "Not on the path: steps ";
  // Neighbours as a range: "3-7, 12".
  for (std::size_t i = 0; i < path.unreachable.size();) {
    std::size_t last = i;
    while (last + 1 < path.unreachable.size() &&
           path.unreachable[last + 1] == path.unreachable[last] + 1) {
      ++last;
    }
    if (i > 0) words += ", ";
    words += NumberText(path.unreachable[i]);
    if (last > i) words += "-" + NumberText(path.unreachable[last]);
    i = last + 1;
  }
  return words;
}

}  // namespace velmoor
