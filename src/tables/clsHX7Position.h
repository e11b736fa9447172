// The index table: the motion programme of up to 128 steps.
#pragma once

#include <string>

#include "tables/MotionTable.h"

namespace velmoor {

// "label5": the name that an upload gives to step 5, since the amplifier knows numbers only.
[[nodiscard]] std::string DefaultLabel(int step);
// "T00100" reads "T100"; a text without a "T" stays as it is.
[[nodiscard]] std::string ConvertPaddedTimeToTime(const std::string& strText);
// The event needs an option card of version 3 or newer.
[[nodiscard]] bool IsNewEvent(const std::string& strEvent);

class clsHX7Position final : public MotionTable {
 public:
  // The step's number is the row; the amplifier's is one less.
  enum PositionColumn {
    label = 0,
    position,
    speed,
    registrationDistance,
    registrationSpeed,
    outputs,
    event,
    loop,
    next
  };

  clsHX7Position();

  bool Show_Position() { return Show(); }
  void Unload_Position() { Unload(); }

  // Position, speeds, registration distance, outputs, event, loop and next are there; the label is
  // not asked for.
  [[nodiscard]] bool IsDataSetComplete(int row) const override;

  // A move in units ("I+12.345") to counts ("I+12345") and back; other texts as they are.
  [[nodiscard]] std::string ConvertPositionToCounts(const std::string& value) const;
  [[nodiscard]] std::string ConvertCountsToPosition(const std::string& value) const;
  // The amplifier's number of the first step with that label, "END" for "END" and for a label that
  // no step bears: dangling labels are found before anything is saved.
  [[nodiscard]] std::string GetControllerNext(const std::string& strNext) const;
  [[nodiscard]] bool TableUsesNewEvents() const;

 protected:
  [[nodiscard]] bool IsStored(int /*row*/) const override { return true; }
  [[nodiscard]] bool StoredMark(int row, bool /*complete*/) const override {
    return DirtyCell(row) == "1";
  }
  [[nodiscard]] bool ScalesWithResolution(int /*row*/) const override { return true; }
  ResultCode UploadRow(int row) override;
  ResultCode SendRecord(const RowSet& record) override;
  bool MayDownload() override;
  [[nodiscard]] std::string ToController(CellKind kind, const std::string& text) const override;
  [[nodiscard]] std::string FromController(CellKind kind, const std::string& text) const override;
  [[nodiscard]] std::string Reformatted(CellKind kind, const std::string& text,
                                        std::int16_t digits) override;
};

}  // namespace velmoor
