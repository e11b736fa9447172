// Edits of a table that concern many cells at once: blocks as tab-separated text, fill down, clear.
//
// Each is all or nothing and goes through the check of a single edit. The result lists what was
// refused, one line a cell ("Row 3, Speed: ..."); empty: the texts stand in the table. Marks are
// the caller's affair.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tables/MotionTable.h"
#include "tools/CellCheck.h"

namespace velmoor {

// Rows from 1, columns of the table from 0, ends included.
struct CellBlock {
  int top = 1;
  int left = 0;
  int bottom = 1;
  int right = 0;
};

struct CellText {
  int row;
  int column;
  std::string text;
};

// How the window that edits the table checks and names its cells.
struct CellContext {
  std::function<CellCheck(int row, int column, const std::string& text)> check;
  std::function<std::string(int row, int column)> place;  // "Row 3, Speed"
};

// Puts the texts into their cells as the checks accept them.
[[nodiscard]] std::vector<std::string> PutTexts(MotionTable& table,
                                                const std::vector<CellText>& texts,
                                                const CellContext& context);

// The cells as text: columns behind tabs, rows as lines. Bits are "1" and "0".
[[nodiscard]] std::string CopyBlock(const MotionTable& table, const CellBlock& block);
// Puts a block of tab-separated text with its first cell at (row, column). One text alone fills the
// whole of `into`. A block that reaches beyond the table or over a bit is refused.
[[nodiscard]] std::vector<std::string> PasteBlock(MotionTable& table, const CellBlock& into,
                                                  std::string_view text,
                                                  const CellContext& context);
// Repeats the block's first row in its other rows; a block of one row takes the row above it.
// Labels are left as they are: each is unique.
[[nodiscard]] std::vector<std::string> FillDown(MotionTable& table, const CellBlock& block,
                                                const CellContext& context);
[[nodiscard]] std::vector<std::string> ClearBlock(MotionTable& table, const CellBlock& block,
                                                  const CellContext& context);

// The first cell behind (row, column), in reading order and round the end, that holds `wanted` in
// any case; row 0 when there is none.
struct CellPlace {
  int row = 0;
  int column = 0;
  bool operator==(const CellPlace&) const = default;
};
[[nodiscard]] CellPlace FindText(const MotionTable& table, CellPlace from,
                                 const std::string& wanted);

}  // namespace velmoor
