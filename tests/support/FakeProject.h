// A project of units alone: for tests of what needs factors and a resolution and no sister tool.
#pragma once

#include <stdexcept>
#include <string>

#include "mechanics/GearRatio.h"
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

  [[nodiscard]] std::vector<RescaledValue> PreviewRescale(
      std::int16_t /*digits*/, const std::array<double, 4>& /*factors*/) const override {
    return {};
  }
  [[nodiscard]] float GetReferenceSpeedFactor() const override { return -1; }
  SharedParameterTool& EditorSister() override { return None<SharedParameterTool>(); }
  EditorTool& EditorService() override { return None<EditorTool>(); }
  SharedParameterTool& FlexibleIOSister() override { return None<SharedParameterTool>(); }
  ParameterTool& InterfaceSister() override { return None<ParameterTool>(); }
  SharedParameterTool& OverTravelSister() override { return None<SharedParameterTool>(); }
  OverTravelTool& OverTravelLimits() override { return None<OverTravelTool>(); }
  ParameterTool& HomingSister() override { return None<ParameterTool>(); }
  HomingTool& HomingService() override { return None<HomingTool>(); }
  ParameterTool& TuningSister() override { return None<ParameterTool>(); }
  MechanicalSystemTool& MechanicalSystemSister() override { return None<MechanicalSystemTool>(); }

  std::int16_t resolution = 3;
  std::string timeUnits = "seconds";
  ConversionFactors factors{1, 1, 1, 60};

 private:
  template <typename Tool>
  Tool& None() {
    throw std::logic_error("This project has no such tool");
  }
};

}  // namespace velmoor::testing
