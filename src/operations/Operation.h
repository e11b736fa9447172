// One run of an operation: its progress on the desk, and its line in the log, with its figures.
//
// Made on the stack of the operation that runs; with it the progress goes, whatever ended the run.
#pragma once

#include <chrono>
#include <string>

#include "operations/Desk.h"
#include "session/Tools.h"

namespace velmoor {

class Operation {
 public:
  // `desk` must outlive the run. Nothing is shown and nothing logged before Begin.
  Operation(Desk& desk, std::string name) : desk_(desk), name_(std::move(name)) {}
  ~Operation();
  Operation(const Operation&) = delete;
  Operation& operator=(const Operation&) = delete;

  // The work itself begins; `steps` rows are ahead.
  void Begin(int steps, bool items);
  // A row of a tool is done.
  void CountRow(Tool tool, bool downloading, int row, int rows);
  // A value is read back: counts for nothing.
  void ShowCheck(int value, int values);
  // A step without rows is done: "Reset 2 of 4".
  void CountStep(const std::string& verb);
  // The progress goes; the line of the log tells `outcome`: "complete", "stopped", "failed".
  void End(const std::string& outcome);
  // "353 items sent in 13.3 s", of a run that has ended; boxes that waited meanwhile count for
  // nothing.
  [[nodiscard]] std::string Figures(const std::string& verb) const;

 private:
  Desk& desk_;
  std::string name_;
  std::chrono::milliseconds start_{0};
  std::chrono::milliseconds took_{0};
  int finished_ = 0;
  int steps_ = 0;
  bool runs_ = false;
};

}  // namespace velmoor
