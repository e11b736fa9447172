#include "app/frmLineSet.h"

#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

// "100", "pn100" and "Pn100" name the same.
std::string NameOf(const std::string& text) {
  const std::string name = UpperCase(Trim(text));
  return "Pn" + (name.starts_with("PN") ? name.substr(2) : name);
}

}  // namespace

void frmLineSet::FormLoad() {
  cells_ = {};
  assignments_.clear();
  ui().lblAxes.SetText("The same values for " + axes_ +
                       ", each judged by its own project, which is saved.  Nothing is sent.");
  ui().vsFG.Bind(this);
  ui().vsFG.SetColumnWidth(0, 14);
  ui().vsFG.SetCurrent(1, 0);
}

bool frmLineSet::TakeResult() {
  if (!ui().vsFG.FinishEdit()) return false;
  assignments_.clear();
  for (const auto& [name, value] : cells_) {
    if (Trim(name).empty() && Trim(value).empty()) continue;
    if (Trim(name).empty() || Trim(value).empty()) {
      ShowExclamation("Each row takes a parameter, such as Pn100, and its value!");
      return false;
    }
    assignments_.push_back(NameOf(name) + "=" + std::string(Trim(value)));
  }
  if (assignments_.empty()) ShowExclamation("No parameter is named!");
  return !assignments_.empty();
}

std::string frmLineSet::Text(int row, int column) const {
  if (row == 0) return column == 0 ? "Parameter" : "Value";
  return cells_.at(static_cast<std::size_t>(row) - 1).at(static_cast<std::size_t>(column));
}

void frmLineSet::SetText(int row, int column, const std::string& text) {
  cells_.at(static_cast<std::size_t>(row) - 1).at(static_cast<std::size_t>(column)) = text;
}

CellTraits frmLineSet::Traits(int /*row*/, int /*column*/) const {
  CellTraits traits;
  traits.editable = true;
  return traits;
}

}  // namespace velmoor
