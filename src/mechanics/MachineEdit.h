// A machine under edit: a copy of the rows on which every change is checked and carried through.
// The mechanical system itself changes at the commit only, and nothing of a failed edit reaches it.
//
// Behind the machine's window and behind the console program. Texts and questions are those of the
// window; asking is left to the caller.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "mechanics/GearRatio.h"
#include "mechanics/clsHX7MechanicalSystem.h"
#include "tools/BlockMatrix.h"

namespace velmoor {

// The verdict on an edit.
struct MachineCheck {
  enum class Kind {
    accepted,
    restore,  // refused: the old value comes back, `words` tell so
    ask       // refused: `words` ask whether the old value is to come back
  };
  Kind kind = Kind::accepted;
  std::string words;

  [[nodiscard]] bool Accepted() const { return kind == Kind::accepted; }
};

// What derives from the description, for the user to see while editing.
struct MachineFigures {
  bool valid = false;  // the gear ratio can be set
  std::string reason;  // why not
  GearRatio ratio;
  double travelPerMotorTurn = 0;  // distance units
  double countsPerUnit = 0;
  double smallestStep = 0;  // distance units
  double topSpeed = 0;      // speed units, the most that the counts can tell
  bool hasRange = false;
  std::int16_t lowestResolution = 0, highestResolution = 0;
};

class MachineEdit {
 public:
  // Starts from what the machine holds now.
  explicit MachineEdit(const clsHX7MechanicalSystem& machine);

  [[nodiscard]] const BlockMatrix& Rows() const { return rows_; }
  [[nodiscard]] const Machine& Description() const { return machine_; }
  [[nodiscard]] std::string Value(const char* name) const;
  [[nodiscard]] const std::string& DistanceUnits() const { return distanceUnits_; }
  [[nodiscard]] const std::string& TimeUnits() const { return timeUnits_; }
  [[nodiscard]] MachineFigures Figures() const;

  // ---- edits: checked, and carried through when accepted

  // A cell of the grid; rows that cannot be edited are refused.
  MachineCheck SetValue(const std::string& name, const std::string& text);
  // By their indexes. The resolution follows into its allowable range; a gear ratio that is invalid
  // all the same is told as a warning, and the choice stands.
  MachineCheck SetSystem(std::int32_t index);
  MachineCheck SetEncoder(std::int32_t index);
  // After a change of units or system: values out of their range take the nearest limit. The words
  // tell which; empty when all fit.
  std::string ValidateProperties();
  // The unit fits the system: "Selected system cannot have rotary units!" and the like.
  [[nodiscard]] MachineCheck ValidateUnits() const;

  // ---- commit
  [[nodiscard]] bool IsDirty() const { return dirty_; }
  [[nodiscard]] bool EGRDirty() const { return egrDirty_; }
  [[nodiscard]] bool ResolutionDirty() const;
  [[nodiscard]] bool SystemDirty() const { return machine_.system != original_.system; }
  // The time base changed: the counts of all speeds follow their shown numbers.
  [[nodiscard]] bool TimeBaseDirty() const { return timeUnits_ != originalTimeUnits_; }
  [[nodiscard]] bool NeedUpdateOverTravel() const;
  // The question before a commit, or the information; empty when it needs none of the two.
  [[nodiscard]] std::string CommitQuestion() const;
  [[nodiscard]] std::string CommitInformation() const;
  // The conversion factors that a commit brings.
  [[nodiscard]] const ConversionFactors& Factors() const { return factors_; }
  // What the machine takes: with the checksum brought up to date.
  [[nodiscard]] MechanicalSystemEdit TakeForCommit();

  // The row's limits in the units of the edit.
  [[nodiscard]] std::string MinimumText(int row) const;
  [[nodiscard]] std::string MaximumText(int row) const;

 private:
  MachineCheck SetWhole(const std::string& name, const std::string& text);
  MachineCheck SetInUnits(int row, const std::string& text);
  MachineCheck SetMeasure(const std::string& text);
  MachineCheck SetDistanceUnits(const std::string& word);
  MachineCheck SetTimeUnits(const std::string& word);
  // The gear ratio of `candidate`; refused with the words of the check.
  [[nodiscard]] static MachineCheck CheckGear(const Machine& candidate, GearRatio& ratio);
  MachineCheck AfterChoice();
  void ValidateResolution();
  void SetEGR(const GearRatio& ratio);
  void UpdateValuesWithResolution();
  void UpdateMeasure();
  void PutDigit(int digit, std::int32_t index, const char* viewRow, const std::string& word);
  void Put(const char* name, const std::string& value);
  void MarkUnitRows();
  void UpdateUnits();
  void UpdateCheckSum();
  // Of a row that has a unit: the lowest and the highest value in that unit.
  [[nodiscard]] std::pair<double, double> LimitsInUnits(int row) const;
  [[nodiscard]] std::string LimitText(int row, Column column) const;

  BlockMatrix rows_;
  Machine machine_, original_;
  std::string distanceUnits_, timeUnits_, originalTimeUnits_;
  ConversionFactors factors_{};
  bool dirty_ = false;
  bool egrDirty_ = false;
};

}  // namespace velmoor
