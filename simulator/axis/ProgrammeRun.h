// The index table as it runs: one step after the other, each with its move, outputs, event,
// repetitions and next step.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "simulator/axis/AxisSettings.h"
#include "simulator/axis/AxisSignals.h"
#include "simulator/memory/AmplifierMemory.h"

namespace velmoor {

// What a running programme sees of the axis and moves in it. All for one moment.
struct ProgrammeSurroundings {
  const IndexTable& table;
  const AxisSettings& settings;
  MotionProfile& profile;
  std::uint32_t selection = 0;  // bits of SEL0 to SEL6
  bool inPosition = false, near = false;
  bool registered = false;  // the registration signal comes now
  double position = 0;      // counts, where the axis is
};

class ProgrammeRun {
 public:
  // From the row named; one that was halted goes on.
  void Start(std::size_t row);
  // Brakes; Start goes on with the step that was under way.
  void Halt(MotionProfile& profile);
  // Back to the beginning.
  void Reset();
  void ClearOutputs() { outputs_.fill('N'); }

  [[nodiscard]] bool IsRunning() const { return phase_ != Phase::idle; }
  [[nodiscard]] bool IsHalted() const { return halted_; }
  // Lets `seconds` pass. "E300" and its like where the programme cannot go on: it has ended then.
  [[nodiscard]] std::string Step(double seconds, const ProgrammeSurroundings& axis);

  // Of output `index`: 'A' on, 'N' off, 'Z' as the zone says.
  [[nodiscard]] char Output(std::size_t index) const { return outputs_[index]; }
  // Counts: where the registration signal came last.
  [[nodiscard]] double RegistrationPosition() const { return registrationPosition_; }
  // The move under way ends behind a registration signal.
  [[nodiscard]] bool FollowsRegistration() const { return followsRegistration_; }
  // The row under way.
  [[nodiscard]] std::size_t Row() const { return row_; }
  // How many steps have begun so far, each repetition counted.
  [[nodiscard]] std::int64_t StepsBegun() const { return stepsBegun_; }
  // The event of the row under way has not come yet.
  [[nodiscard]] bool AwaitsEvent() const { return phase_ == Phase::waitsForEvent; }

 private:
  enum class Phase { idle, atStep, waitsForEvent, waitsForTime };

  std::string BeginStep(const ProgrammeSurroundings& axis);
  std::string BeginMove(const ProgrammeSurroundings& axis, const std::string& position,
                        double speed);
  std::string FollowRegistration(const ProgrammeSurroundings& axis);
  [[nodiscard]] bool EventHasCome(const ProgrammeSurroundings& axis) const;
  std::string EndStep(const ProgrammeSurroundings& axis);

  Phase phase_ = Phase::idle;
  bool halted_ = false;
  std::size_t row_ = 0;
  std::int64_t repetitions_ = 0;
  std::int64_t stepsBegun_ = 0;
  std::string event_;  // without its time; kept for a step that takes over the one before
  double waited_ = 0;  // s
  bool registrationArmed_ = false, followsRegistration_ = false;
  double registrationPosition_ = 0;
  std::array<char, kProgrammeOutputs> outputs_{'N', 'N', 'N', 'N', 'N'};
};

}  // namespace velmoor
