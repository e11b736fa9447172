#include "tables/TableCsv.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "platform/Bounds.h"
#include "platform/Csv.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/VisibleText.h"
#include "tables/TableRows.h"
#include "tables/clsHX7Jog.h"
#include "tables/clsHX7Position.h"
#include "tables/clsHX7Zone.h"

namespace velmoor {
namespace {

constexpr std::string_view kDirtyColumn = "dirty";

// One import: finds the columns, puts the rows in, and undoes everything on a fault.
template <typename Table>
class Import {
 public:
  Import(const Project& project, Table& table)
      : project_(project), shape_(ShapeOf(table)), table_(table) {}

  std::vector<std::string> Run(std::string_view text) {
    const MotionTable::Edits before = table_.TakeEdits();
    try {
      const std::vector<CsvRow> rows = ParseCsv(text);
      if (FindColumns(rows)) {
        PlaceRows(rows);
        if (!numberColumn_) ClearCells(table_);
        TellFaults(PutRows(project_, table_, placed_));
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
      RowTexts texts{*row, {}};
      for (const std::optional<std::size_t>& at : columnOf_) {
        const bool given = *at < rows[line].size();
        texts.cells.emplace_back(std::string(given ? Trim(rows[line][*at]) : std::string_view()));
      }
      placed_.push_back(std::move(texts));
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

  void TellFaults(const std::vector<CellFault>& faults) {
    for (const CellFault& fault : faults) {
      if (!fault.ofProgramme) {
        AddFault(Place(fault.row) + ", column " +
                 std::string(shape_.cells[static_cast<std::size_t>(fault.column)]) + ": " +
                 fault.words);
      } else if (faults_.empty()) {
        // The first is what a window tells.
        AddFault(fault.words);
        return;
      }
    }
  }

  [[nodiscard]] std::string Place(int row) const {
    return "Row " + NumberText(row - 1 + shape_.firstNumber);
  }

  const Project& project_;
  TableShape shape_;
  Table& table_;
  std::vector<std::optional<std::size_t>> columnOf_;
  std::optional<std::size_t> numberColumn_;
  std::vector<RowTexts> placed_;
  std::vector<std::string> faults_;
  std::size_t untold_ = 0;
};

}  // namespace

std::optional<Tool> TableOfCsv(std::string_view text) {
  const std::vector<CsvRow> rows = ParseCsv(text.substr(0, text.find('\n')));
  const auto heads = [&rows](std::string_view name) {
    return !rows.empty() && std::ranges::any_of(rows.front(), [name](const std::string& field) {
      return LowerCase(Trim(field)) == name;
    });
  };
  if (heads("position")) return Tool::position;
  if (heads("lower")) return Tool::zone;
  if (heads("speed")) return Tool::jog;
  return std::nullopt;
}

std::vector<CsvRow> CsvRowsOf(const MotionTable& table) {
  const TableShape shape = ShapeOf(table);
  CsvRow header{std::string(shape.numberColumn)};
  header.insert(header.end(), shape.cells.begin(), shape.cells.end());
  header.emplace_back(kDirtyColumn);
  std::vector<CsvRow> rows{header};
  for (int row = 1; row <= table.RowsInArray(); ++row) {
    CsvRow fields{NumberText(row - 1 + shape.firstNumber)};
    for (std::size_t i = 0; i < shape.cells.size(); ++i) {
      fields.push_back(table.Text(row, static_cast<int>(i)));
    }
    fields.push_back(table.DirtyCell(row));
    rows.push_back(std::move(fields));
  }
  return rows;
}

std::string ExportCsv(const MotionTable& table) {
  std::string text;
  for (const CsvRow& row : CsvRowsOf(table)) text += CsvLine(row);
  return text;
}

std::vector<std::string> ImportCsv(const Project& project, clsHX7Position& table,
                                   std::string_view text) {
  return Import(project, table).Run(text);
}
std::vector<std::string> ImportCsv(const Project& project, clsHX7Zone& table,
                                   std::string_view text) {
  return Import(project, table).Run(text);
}
std::vector<std::string> ImportCsv(const Project& project, clsHX7Jog& table,
                                   std::string_view text) {
  return Import(project, table).Run(text);
}

}  // namespace velmoor
