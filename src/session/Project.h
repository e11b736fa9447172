// What tools may know of the project that owns them, and of their sister tools: all cross-talk
// between tools can be read here. No tool includes another's header.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace velmoor {

class BlockMatrix;

// What every parameter tool offers to its sisters.
class ParameterTool {
 public:
  virtual ~ParameterTool() = default;
  // A copy of all rows.
  virtual void GetBlockMatrix(BlockMatrix& copy) const = 0;
  // Takes column 4 of the rows that the editor holds too, by parameter name; nothing else.
  virtual void UpdateBlockMatrix() = 0;
  // Shows new values as uncommitted in the tool's window.
  virtual void PostUpload() = 0;
};

// A tool whose rows a sister may replace by an edited copy.
class SharedParameterTool : public ParameterTool {
 public:
  virtual void LetBlockMatrix(const BlockMatrix& copy) = 0;
};

enum class UnitKind { distance = 0, speed = 1, acceleration = 2 };

// The direct parameter editor's services beside its rows.
class EditorTool {
 public:
  virtual ~EditorTool() = default;
  // The count in the project's units of that kind, at its resolution.
  [[nodiscard]] virtual std::string ConvertCountsToUnitsPublic(std::int32_t count,
                                                               UnitKind kind) const = 0;
  // The shown value of a parameter such as "Pn81D"; empty when the editor does not hold it.
  [[nodiscard]] virtual std::string GetParameterValue(const std::string& strPn) const = 0;
  // The editor holds values that the hardware does not have, after a sister changed its rows.
  virtual void MarkChanged() = 0;
};

class OverTravelTool {
 public:
  virtual ~OverTravelTool() = default;
  // After a commit of the machine: travel limits and kind of axis follow. `length` in distance
  // units.
  virtual void UpdateOverTravel(std::int16_t digits, float length) = 0;
};

class HomingTool {
 public:
  virtual ~HomingTool() = default;
  // The home offset that is kept in the project, in distance units.
  [[nodiscard]] virtual std::string GetHomingOffset() const = 0;
  virtual bool SetHomingOffset(const std::string& strValue) = 0;
  // Takes the offset of the hardware into the tool's row, as a change.
  virtual bool UploadHomingOffset() = 0;
};

// The system index of a rotary table.
inline constexpr std::int32_t kRotaryTable = 3;

class MechanicalSystemTool {
 public:
  virtual ~MechanicalSystemTool() = default;
  [[nodiscard]] virtual std::int32_t SelectedSystem() const = 0;  // kRotaryTable among others
  [[nodiscard]] virtual std::int16_t Resolution() const = 0;
  [[nodiscard]] virtual double FeedConstant() const = 0;  // distance units for a load turn
  // Takes column 4 of the rows that the editor holds too, after an upload of the editor.
  virtual void UpdateFromEditorBlockMatrix() = 0;
};

// One value that a change of resolution or time base rescales: the number that the user sees, and
// what goes to the amplifier.
struct RescaledValue {
  std::string place;  // "Index Table, step 3, speed"
  std::string oldText, newText;
  std::string oldCounts, newCounts;
  std::string error;  // rounding error of the new counts
};

class Project {
 public:
  virtual ~Project() = default;

  // What a commit of the machine with that resolution and these conversion factors would make of
  // every value that it rescales; nothing is changed.
  [[nodiscard]] virtual std::vector<RescaledValue> PreviewRescale(
      std::int16_t digits, const std::array<double, 4>& factors) const = 0;

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

  // Thousand reference units a minute for one rpm, read from the amplifier; -1 when it cannot be
  // read. Serves events between its questions.
  [[nodiscard]] virtual float GetReferenceSpeedFactor() const = 0;

  // Sister tools by the few operations that others may call.
  virtual SharedParameterTool& EditorSister() = 0;
  virtual EditorTool& EditorService() = 0;
  virtual SharedParameterTool& FlexibleIOSister() = 0;
  virtual ParameterTool& InterfaceSister() = 0;
  virtual SharedParameterTool& OverTravelSister() = 0;
  virtual OverTravelTool& OverTravelLimits() = 0;
  virtual ParameterTool& HomingSister() = 0;
  virtual HomingTool& HomingService() = 0;
  virtual ParameterTool& TuningSister() = 0;
  virtual MechanicalSystemTool& MechanicalSystemSister() = 0;
};

}  // namespace velmoor
