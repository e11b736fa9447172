#include "tables/TableGrid.h"

#include "platform/Numbers.h"
#include "session/Session.h"

namespace velmoor {

bool TableGrid::IsBit(int column) const {
  return column > 0 &&
         table_.Layout().columns[static_cast<std::size_t>(column) - 1].kind == CellKind::fixed;
}

int TableGrid::DecimalsOf(const TableColumn& column) {
  switch (column.kind) {
    case CellKind::position:
    case CellKind::distance:
    case CellKind::speed:
      return OpenedProject().Resolution();
    case CellKind::text:
      return column.caption == "Loop" ? 0 : -1;
    default:
      return -1;
  }
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
  if (column == 0) {
    if (table_.DirtyCell(row) == "1") traits.mark = CellMark::stripe;
    traits.decimals = 0;
    return traits;
  }
  traits.editable = !IsBit(column);
  const auto at = static_cast<std::size_t>(column) - 1;
  const std::string& text = table_.Text(row, column - 1);
  if (traits.editable && text != table_.Stored(row).cells[at]) {
    traits.mark = CellMark::corner;
    traits.bold = true;
  }
  // Words such as "STOP" stand at the left, as texts do.
  if (!text.empty() && text.back() >= '0' && text.back() <= '9') {
    traits.decimals = DecimalsOf(table_.Layout().columns[at]);
  }
  if (IsBit(column)) {
    traits.lamp = table_.Text(row, column - 1) == "1" ? CellLamp::on : CellLamp::off;
  }
  if (traitsOf_) traitsOf_(row, column - 1, traits);
  return traits;
}

}  // namespace velmoor
