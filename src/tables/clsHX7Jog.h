// The jog table: 16 speeds, one of which four inputs pick as a binary number.
#pragma once

#include "tables/MotionTable.h"

namespace velmoor {

class clsHX7Jog final : public MotionTable {
 public:
  enum JogColumn { speed = 0 };

  [[nodiscard]] static const TableLayout& Columns();

  clsHX7Jog();

  bool Show_Jog() { return Show(); }
  void Unload_Jog() { Unload(); }

  [[nodiscard]] bool IsDataSetComplete(int /*row*/) const override { return true; }

 protected:
  [[nodiscard]] bool IsStored(int row) const override { return IsTouched(row); }
  [[nodiscard]] bool StoredMark(int row, bool /*complete*/) const override {
    return DirtyCell(row) == "1";
  }
  ResultCode UploadRow(int row, std::vector<std::string>& controller) override;
  ResultCode SendRow(int row, const std::vector<std::string>& controller) override;
};

}  // namespace velmoor
