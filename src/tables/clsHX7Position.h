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

  [[nodiscard]] static const TableLayout& Columns();

  clsHX7Position();

  bool Show_Position() { return Show(); }
  void Unload_Position() { Unload(); }

  // Position, speeds, registration distance, outputs, event, loop and next are there; the label is
  // not asked for.
  [[nodiscard]] bool IsDataSetComplete(int row) const override;

  // The amplifier's number of the first step with that label, "END" for "END" and for a label that
  // no step bears: dangling labels are found before anything is saved.
  [[nodiscard]] static std::string GetControllerNext(const std::string& strNext, const Rows& cells);
  // How many steps wait for an event that older option cards do not know.
  [[nodiscard]] int StepsWithNewEvents() const;

 protected:
  [[nodiscard]] bool IsStored(int /*row*/) const override { return true; }
  [[nodiscard]] bool StoredMark(int row, bool /*complete*/) const override {
    return DirtyCell(row) == "1";
  }
  ResultCode UploadRow(int row, std::vector<std::string>& controller) override;
  ResultCode SendRow(int row, const std::vector<std::string>& controller) override;
  bool MayDownload() override;
  // Behind "A+", "A-", "I+" or "I-"; words such as "STOP" and "+INFINITE" hold no number.
  [[nodiscard]] std::size_t NumberAt(CellKind kind, const std::string& text) const override;
  [[nodiscard]] std::string ToController(CellKind kind, const std::string& text, const Rows& cells,
                                         const Units& units) const override;
  [[nodiscard]] std::string FromController(CellKind kind, const std::string& text,
                                           const Units& units) const override;
  [[nodiscard]] std::string ShownCell(CellKind kind, const std::string& controller,
                                      const Rows& cells, const Units& units) const override;
  [[nodiscard]] bool IsAsTyped(int row, int column, const StoredRow& stored) const override;
  [[nodiscard]] std::string UploadedLabel(int row) const override { return DefaultLabel(row); }

 private:
  [[nodiscard]] bool IsBlankStep(int step) const;
};

}  // namespace velmoor
