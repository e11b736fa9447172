// A project as checks see it while a text is judged that brings another machine: its units are
// those to come, all else is the project's own.
#pragma once

#include <stdexcept>

#include "project/data/Units.h"
#include "session/Project.h"

namespace velmoor {

class ProjectInUnits final : public Project {
 public:
  // `project` must outlive it.
  ProjectInUnits(Project& project, const Units& units) : project_(project), units_(units) {}

  [[nodiscard]] std::int16_t Resolution() const override { return units_.resolution; }
  [[nodiscard]] std::string DistanceUnits() const override { return units_.distance; }
  [[nodiscard]] std::string SpeedUnits() const override { return units_.Word(UnitKind::speed); }
  [[nodiscard]] std::string AccelerationUnits() const override {
    return units_.Word(UnitKind::acceleration);
  }
  [[nodiscard]] std::string TimeUnits() const override { return units_.time; }
  [[nodiscard]] double ConversionForDistance() const override { return units_.factors[0]; }
  [[nodiscard]] double ConversionForSpeed() const override { return units_.factors[1]; }
  [[nodiscard]] double ConversionForAcceleration() const override { return units_.factors[2]; }
  [[nodiscard]] double ConversionForTime() const override { return units_.factors[3]; }

  [[nodiscard]] MachineConsequences Consequences(const MachineChange& change) const override {
    return project_.Consequences(change);
  }
  void CommitMachine(const MachineChange& /*change*/) override {
    throw std::logic_error("Nothing is committed while a text is judged");
  }
  [[nodiscard]] float GetReferenceSpeedFactor() const override {
    return project_.GetReferenceSpeedFactor();
  }
  [[nodiscard]] std::optional<Travel> ProgrammeTravel() const override {
    return project_.ProgrammeTravel();
  }
  EditorTool& EditorService() override { return project_.EditorService(); }
  SisterTool& FlexibleIOSister() override { return project_.FlexibleIOSister(); }
  SisterTool& OverTravelSister() override { return project_.OverTravelSister(); }
  HomingTool& HomingService() override { return project_.HomingService(); }
  MechanicalSystemTool& MechanicalSystemSister() override {
    return project_.MechanicalSystemSister();
  }

 private:
  Project& project_;
  Units units_;
};

}  // namespace velmoor
