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
  static constexpr std::array<const char*, 8> kHeadings{
      "Category", "Parameter", "Description", "Value", "Unit", "Default", "Range", "Notes"};
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
    case kUnit:
      return UnitsInWords(OpenedProject(), tool_.Text(toolRow, Column::unit));
    case kDefault:
      return tool_.DefaultText(toolRow);
    case kRange:
      return tool_.ParameterOf(toolRow).list.empty() ? RangeText(toolRow) : "a list";
    case kNotes:
      return NotesOf(toolRow);
    default:
      return tool_.Text(toolRow, Column::value);
  }
}

std::string ParameterGrid::RangeText(int toolRow) const {
  try {
    return RangeInWords(OpenedProject(), tool_.Describe(toolRow));
  } catch (const NumberError&) {
    return {};
  }
}

std::string ParameterGrid::NotesOf(int toolRow) const {
  std::string notes;
  const auto add = [&notes](const std::string& words) {
    if (!words.empty()) notes += (notes.empty() ? "" : "; ") + words;
  };
  if (locked_.contains(toolRow)) add(LockedInShort(tool_.Text(toolRow, Column::name)));
  if (tool_.EditOf(toolRow)) {
    add("changed");
  } else if (tool_.IsMarked(toolRow)) {
    add("to download");
  }
  if (const auto other = tool_.OtherInAmplifier(toolRow)) add("amplifier has " + *other);
  if (!tool_.IsDefault(toolRow)) add("not default");
  add(DigitsInWords(tool_.Describe(toolRow)));
  return notes;
}

// Texts of lists and digits are none.
int ParameterGrid::DecimalsOf(int toolRow) const {
  const ValueForm form = tool_.ParameterOf(toolRow).form;
  const bool number = form == ValueForm::number || form == ValueForm::units;
  return number ? OpenedProject().Resolution() : -1;
}

void ParameterGrid::SetText(int row, int column, const std::string& text) {
  if (column == kValue) tool_.EditValue(ToolRow(row), text);
}

CellTraits ParameterGrid::Traits(int row, int column) const {
  CellTraits traits;
  if (row == 0 || (column != kValue && column != kDefault)) return traits;
  const int toolRow = ToolRow(row);
  traits.decimals = DecimalsOf(toolRow);
  if (column == kDefault) return traits;
  traits.locked = locked_.contains(toolRow);
  traits.editable = !traits.locked;
  traits.bold = !tool_.IsDefault(toolRow);
  if (tool_.IsMarked(toolRow)) traits.mark = CellMark::stripe;
  if (tool_.EditOf(toolRow)) traits.mark = CellMark::corner;
  SetComboList(traits, tool_.ParameterOf(toolRow).list);
  return traits;
}

}  // namespace velmoor
