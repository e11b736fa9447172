// The windows of the zone and jog tables: numbers that may be empty, beside the bits of their row.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tables/TableWindow.h"

namespace velmoor {

class LimitWindow : public TableWindow {
 public:
  // ---- the buffer of one cell
  [[nodiscard]] bool CanCopyCell() const { return CurrentCell().row > 0; }
  [[nodiscard]] bool CanPasteCell() const { return CanCopyCell() && strTempBuffer_; }
  void CopyCellContentsIntoBuffer() { Copy(); }
  void CutCellContentsIntoBuffer() { Cut(); }

 protected:
  LimitWindow(const Layout& layout, TableWindowInfo info, MotionTable& table, UnitKind kind)
      : TableWindow(layout, std::move(info), table), table_(table), kind_(kind) {}

  [[nodiscard]] CellCheck Check(int row, int column, const std::string& text) const override;
  void CopyIntoBuffer(int row, int column) override { strTempBuffer_ = table_.Text(row, column); }
  void CutIntoBuffer(int row, int column) override { table_.SetText(row, column, ""); }
  void PasteFromBuffer(int row, int column) override;
  [[nodiscard]] bool HoldsBuffer() const override { return strTempBuffer_.has_value(); }
  [[nodiscard]] CellBlock BufferBlock(int row, int column) const override {
    return {row, column, row, column};
  }

 private:
  MotionTable& table_;
  UnitKind kind_;
  std::optional<std::string> strTempBuffer_;
};

}  // namespace velmoor
