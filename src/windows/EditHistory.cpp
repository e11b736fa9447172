#include "windows/EditHistory.h"

#include <utility>

namespace velmoor {

void EditHistory::Reset(Rows rows) {
  rows_ = std::move(rows);
  steps_.clear();
  done_ = 0;
}

bool EditHistory::Record(const Rows& rows) {
  Step step;
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    for (std::size_t column = 0; column < rows_[row].size(); ++column) {
      std::string& before = rows_[row][column];
      const std::string& after = rows.at(row).at(column);
      if (before == after) continue;
      step.push_back({row, column, std::exchange(before, after), after});
    }
  }
  if (step.empty()) return false;
  steps_.resize(done_);
  if (steps_.size() == kMostSteps) steps_.erase(steps_.begin());
  steps_.push_back(std::move(step));
  done_ = steps_.size();
  return true;
}

std::vector<EditHistory::Assignment> EditHistory::Apply(const Step& step,
                                                        std::string Change::*text) {
  std::vector<Assignment> assignments;
  assignments.reserve(step.size());
  for (const Change& change : step) {
    rows_[change.row][change.column] = change.*text;
    assignments.push_back({change.row, change.column, change.*text});
  }
  return assignments;
}

std::vector<EditHistory::Assignment> EditHistory::Undo() {
  if (!CanUndo()) return {};
  return Apply(steps_[--done_], &Change::before);
}

std::vector<EditHistory::Assignment> EditHistory::Redo() {
  if (!CanRedo()) return {};
  return Apply(steps_[done_++], &Change::after);
}

}  // namespace velmoor
