// Rows of texts put into a table at once, as an import brings them: every cell goes through the
// check of a single edit.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/Project.h"
#include "tables/MotionTable.h"

namespace velmoor {

class clsHX7Jog;
class clsHX7Position;
class clsHX7Zone;

// How a table looks as text: the name of its number column, the first number, and the names of the
// cells from column 0 on.
struct TableShape {
  std::string_view numberColumn;
  int firstNumber = 0;
  std::vector<std::string_view> cells;
};
[[nodiscard]] TableShape ShapeOf(const MotionTable& table);
// A cell of the column is a number, or "-" for none.
[[nodiscard]] bool IsNumberCell(const TableColumn& column);

struct RowTexts {
  int row = 1;  // of the table, from 1
  // In the order of the shape; nothing: the cell stays, and is not judged.
  std::vector<std::optional<std::string>> cells;
};

struct CellFault {
  int row = 0;      // from 1
  int column = -1;  // in the order of the shape; -1: the row as a whole
  std::string words;
  bool ofProgramme = false;  // the words name their place
};

// Puts the texts into the table's edits as the checks accept them. With any fault the edits hold
// what was given, and the caller puts them back; so are marks the caller's affair. What keeps
// a programme from being committed comes behind the faults of its cells.
[[nodiscard]] std::vector<CellFault> PutRows(const Project& project, clsHX7Position& table,
                                             const std::vector<RowTexts>& rows);
[[nodiscard]] std::vector<CellFault> PutRows(const Project& project, clsHX7Zone& table,
                                             const std::vector<RowTexts>& rows);
[[nodiscard]] std::vector<CellFault> PutRows(const Project& project, clsHX7Jog& table,
                                             const std::vector<RowTexts>& rows);

// Empties every cell that a text can hold.
void ClearCells(MotionTable& table);

}  // namespace velmoor
