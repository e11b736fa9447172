// The zone table: 32 ranges of positions, signalled on five outputs as a binary number.
#pragma once

#include "tables/MotionTable.h"

namespace velmoor {

class clsHX7Zone final : public MotionTable {
 public:
  // Those that the amplifier has come first, in the order of their words.
  enum ZoneColumn { lower = 0, upper };

  [[nodiscard]] static const TableLayout& Columns();

  clsHX7Zone();

  bool Show_Zone() { return Show(); }
  void Unload_Zone() { Unload(); }

  // Both limits are there, or none.
  [[nodiscard]] bool IsDataSetComplete(int row) const override;

 protected:
  [[nodiscard]] bool IsStored(int row) const override { return IsTouched(row); }
  [[nodiscard]] bool StoredMark(int row, bool complete) const override {
    return !complete || DirtyCell(row) == "1";
  }
  ResultCode UploadRow(int row, std::vector<std::string>& controller) override;
  ResultCode SendRow(int row, const std::vector<std::string>& controller) override;
};

}  // namespace velmoor
