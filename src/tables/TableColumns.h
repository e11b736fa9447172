// The columns of a table: everything that window, file, text and report need to know of one stands
// in its one entry.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "session/Project.h"
#include "session/Tools.h"

namespace velmoor {

// How the text of a cell becomes what goes on the wire, and how that is shown.
enum class CellKind {
  fixed,     // display only, never written
  text,      // goes as it stands
  label,     // known to the project only
  position,  // a move in distance units behind its prefix
  distance,
  speed,
  next,  // a label, or "END"
};

struct TableColumn {
  std::string_view field;            // of the shown form
  std::string_view controllerField;  // of the controller's form; empty: there is none
  CellKind kind;
  std::string_view caption;       // over the grid; the unit follows from the kind
  std::string_view csv = {};      // as comma-separated text; empty: it is not there
  std::string_view printed = {};  // in the report, up to the unit; empty: the caption
  std::string_view tip = {};      // what the column holds, at its heading
};

struct TableLayout {
  Tool tool;
  std::string_view className;  // heads the boxes about trapped errors: "clsZone"
  std::string_view table;
  std::string_view order;  // the key column by whose number the rows are walked
  int rows;
  std::span<const TableColumn> columns;
};

[[nodiscard]] constexpr bool IsWritten(const TableColumn& column) {
  return column.kind != CellKind::fixed;
}

// The field whose text goes to the amplifier; empty where none does.
[[nodiscard]] constexpr std::string_view SentField(const TableColumn& column) {
  if (column.kind == CellKind::fixed || column.kind == CellKind::label) return {};
  return column.controllerField.empty() ? column.field : column.controllerField;
}

// One heading for each column, in the project's units.
[[nodiscard]] std::vector<std::string> Headings(const TableLayout& layout, const Project& project);
[[nodiscard]] std::vector<std::string> PrintedHeadings(const TableLayout& layout,
                                                       const Project& project);
// The names of the columns of the text form, which lead the others.
[[nodiscard]] std::vector<std::string_view> CsvNames(const TableLayout& layout);

}  // namespace velmoor
