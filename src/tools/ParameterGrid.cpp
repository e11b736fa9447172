#include "tools/ParameterGrid.h"

#include <array>

#include "session/Session.h"
#include "tools/ParameterRules.h"

namespace velmoor {

void ParameterGrid::SetLocked(int row, const std::string& reason) {
  if (reason.empty()) {
    locked_.erase(row);
  } else {
    locked_[row] = reason;
  }
}

std::string ParameterGrid::LockedBecause(int row) const {
  const auto found = locked_.find(row);
  return found == locked_.end() ? std::string() : found->second;
}

std::string ParameterGrid::Text(int row, int column) const {
  static constexpr std::array<const char*, 4> kHeadings{"Category", "Parameter", "Description",
                                                        "Value"};
  if (row == 0) return kHeadings.at(static_cast<std::size_t>(column));
  const BlockMatrix& rows = tool_.Rows();
  switch (column) {
    case kCategory:
      return rows.Text(row, Column::category);
    case kParameter:
      return rows.Text(row, Column::name);
    case kDescription:
      return DescriptionInUnits(OpenedProject(), rows, row);
    default:
      return rows.Text(row, Column::value);
  }
}

void ParameterGrid::SetText(int row, int column, const std::string& text) {
  if (column == kValue) tool_.EditValue(row, text);
}

CellTraits ParameterGrid::Traits(int row, int column) const {
  CellTraits traits;
  if (row == 0 || column != kValue) return traits;
  const BlockMatrix& rows = tool_.Rows();
  traits.locked = rows.Text(row, Column::name).empty() || locked_.contains(row);
  traits.editable = !traits.locked;
  traits.changed = rows.IsDirty(row);
  SetComboList(traits, rows.Text(row, Column::list));
  return traits;
}

}  // namespace velmoor
