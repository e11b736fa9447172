#include "tools/BlockMatrix.h"

#include <algorithm>
#include <stdexcept>

namespace velmoor {
namespace {

std::size_t CellIndex(Column column) {
  return static_cast<std::size_t>(column) - 1;
}

}  // namespace

void BlockMatrix::SetRows(int rows) {
  rows_.resize(static_cast<std::size_t>(std::max(rows, 0)));
}

const BlockMatrix::Row& BlockMatrix::At(int row) const {
  if (row < 1 || row > Rows()) throw std::out_of_range("Subscript out of range");
  return rows_[static_cast<std::size_t>(row) - 1];
}

BlockMatrix::Row& BlockMatrix::At(int row) {
  return const_cast<Row&>(static_cast<const BlockMatrix*>(this)->At(row));
}

const std::string& BlockMatrix::Text(int row, Column column) const {
  return At(row).cells[CellIndex(column)];
}

void BlockMatrix::Set(int row, Column column, std::string_view text) {
  Row& target = At(row);
  target.cells[CellIndex(column)] = text;
  if (column == Column::value || column == Column::dirty) target.touched = true;
}

void BlockMatrix::ChangeValue(int row, const std::string& text) {
  if (Text(row, Column::value) != text) Set(row, Column::value, text);
}

void BlockMatrix::Mark(int row, std::string_view mark) {
  At(row).cells[CellIndex(Column::dirty)] = mark;
}

bool BlockMatrix::IsAnyTouched() const {
  return std::any_of(rows_.begin(), rows_.end(), [](const Row& row) { return row.touched; });
}

int BlockMatrix::FindRow(std::string_view parameter) const {
  for (int row = 1; row <= Rows(); ++row) {
    if (Text(row, Column::name) == parameter) return row;
  }
  return 0;
}

bool BlockMatrix::IsTouched(int row) const {
  return At(row).touched;
}

void BlockMatrix::ClearTouched() {
  for (Row& row : rows_) row.touched = false;
}

void BlockMatrix::ClearTouched(int row) {
  At(row).touched = false;
}

void BlockMatrix::PutBack(int row, std::string_view value, std::string_view mark, bool touched) {
  Set(row, Column::value, value);
  Mark(row, mark);
  At(row).touched = touched;
}

void BlockMatrix::MoveToFront(std::string_view parameter) {
  const int row = FindRow(parameter);
  if (row > 0) std::rotate(rows_.begin(), rows_.begin() + row - 1, rows_.begin() + row);
}

void BlockMatrix::MoveToEnd(std::string_view parameter) {
  const int row = FindRow(parameter);
  if (row > 0) std::rotate(rows_.begin() + row - 1, rows_.begin() + row, rows_.end());
}

}  // namespace velmoor
