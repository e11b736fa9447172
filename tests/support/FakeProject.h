// A project of units alone: for tests of what needs factors and a resolution and no sister tool.
#pragma once

#include <stdexcept>
#include <string>

#include "project/data/Units.h"
#include "session/Project.h"

namespace velmoor::testing {

class FakeProject final : public Project {
 public:
  explicit FakeProject(std::int16_t digits = 3, const std::string& time = "seconds") {
    SetUnits(digits, time);
  }
  void SetUnits(std::int16_t digits, const std::string& time) {
    resolution = digits;
    timeUnits = time;
    UpdateConversionFactors(factors, time, digits);
  }

  [[nodiscard]] std::int16_t Resolution() const override { return resolution; }
  [[nodiscard]] std::string DistanceUnits() const override { return "mm"; }
  [[nodiscard]] std::string SpeedUnits() const override { return "mm/sec"; }
  [[nodiscard]] std::string AccelerationUnits() const override { return "mm/sec^2"; }
  [[nodiscard]] std::string TimeUnits() const override { return timeUnits; }
  [[nodiscard]] double ConversionForDistance() const override { return factors[0]; }
  [[nodiscard]] double ConversionForSpeed() const override { return factors[1]; }
  [[nodiscard]] double ConversionForAcceleration() const override { return factors[2]; }
  [[nodiscard]] double ConversionForTime() const override { return factors[3]; }

  [[nodiscard]] MachineConsequences Consequences(const MachineChange& /*change*/) const override {
    return {};
  }
  void CommitMachine(const MachineChange& /*change*/) override { throw NoTool(); }
  [[nodiscard]] std::optional<Travel> ProgrammeTravel() const override { return std::nullopt; }
  [[nodiscard]] float GetReferenceSpeedFactor() const override { return -1; }
  EditorTool& EditorService() override { throw NoTool(); }
  SisterTool& FlexibleIOSister() override { throw NoTool(); }
  SisterTool& OverTravelSister() override { throw NoTool(); }
  HomingTool& HomingService() override { throw NoTool(); }
  MechanicalSystemTool& MechanicalSystemSister() override { throw NoTool(); }

  std::int16_t resolution = 3;
  std::string timeUnits = "seconds";
  ConversionFactors factors{1, 1, 1, 60};

 private:
  static std::logic_error NoTool() { return std::logic_error("This project has no such tool"); }
};

}  // namespace velmoor::testing
