#include "tables/TableBlock.h"

#include <algorithm>

#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"

namespace velmoor {
namespace {

using TextRows = std::vector<std::vector<std::string>>;

const TableColumn& ColumnOf(const MotionTable& table, int column) {
  return table.Layout().columns[static_cast<std::size_t>(column)];
}

bool IsFixed(const MotionTable& table, int column) {
  return ColumnOf(table, column).kind == CellKind::fixed;
}

// Lines end in LF, CRLF or CR; a line break at the very end makes no row of its own.
TextRows SplitBlock(std::string_view text) {
  TextRows rows{{""}};
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    if (c == '\t') {
      rows.back().emplace_back();
    } else if (c != '\r' && c != '\n') {
      rows.back().back() += c;
    } else if (i + 1 < text.size()) {
      rows.emplace_back(1);
    }
  }
  return rows;
}

std::vector<CellText> Repeated(const CellBlock& into, const std::string& text) {
  std::vector<CellText> texts;
  for (int row = into.top; row <= into.bottom; ++row) {
    for (int column = into.left; column <= into.right; ++column) {
      texts.push_back({row, column, text});
    }
  }
  return texts;
}

}  // namespace

std::vector<std::string> PutTexts(MotionTable& table, const std::vector<CellText>& texts,
                                  const CellContext& context) {
  const MotionTable::Rows before = table.Cells();
  std::vector<std::string> faults;
  // All texts stand before any is checked: labels and their references arrive together.
  for (const CellText& cell : texts) table.SetText(cell.row, cell.column, Trim(cell.text));
  for (const CellText& cell : texts) {
    const CellCheck check = context.check(cell.row, cell.column, table.Text(cell.row, cell.column));
    if (check.accepted) {
      table.SetText(cell.row, cell.column, check.text);
    } else {
      faults.push_back(context.place(cell.row, cell.column) + ": " + OneLine(check.words));
    }
  }
  if (faults.empty()) return faults;
  for (const CellText& cell : texts) {
    table.SetText(
        cell.row, cell.column,
        before[static_cast<std::size_t>(cell.row) - 1][static_cast<std::size_t>(cell.column)]);
  }
  return faults;
}

std::string CopyBlock(const MotionTable& table, const CellBlock& block) {
  std::string text;
  for (int row = block.top; row <= block.bottom; ++row) {
    for (int column = block.left; column <= block.right; ++column) {
      if (column > block.left) text += '\t';
      text += table.Text(row, column);
    }
    text += '\n';
  }
  return text;
}

std::vector<std::string> PasteBlock(MotionTable& table, const CellBlock& into,
                                    std::string_view text, const CellContext& context) {
  const TextRows rows = SplitBlock(text);
  if (rows.size() == 1 && rows.front().size() == 1) {
    return PutTexts(table, Repeated(into, rows.front().front()), context);
  }
  std::vector<CellText> texts;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (std::size_t j = 0; j < rows[i].size(); ++j) {
      const int row = into.top + static_cast<int>(i);
      const int column = into.left + static_cast<int>(j);
      const bool inside = row <= table.RowsInArray() &&
                          column < static_cast<int>(table.Layout().columns.size()) &&
                          !IsFixed(table, column);
      if (!inside) {
        return {"The block of " + NumberText(rows.size()) + " rows and " +
                NumberText(rows[i].size()) + " columns does not fit here!"};
      }
      texts.push_back({row, column, rows[i][j]});
    }
  }
  return PutTexts(table, texts, context);
}

std::vector<std::string> FillDown(MotionTable& table, const CellBlock& block,
                                  const CellContext& context) {
  const int source = block.top == block.bottom ? block.top - 1 : block.top;
  if (source < 1) return {};
  std::vector<CellText> texts;
  for (int row = source + 1; row <= block.bottom; ++row) {
    for (int column = block.left; column <= block.right; ++column) {
      if (IsFixed(table, column) || ColumnOf(table, column).kind == CellKind::label) continue;
      texts.push_back({row, column, table.Text(source, column)});
    }
  }
  return PutTexts(table, texts, context);
}

std::vector<std::string> ClearBlock(MotionTable& table, const CellBlock& block,
                                    const CellContext& context) {
  std::vector<CellText> texts = Repeated(block, "");
  std::erase_if(texts, [&](const CellText& cell) { return IsFixed(table, cell.column); });
  return PutTexts(table, texts, context);
}

CellPlace FindText(const MotionTable& table, CellPlace from, const std::string& wanted) {
  const int columns = static_cast<int>(table.Layout().columns.size());
  const int cells = columns * table.RowsInArray();
  const std::string text = UpperCase(wanted);
  const int start = from.row < 1 ? -1 : (from.row - 1) * columns + std::max(from.column, 0);
  if (text.empty()) return {};
  for (int i = 1; i <= cells; ++i) {
    const int at = (start + i + cells) % cells;
    const CellPlace place{at / columns + 1, at % columns};
    if (IsFixed(table, place.column)) continue;
    if (UpperCase(table.Text(place.row, place.column)).find(text) != std::string::npos) {
      return place;
    }
  }
  return {};
}

}  // namespace velmoor
