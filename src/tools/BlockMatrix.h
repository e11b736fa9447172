// The rows of a parameter tool: text cells, addressed by row (from 1) and by column name.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace velmoor {

enum class Column {
  category = 1,
  name,         // "Pn803", the key of a row
  description,  // shown text; units are appended at run time
  value,        // display form: a list item's text, or a number in user units
  minimum,
  maximum,
  initial,  // a list row's is the index of the item, from 0
  unit,     // "distance", "speed" and "acceleration" select a conversion
  listKey,  // key into the combo lists; 0 or empty: no list
  list,     // the list's items joined by "|"
  dirty,    // "1": changed and not yet sent; "0" after a transfer; empty until first touched
  size,
};

class BlockMatrix {
 public:
  static constexpr int kColumns = 12;

  [[nodiscard]] int Rows() const { return static_cast<int>(rows_.size()); }
  // Grows to `rows` rows, keeping the contents, or cuts the rows behind.
  void SetRows(int rows);

  [[nodiscard]] const std::string& Text(int row, Column column) const;
  void Set(int row, Column column, std::string_view text);
  // Sets the value, unless it is that already: an equal value does not touch the row.
  void ChangeValue(int row, const std::string& text);

  // The first row of that parameter, or 0.
  [[nodiscard]] int FindRow(std::string_view parameter) const;

  [[nodiscard]] bool IsDirty(int row) const { return Text(row, Column::dirty) == "1"; }

  // A row counts as touched when its value or mark was set since the last ReadFromDB. Only touched
  // rows are written, so that a copy that was not edited never reverts what a sister tool has
  // saved.
  [[nodiscard]] bool IsTouched(int row) const;
  [[nodiscard]] bool IsAnyTouched() const;
  // Sets the mark of a row that is to be sent again; the row does not count as touched by that.
  void Mark(int row, std::string_view mark);
  void ClearTouched();
  void ClearTouched(int row);
  // Puts back an earlier state of a row.
  void PutBack(int row, std::string_view value, std::string_view mark, bool touched);

  // Moves a row to the top or the bottom; the rows between shift. An unknown name changes nothing.
  void MoveToFront(std::string_view parameter);
  void MoveToEnd(std::string_view parameter);

 private:
  struct Row {
    std::array<std::string, kColumns> cells;
    bool touched = false;
  };
  [[nodiscard]] const Row& At(int row) const;
  [[nodiscard]] Row& At(int row);

  std::vector<Row> rows_;
};

}  // namespace velmoor
