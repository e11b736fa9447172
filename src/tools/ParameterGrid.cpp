#include "tools/ParameterGrid.h"

#include <algorithm>
#include <array>

#include "platform/Numbers.h"
#include "session/Session.h"
#include "tools/ParameterRules.h"

namespace velmoor {

int ParameterGrid::ToolRow(int gridRow) const {
  if (gridRow < 1 || order_.empty()) return gridRow;
  return order_.at(static_cast<std::size_t>(gridRow) - 1);
}

int ParameterGrid::GridRow(int toolRow) const {
  if (toolRow < 1 || order_.empty()) return toolRow;
  return static_cast<int>(std::ranges::find(order_, toolRow) - order_.begin()) + 1;
}

void ParameterGrid::SortBy(int column, bool descending) {
  std::vector<std::pair<std::string, int>> keys;
  for (int row = 1; row <= tool_.RowsInArray(); ++row) {
    keys.emplace_back(LowerCase(ToolText(row, column)), row);
  }
  std::ranges::stable_sort(keys, [descending](const auto& left, const auto& right) {
    return descending ? right.first < left.first : left.first < right.first;
  });
  order_.clear();
  for (const auto& key : keys) order_.push_back(key.second);
}

void ParameterGrid::SetLocked(int toolRow, const std::string& reason) {
  if (reason.empty()) {
    locked_.erase(toolRow);
  } else {
    locked_[toolRow] = reason;
  }
}

std::string ParameterGrid::LockedBecause(int toolRow) const {
  const auto found = locked_.find(toolRow);
  return found == locked_.end() ? std::string() : found->second;
}

std::string ParameterGrid::Text(int row, int column) const {
  static constexpr std::array<const char*, 4> kHeadings{"Category", "Parameter", "Description",
                                                        "Value"};
  if (row == 0) return kHeadings.at(static_cast<std::size_t>(column));
  return ToolText(ToolRow(row), column);
}

std::string ParameterGrid::ToolText(int toolRow, int column) const {
  switch (column) {
    case kCategory:
      return tool_.Text(toolRow, Column::category);
    case kParameter:
      return tool_.Text(toolRow, Column::name);
    case kDescription:
      return DescriptionInUnits(OpenedProject(), tool_.Text(toolRow, Column::description),
                                tool_.Text(toolRow, Column::unit));
    default:
      return tool_.Text(toolRow, Column::value);
  }
}

void ParameterGrid::SetText(int row, int column, const std::string& text) {
  if (column == kValue) tool_.EditValue(ToolRow(row), text);
}

CellTraits ParameterGrid::Traits(int row, int column) const {
  CellTraits traits;
  if (row == 0 || column != kValue) return traits;
  const int toolRow = ToolRow(row);
  traits.locked = locked_.contains(toolRow);
  traits.editable = !traits.locked;
  traits.changed = tool_.IsMarked(toolRow);
  SetComboList(traits, tool_.ParameterOf(toolRow).list);
  return traits;
}

}  // namespace velmoor
