#include "operations/Operation.h"

#include "platform/Events.h"
#include "platform/Log.h"
#include "platform/Numbers.h"

namespace velmoor {

Operation::~Operation() {
  End("failed");
}

void Operation::Begin(int steps, bool items) {
  start_ = WorkTime();
  steps_ = steps;
  runs_ = true;
  desk_.WorkBegins(name_, steps, items);
}

void Operation::CountRow(Tool tool, bool downloading, int row, int rows) {
  const ToolInfo& info = InfoOf(tool);
  const std::string verb = downloading ? "Downloading " : "Uploading ";
  ++finished_;
  desk_.WorkGoesOn(
      {.current = verb + std::string(info.status) + ": " + NumberText(row) + " of " +
                  NumberText(rows) + " " + std::string(info.rows),
       .row = row,
       .rows = rows,
       .total = verb + "Item " + NumberText(finished_) + " of " + NumberText(steps_) + " Total",
       .finished = finished_,
       .steps = steps_});
}

void Operation::ShowCheck(int value, int values) {
  desk_.WorkGoesOn(
      {.current = "Verifying: " + NumberText(value) + " of " + NumberText(values) + " Values",
       .row = value,
       .rows = values,
       .total = "Item " + NumberText(finished_) + " of " + NumberText(steps_) + " Total",
       .finished = finished_,
       .steps = steps_});
}

void Operation::CountStep(const std::string& verb) {
  ++finished_;
  desk_.WorkGoesOn({.total = verb + " " + NumberText(finished_) + " of " + NumberText(steps_),
                    .finished = finished_,
                    .steps = steps_});
}

void Operation::End(const std::string& outcome) {
  if (!runs_) return;
  runs_ = false;
  desk_.WorkEnds();
  took_ = WorkTime() - start_;
  LogInformation("operation", name_ + ": " + outcome + ", " + NumberText(finished_) + " of " +
                                  NumberText(steps_) + " items in " +
                                  std::to_string(took_.count()) + " ms");
}

std::string Operation::Figures(const std::string& verb) const {
  constexpr double kSecond = 1000;
  return NumberText(finished_) + (finished_ == 1 ? " item " : " items ") + verb + " in " +
         FixedText(static_cast<double>(took_.count()) / kSecond, 1) + " s";
}

}  // namespace velmoor
