// A machine under edit. Nothing but what was typed is held here: everything else that is shown is
// derived from that and from the project, so that the order of the edits makes no difference.
//
// Behind the machine's window and behind the console program, and, without an edit, the machine as
// it is. Texts and questions are those of the window; asking is left to the caller.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "mechanics/MachineStep.h"
#include "tools/Column.h"

namespace velmoor {

// The verdict on an edit.
struct MachineCheck {
  enum class Kind {
    accepted,
    restore,  // refused: the old value stays, `words` tell so
    ask,      // refused: `words` ask whether the old value is to come back
    whole     // taken, but the machine as a whole is none: `words` ask whether to take it back
  };
  Kind kind = Kind::accepted;
  std::string words;

  [[nodiscard]] bool Accepted() const { return kind == Kind::accepted; }
};

// What derives from the description, for the user to see while editing.
struct MachineFigures {
  bool valid = false;  // the machine can be set
  std::string reason;  // why not
  GearRatio ratio;
  double travelPerMotorTurn = 0;  // distance units
  double countsPerUnit = 0;
  double smallestStep = 0;      // distance units
  double topSpeed = 0;          // speed units, the most that the counts can tell
  std::int32_t motorSpeed = 0;  // rpm, the most that the motor may turn: Pn30D
  double reachedSpeed = 0;      // speed units, of the load at that speed
  bool hasRange = false;
  std::int16_t lowestResolution = 0, highestResolution = 0;
};

class MachineEdit {
 public:
  // Starts from what the store holds, which must outlive the edit and is read at every call.
  explicit MachineEdit(const ParameterStore& store);

  // ---- rows, from 1: the description first, the gear terms last; "Pn82E.0" and "Pn82F.0" are
  // views of digits and halves
  [[nodiscard]] static int Rows();
  [[nodiscard]] static int FindRow(std::string_view name);
  [[nodiscard]] static std::string_view NameOf(int row);
  [[nodiscard]] std::string Text(int row, Column column) const;
  [[nodiscard]] std::string Value(std::string_view name) const;
  // Its value differs from the project's, or has still to go to the amplifier.
  [[nodiscard]] bool IsMarked(int row) const;
  // The row's limits in the units of the edit.
  [[nodiscard]] std::string MinimumText(int row) const;
  [[nodiscard]] std::string MaximumText(int row) const;

  [[nodiscard]] MachineDescription Description() const;
  [[nodiscard]] MachineFigures Figures() const;

  // ---- edits

  // A cell of the grid, judged alone; then the machine as a whole, where it was one before.
  MachineCheck SetValue(const std::string& name, const std::string& text);
  // By their indexes. The resolution follows into its allowable range for as long as it lies
  // outside of it; a gear ratio that is invalid all the same is told as a warning, and the choice
  // stands.
  MachineCheck SetSystem(std::int32_t index);
  MachineCheck SetEncoder(std::int32_t index);
  // Takes the last edit back.
  void TakeBack();
  // The words about properties that a limit has replaced and that were not named before.
  [[nodiscard]] std::string NewlyCorrected();

  // ---- commit
  [[nodiscard]] bool IsDirty() const { return !Change().changes.empty(); }
  [[nodiscard]] bool EGRDirty() const;
  [[nodiscard]] bool ResolutionDirty() const;
  [[nodiscard]] bool SystemDirty() const;
  // The question before a commit, or the information; empty when it needs none of the two.
  [[nodiscard]] std::string CommitQuestion() const;
  [[nodiscard]] std::string CommitInformation() const;
  // What a commit is to bring.
  [[nodiscard]] MachineChange Wanted() const;

 private:
  // What was typed or chosen; the rest is as the project has it.
  struct Typed {
    std::optional<std::int32_t> system, encoderCount;
    std::optional<std::string> distanceUnits, timeUnits;
    std::optional<float> length;
    std::optional<std::int16_t> n1, n2, resolution;
    std::map<std::string, std::string> properties;
    // The resolution is the user's last word: a choice of system or encoder has not come after it.
    bool resolutionStands = false;
    bool gear = false;  // the gear terms are to be those of the description
  };

  // What a commit would do now.
  [[nodiscard]] const ParameterStep& Change() const;
  MachineCheck SetWhole(const std::string& name, const std::string& text);
  MachineCheck SetInUnits(const std::string& name, const std::string& text);
  MachineCheck SetMeasure(const std::string& text);
  MachineCheck SetDistanceUnits(const std::string& word);
  MachineCheck SetTimeUnits(const std::string& word);
  MachineCheck AfterChoice();
  // Where the machine was valid before the edit and is not now.
  [[nodiscard]] MachineCheck JudgeWhole(bool wasValid) const;
  [[nodiscard]] std::string WholeFault() const;
  [[nodiscard]] GearRatio Ratio() const;
  [[nodiscard]] std::string MeasureText() const;
  [[nodiscard]] std::string LimitText(int row, bool high) const;

  const ParameterStore& store_;
  Typed typed_, before_;
  // Made anew after an edit, and after a change of the store.
  mutable std::optional<ParameterStep> step_;
  mutable int storeRevision_ = 0;
  std::set<std::string> named_;  // properties of which the user was told that a limit replaced them
};

}  // namespace velmoor
