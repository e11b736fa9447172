// What tools may know of the project that owns them, and of their sister tools: all cross-talk
// between tools can be read here. No tool includes another's header.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velmoor {

enum class UnitKind { distance = 0, speed = 1, acceleration = 2 };

// A tool that shares parameters with a sister.
class SisterTool {
 public:
  virtual ~SisterTool() = default;
  // The user has edited a shared parameter in the sister's window: this tool's window, where it is
  // open, shows the same edit.
  virtual void TakeEdit(const std::string& strPn, const std::string& text) = 0;
  // The edit of it that its own window holds and that was not applied; nothing: there is none.
  [[nodiscard]] virtual std::optional<std::string> EditOf(const std::string& strPn) const = 0;
};

// The direct parameter editor's service beside its rows.
class EditorTool {
 public:
  virtual ~EditorTool() = default;
  // The shown value of a parameter such as "Pn81D"; empty when the editor does not hold it.
  [[nodiscard]] virtual std::string GetParameterValue(const std::string& strPn) const = 0;
};

class HomingTool {
 public:
  virtual ~HomingTool() = default;
  // The home offset that is kept in the project, in distance units.
  [[nodiscard]] virtual std::string GetHomingOffset() const = 0;
  virtual bool SetHomingOffset(const std::string& strValue) = 0;
  // Takes the offset of the hardware into the project, as a change.
  virtual bool UploadHomingOffset() = 0;
};

// The system index of a rotary table.
inline constexpr std::int32_t kRotaryTable = 3;

class MechanicalSystemTool {
 public:
  virtual ~MechanicalSystemTool() = default;
  [[nodiscard]] virtual std::int32_t SelectedSystem() const = 0;  // kRotaryTable among others
  [[nodiscard]] virtual double FeedConstant() const = 0;          // distance units for a load turn
};

// One value that a change of the machine concerns: the number that the user sees, and what goes to
// the amplifier.
struct RescaledValue {
  std::string place;  // "Index Table, step 3, speed"
  std::string oldText, newText;
  std::string oldCounts, newCounts;
  std::string error;  // rounding error of the new counts; empty where the number does not stay
};

// What a change of the machine does to the rest of the project.
struct MachineConsequences {
  std::vector<RescaledValue> values;
  // The data sets in which a limit has replaced a value, as the user is told of them; one without a
  // name of its own is an empty text.
  std::vector<std::string> limited;
  std::vector<std::string> emptied;  // tables that lose what they hold
};

// Positions from one to another, in distance units.
struct Travel {
  double low = 0, high = 0;
};

struct MachineChange;

class Project {
 public:
  virtual ~Project() = default;

  // What that change of the machine would do; nothing is changed.
  [[nodiscard]] virtual MachineConsequences Consequences(const MachineChange& change) const = 0;
  // Does it, the whole or nothing. Throws DatabaseError; nothing is changed then.
  virtual void CommitMachine(const MachineChange& change) = 0;

  [[nodiscard]] virtual std::int16_t Resolution() const = 0;  // decimal places of shown values
  [[nodiscard]] virtual std::string DistanceUnits() const = 0;
  [[nodiscard]] virtual std::string SpeedUnits() const = 0;
  [[nodiscard]] virtual std::string AccelerationUnits() const = 0;
  [[nodiscard]] virtual std::string TimeUnits() const = 0;

  // Counts for one distance unit, one speed unit, one acceleration unit; and 60 for seconds or 1
  // for minutes.
  [[nodiscard]] virtual double ConversionForDistance() const = 0;
  [[nodiscard]] virtual double ConversionForSpeed() const = 0;
  [[nodiscard]] virtual double ConversionForAcceleration() const = 0;
  [[nodiscard]] virtual double ConversionForTime() const = 0;

  // Where the motion programme takes the axis from its first step on, as far as it is known;
  // nothing where it does not move.
  [[nodiscard]] virtual std::optional<Travel> ProgrammeTravel() const = 0;

  // Thousand reference units a minute for one rpm, read from the amplifier; -1 when it cannot be
  // read. Serves events between its questions.
  [[nodiscard]] virtual float GetReferenceSpeedFactor() const = 0;

  // Sister tools by the few operations that others may call.
  virtual EditorTool& EditorService() = 0;
  virtual SisterTool& FlexibleIOSister() = 0;
  virtual SisterTool& OverTravelSister() = 0;
  virtual HomingTool& HomingService() = 0;
  virtual MechanicalSystemTool& MechanicalSystemSister() = 0;
};

}  // namespace velmoor
