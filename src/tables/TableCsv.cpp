#include "tables/TableCsv.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "platform/Bounds.h"
#include "platform/Csv.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/VisibleText.h"
#include "tables/CellRules.h"
#include "tables/clsHX7Jog.h"
#include "tables/clsHX7Position.h"
#include "tables/clsHX7Zone.h"

namespace velmoor {
namespace {

constexpr std::string_view kDirtyColumn = "dirty";

// How a table looks as text: the name of its number column, the first number, and the names of the
// cells from column 0 on.
struct Shape {
  std::string_view numberColumn;
  int firstNumber;
  std::vector<std::string_view> cells;
};

Shape ShapeOf(const clsHX7Position&) {
  return {"step", 1, CsvNames(clsHX7Position::Columns())};
}
Shape ShapeOf(const clsHX7Zone&) {
  return {"zone", 0, CsvNames(clsHX7Zone::Columns())};
}
Shape ShapeOf(const clsHX7Jog&) {
  return {"jog", 0, CsvNames(clsHX7Jog::Columns())};
}

std::string Export(const Shape& shape, const MotionTable& table) {
  CsvRow header{std::string(shape.numberColumn)};
  header.insert(header.end(), shape.cells.begin(), shape.cells.end());
  header.emplace_back(kDirtyColumn);
  std::string text = CsvLine(header);
  for (int row = 1; row <= table.RowsInArray(); ++row) {
    CsvRow fields{NumberText(row - 1 + shape.firstNumber)};
    for (std::size_t i = 0; i < shape.cells.size(); ++i) {
      fields.push_back(table.Text(row, static_cast<int>(i)));
    }
    fields.push_back(table.DirtyCell(row));
    text += CsvLine(fields);
  }
  return text;
}

// One import: finds the columns, places the texts, checks them, and undoes everything on a fault.
class Import {
 public:
  using Check = std::function<CellCheck(int row, int column, const std::string& text)>;

  Import(Shape shape, MotionTable& table) : shape_(std::move(shape)), table_(table) {}

  std::vector<std::string> Run(std::string_view text, const Check& check) {
    const MotionTable::Edits before = table_.TakeEdits();
    try {
      const std::vector<CsvRow> rows = ParseCsv(text);
      if (FindColumns(rows)) {
        PlaceRows(rows);
        CheckRows(check);
      }
    } catch (const std::exception& error) {
      AddFault(error.what());
    }
    if (!faults_.empty()) {
      if (untold_ > 0) faults_.push_back("and " + NumberText(untold_) + " more");
      table_.PutBackEdits(before);
      return faults_;
    }
    table_.MarkChangesSince(before.cells);
    return {};
  }

 private:
  // The first ones are told, the others counted.
  void AddFault(const std::string& words) {
    if (faults_.size() < bounds::kFaultsTold) {
      faults_.push_back(Shortened(VisibleText(OneLine(words)), bounds::kFaultText));
    } else {
      ++untold_;
    }
  }

  bool FindColumns(const std::vector<CsvRow>& rows) {
    if (rows.empty()) {
      AddFault("The text holds no header");
      return false;
    }
    columnOf_.assign(shape_.cells.size(), std::nullopt);
    for (std::size_t i = 0; i < rows.front().size(); ++i) {
      const std::string name = LowerCase(Trim(rows.front()[i]));
      const auto cell = std::find(shape_.cells.begin(), shape_.cells.end(), name);
      if (cell != shape_.cells.end()) {
        columnOf_[static_cast<std::size_t>(cell - shape_.cells.begin())] = i;
      } else if (name == shape_.numberColumn) {
        numberColumn_ = i;
      } else if (name != kDirtyColumn) {
        AddFault("Unknown column '" + name + "'");
      }
    }
    for (std::size_t i = 0; i < columnOf_.size(); ++i) {
      if (!columnOf_[i]) AddFault("Column '" + std::string(shape_.cells[i]) + "' is missing");
    }
    return faults_.empty();
  }

  void PlaceRows(const std::vector<CsvRow>& rows) {
    if (!numberColumn_) ClearTable();
    std::vector<bool> named(static_cast<std::size_t>(table_.RowsInArray()) + 1, false);
    for (std::size_t line = 1; line < rows.size(); ++line) {
      const std::optional<int> row = RowOf(rows[line], line);
      if (!row) continue;
      if (named[static_cast<std::size_t>(*row)]) {
        AddFault(Place(*row) + ", column " + std::string(shape_.numberColumn) +
                 ": the row is named twice");
        continue;
      }
      named[static_cast<std::size_t>(*row)] = true;
      rowsToCheck_.push_back(*row);
      for (std::size_t i = 0; i < columnOf_.size(); ++i) {
        const std::size_t at = *columnOf_[i];
        const std::string text = at < rows[line].size() ? rows[line][at] : std::string();
        table_.SetText(*row, static_cast<int>(i), Trim(text));
      }
    }
  }

  void ClearTable() {
    for (int row = 1; row <= table_.RowsInArray(); ++row) {
      for (std::size_t i = 0; i < shape_.cells.size(); ++i) {
        table_.SetText(row, static_cast<int>(i), "");
      }
    }
  }

  std::optional<int> RowOf(const CsvRow& fields, std::size_t line) {
    if (!numberColumn_) {
      if (line <= static_cast<std::size_t>(table_.RowsInArray())) return static_cast<int>(line);
      AddFault("Line " + NumberText(line + 1) + ": the table has " +
               NumberText(table_.RowsInArray()) + " rows only");
      return std::nullopt;
    }
    const std::string text = *numberColumn_ < fields.size() ? fields[*numberColumn_] : "";
    const auto number = ParseWhole(text);
    if (number && *number >= shape_.firstNumber &&
        *number < shape_.firstNumber + table_.RowsInArray()) {
      return static_cast<int>(*number) - shape_.firstNumber + 1;
    }
    AddFault("Line " + NumberText(line + 1) + ", column " + std::string(shape_.numberColumn) +
             ": '" + text + "' is no row of the table");
    return std::nullopt;
  }

  void CheckRows(const Check& check) {
    for (const int row : rowsToCheck_) {
      for (std::size_t i = 0; i < shape_.cells.size(); ++i) {
        const int column = static_cast<int>(i);
        const CellCheck result = check(row, column, table_.Text(row, column));
        if (result.accepted) {
          table_.SetText(row, column, result.text);
        } else {
          AddFault(Place(row) + ", column " + std::string(shape_.cells[i]) + ": " +
                   FaultAlone(result.words));
        }
      }
    }
  }

  [[nodiscard]] std::string Place(int row) const {
    return "Row " + NumberText(row - 1 + shape_.firstNumber);
  }

  Shape shape_;
  MotionTable& table_;
  std::vector<std::optional<std::size_t>> columnOf_;
  std::optional<std::size_t> numberColumn_;
  std::vector<int> rowsToCheck_;
  std::vector<std::string> faults_;
  std::size_t untold_ = 0;
};

}  // namespace

std::string ExportCsv(const clsHX7Position& table) {
  return Export(ShapeOf(table), table);
}
std::string ExportCsv(const clsHX7Zone& table) {
  return Export(ShapeOf(table), table);
}
std::string ExportCsv(const clsHX7Jog& table) {
  return Export(ShapeOf(table), table);
}

std::vector<std::string> ImportCsv(const Project& project, clsHX7Position& table,
                                   std::string_view text) {
  const MotionTable::Edits before = table.TakeEdits();
  Import import(ShapeOf(table), table);
  std::vector<std::string> faults =
      import.Run(text, [&](int row, int column, const std::string& cell) {
        return CheckIndexCell(project, table, row, column, cell);
      });
  if (!faults.empty()) return faults;
  if (const auto fault = FindProgrammeFault(table)) {
    table.PutBackEdits(before);
    faults.push_back(OneLine(*fault));
  }
  return faults;
}

std::vector<std::string> ImportCsv(const Project& project, clsHX7Zone& table,
                                   std::string_view text) {
  return Import(ShapeOf(table), table).Run(text, [&](int row, int, const std::string& cell) {
    // A zone with one limit only would be stored empty.
    if (cell.empty() && !table.IsDataSetComplete(row)) {
      return CellCheck::Refuse("a zone needs both limits, or none");
    }
    return CheckLimit(project, UnitKind::distance, cell);
  });
}

std::vector<std::string> ImportCsv(const Project& project, clsHX7Jog& table,
                                   std::string_view text) {
  return Import(ShapeOf(table), table).Run(text, [&](int, int, const std::string& cell) {
    return CheckLimit(project, UnitKind::speed, cell);
  });
}

}  // namespace velmoor
