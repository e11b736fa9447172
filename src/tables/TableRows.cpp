#include "tables/TableRows.h"

#include <functional>

#include "tables/CellRules.h"
#include "tables/clsHX7Jog.h"
#include "tables/clsHX7Position.h"
#include "tables/clsHX7Zone.h"

namespace velmoor {
namespace {

using Check = std::function<CellCheck(int row, int column, const std::string& text)>;

template <typename Work>
void ForEachGiven(const std::vector<RowTexts>& rows, const Work& work) {
  for (const RowTexts& given : rows) {
    for (std::size_t i = 0; i < given.cells.size(); ++i) {
      if (given.cells[i]) work(given.row, static_cast<int>(i), *given.cells[i]);
    }
  }
}

// All texts first: a cell may be judged by others of its row or its table.
std::vector<CellFault> Put(MotionTable& table, const std::vector<RowTexts>& rows,
                           const Check& check) {
  ForEachGiven(rows, [&table](int row, int column, const std::string& text) {
    table.SetText(row, column, text);
  });
  std::vector<CellFault> faults;
  ForEachGiven(rows, [&](int row, int column, const std::string& text) {
    const CellCheck result = check(row, column, text);
    if (result.accepted) {
      table.SetText(row, column, result.text);
    } else {
      faults.push_back({row, column, FaultAlone(result.words)});
    }
  });
  return faults;
}

}  // namespace

TableShape ShapeOf(const MotionTable& table) {
  const TableLayout& layout = table.Layout();
  const bool steps = layout.tool == Tool::position;
  return {steps ? "step" : InfoOf(layout.tool).word, InfoOf(layout.tool).firstRow,
          CsvNames(layout)};
}

bool IsNumberCell(const TableColumn& column) {
  return column.kind == CellKind::distance || column.kind == CellKind::speed ||
         column.csv == "loop";
}

std::vector<CellFault> PutRows(const Project& project, clsHX7Position& table,
                               const std::vector<RowTexts>& rows) {
  std::vector<CellFault> faults =
      Put(table, rows, [&](int row, int column, const std::string& cell) {
        return CheckIndexCell(project, table, row, column, cell);
      });
  for (const ProgrammeFault& fault : FaultsOfProgramme(table)) {
    faults.push_back({fault.step, fault.column, fault.words, true});
  }
  return faults;
}

std::vector<CellFault> PutRows(const Project& project, clsHX7Zone& table,
                               const std::vector<RowTexts>& rows) {
  return Put(table, rows, [&](int row, int, const std::string& cell) {
    // A zone with one limit only would be stored empty.
    if (cell.empty() && !table.IsDataSetComplete(row)) {
      return CellCheck::Refuse("a zone needs both limits, or none");
    }
    return CheckLimit(project, UnitKind::distance, cell);
  });
}

std::vector<CellFault> PutRows(const Project& project, clsHX7Jog& table,
                               const std::vector<RowTexts>& rows) {
  return Put(table, rows, [&](int, int, const std::string& cell) {
    return CheckLimit(project, UnitKind::speed, cell);
  });
}

void ClearCells(MotionTable& table) {
  const std::size_t cells = CsvNames(table.Layout()).size();
  for (int row = 1; row <= table.RowsInArray(); ++row) {
    for (std::size_t i = 0; i < cells; ++i) table.SetText(row, static_cast<int>(i), "");
  }
}

}  // namespace velmoor
