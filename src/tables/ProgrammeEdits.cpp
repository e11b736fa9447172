#include "tables/ProgrammeEdits.h"

#include <algorithm>

#include "platform/Utility.h"
#include "tables/clsHX7Position.h"

namespace velmoor {
namespace {

using Position = clsHX7Position;
constexpr int kColumns = Position::next + 1;

const std::string& LabelIn(const MotionTable::Rows& cells, int row) {
  return cells[static_cast<std::size_t>(row) - 1][Position::label];
}

bool HoldsLabel(const MotionTable::Rows& cells, const std::string& label) {
  return std::ranges::any_of(cells, [&](const auto& row) { return row[Position::label] == label; });
}

void ChangeExistingLabelReferences(Position& table, const std::string& strLastLabel,
                                   const std::string& label) {
  for (int row = 1; row <= table.RowsInArray(); ++row) {
    if (table.Text(row, Position::next) == strLastLabel) table.SetText(row, Position::next, label);
  }
}

void CopyStep(Position& table, int from, int to) {
  for (int column = 0; column < kColumns; ++column) {
    table.SetText(to, column, table.Text(from, column));
  }
}

void ClearStep(Position& table, int row) {
  for (int column = 0; column < kColumns; ++column) table.SetText(row, column, "");
}

}  // namespace

void FollowLabels(Position& table, const MotionTable::Rows& before) {
  for (int row = 1; row <= table.RowsInArray(); ++row) {
    const std::string& old = LabelIn(before, row);
    const std::string label = table.Text(row, Position::label);
    const bool gone = !old.empty() && old != label && !HoldsLabel(table.Cells(), old);
    const bool moved = !label.empty() && HoldsLabel(before, label);
    if (gone && !moved) ChangeExistingLabelReferences(table, old, label);
  }
}

bool InsertStep(Position& table, int row) {
  if (!table.IsBlank(table.RowsInArray())) return false;
  for (int to = table.RowsInArray(); to > row; --to) CopyStep(table, to - 1, to);
  ClearStep(table, row);
  return true;
}

void DeleteStep(Position& table, int row) {
  const std::string label = table.Text(row, Position::label);
  for (int to = row; to < table.RowsInArray(); ++to) CopyStep(table, to + 1, to);
  ClearStep(table, table.RowsInArray());
  if (!label.empty()) ChangeExistingLabelReferences(table, label, "");
}

void AutoFillNoDistance(Position& table, int resolution) {
  const std::string one = FormatToResolution("1.0", resolution);
  for (int row = 1; row <= table.RowsInArray(); ++row) {
    if (table.IsBlank(row)) continue;
    const auto fill = [&](int column, const std::string& text) {
      if (table.Text(row, column).empty()) table.SetText(row, column, text);
    };
    fill(Position::position, "-");
    fill(Position::speed, one);
    fill(Position::registrationDistance, "-");
    fill(Position::registrationSpeed, one);
  }
}

std::string GetNewNextComboList(const Position& table) {
  std::string list = "|END";
  for (int row = 1; row <= table.RowsInArray(); ++row) {
    const std::string& label = table.Text(row, Position::label);
    if (!label.empty()) list += "|" + label;
  }
  return list;
}

}  // namespace velmoor
