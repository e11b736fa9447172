#include "tables/TableGrid.h"

#include "platform/Numbers.h"

namespace velmoor {

bool TableGrid::IsBit(int column) const {
  return column > 0 &&
         table_.Layout().columns[static_cast<std::size_t>(column) - 1].kind == CellKind::fixed;
}

std::string TableGrid::Text(int row, int column) const {
  if (row == 0) {
    return column == 0 ? numberHeading_ : headings_.at(static_cast<std::size_t>(column) - 1);
  }
  if (column == 0) return NumberText(row - 1 + firstNumber_);
  return IsBit(column) ? "" : table_.Text(row, column - 1);
}

void TableGrid::SetText(int row, int column, const std::string& text) {
  table_.SetText(row, column - 1, text);
}

CellTraits TableGrid::Traits(int row, int column) const {
  CellTraits traits;
  if (row == 0) return traits;
  traits.changed = table_.DirtyCell(row) == "1";
  traits.editable = column > 0 && !IsBit(column);
  if (IsBit(column)) {
    traits.lamp = table_.Text(row, column - 1) == "1" ? CellLamp::on : CellLamp::off;
  }
  if (traitsOf_ && column > 0) traitsOf_(row, column - 1, traits);
  return traits;
}

}  // namespace velmoor
