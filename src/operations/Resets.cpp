#include "operations/Resets.h"

#include <algorithm>
#include <array>

#include "link/DisplayError.h"
#include "operations/FailureText.h"
#include "platform/Events.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"

namespace velmoor {

struct Resets::Step {
  SimpleCommand command;
  const char* name;  // in the status bar
  std::array<Tool, 2> lost;
};

namespace {

bool AskToReset(const std::string& what, const std::string& entries) {
  return AskExclamationYesNo("Caution!  " + what + " will be reset to factory defaults.\r" +
                             entries +
                             " in the device should be uploaded and saved to a file first.\r"
                             "Do you want to revert to factory default now?");
}

constexpr std::size_t kTableSteps = 3;

}  // namespace

std::span<const Resets::Step> Resets::Steps() {
  static constexpr std::array<Step, 4> kSteps{{
      {SimpleCommand::indexInit, "Index Table", {Tool::position, Tool::position}},
      {SimpleCommand::jogInit, "Jog Table", {Tool::jog, Tool::jog}},
      {SimpleCommand::zoneInit, "Zone Table", {Tool::zone, Tool::zone}},
      {SimpleCommand::parametersInit, "All Parameters", {Tool::editor, Tool::mechanicalSystem}},
  }};
  return kSteps;
}

void Resets::FollowDevice() {
  device_.Clear();
  device_ += session_.Helix7()->ResetStatus.Connect(
      [this](const std::string& type, const std::string& status) {
        desk_.StatusTold("Reset " + type + " Defaults " + status);
      });
}

// ---- one step

bool Resets::ResetOne(const Step& step) {
  session_.SetStopProcedure(false);
  ForgetFailures();
  ResultCode result;
  {
    const BusyPointer busy;
    result = session_.Helix7()->ResetDefaults(static_cast<std::int32_t>(step.command));
  }
  desk_.SearchEnds();
  failure_ = session_.Helix7()->LatestFailure();
  // The latest failure may be of a search that found the amplifier in the end.
  failure_.code = result;
  if (!IsRefusal(result)) MarkLost(step);
  if (result != kSuccess) connection_.Suspect();
  return result == kSuccess;
}

// Also where no answer came: nobody knows what the amplifier holds then.
void Resets::MarkLost(const Step& step) {
  clsHX7Project* const project = session_.OwnProject();
  if (project != nullptr && project->IsOpen()) project->MarkLost(step.lost);
}

void Resets::TellFailure(const std::string& words) {
  clsHX7Project* const project = session_.OwnProject();
  DisplayError(failure_, words, project == nullptr ? std::string() : OfferText(*project));
}

// ---- tables

bool Resets::ResetTable(Tool table) {
  const auto step = std::ranges::find_if(
      Steps(), [table](const Step& each) { return each.lost.front() == table; });
  const std::string name(InfoOf(table).item);  // "Jog Table"
  const std::string word = name.substr(0, name.find(' '));
  if (!AskToReset(word + " table", word + " table entries")) return false;
  if (ResetOne(*step)) return true;
  TellFailure("Error resetting " + LowerCase(word) + " table to factory default values!");
  return false;
}

bool Resets::ResetSeveral(const std::string& name, const std::string& stoppedWords,
                          std::span<const Step> steps) {
  Operation run(desk_, name);
  run.Begin(static_cast<int>(steps.size()), false);
  for (const Step& step : steps) {
    if (!ResetOne(step)) return false;
    run.CountStep("Reset");
    // The one moment at which the Stop button gets its turn.
    YieldEvents();
    // Also behind the last step, on purpose: what was reset stays reset.
    if (!session_.StopProcedure()) continue;
    desk_.StatusTold("Reset " + std::string(step.name) + " Terminated");
    session_.SetStopProcedure(false);
    run.End("stopped");
    ShowInformation(stoppedWords);
    return true;
  }
  run.End("complete");
  return true;
}

bool Resets::ResetTables() {
  if (!AskToReset("All tables", "Table entries")) return false;
  if (ResetSeveral("Reset All Tables", "Reset All Table Defaults terminated!",
                   Steps().first(kTableSteps))) {
    return true;
  }
  TellFailure("Error resetting tables to factory default values!");
  return false;
}

// ---- with the servo off

// False: the user refused, or the servo could not be turned off; nothing is reset then.
bool Resets::TurnServoOff(const std::string& what) {
  if (!AskOkCancel(what + " require servo to be in off state!\r"
                          "If servo is on, servo will be turned off.\rDo you wish to proceed?")) {
    ShowExclamation("Reset to factory defaults aborted!");
    return false;
  }
  const ResultCode result = session_.Helix7()->DisableServo();
  if (result == kSuccess) return true;
  connection_.Suspect();
  DisplayError(result, "Error turning servo off!");
  return false;
}

// Asked after a failed or stopped reset too: the servo was turned off for it. Nobody is asked who
// does not stand beside it.
void Resets::AskToTurnServoOn() {
  if (!desk_.IsAttended()) return desk_.StatusTold("The servo stays off.");
  if (!AskExclamationYesNo("Do you wish to turn servo back on?")) return;
  const ResultCode result = session_.Helix7()->EnableServo();
  if (result == kSuccess) return;
  connection_.Suspect();
  DisplayError(result, "Error turning servo back on!");
}

bool Resets::ResetParameters() {
  if (!AskToReset("All parameters", "Parameters")) return false;
  if (!TurnServoOff("Reset to factory default parameters")) return false;
  const bool done = ResetOne(Steps().back());
  if (!done) TellFailure("Error resetting parameters to factory default values!");
  AskToTurnServoOn();
  return done;
}

bool Resets::ResetEverything() {
  if (!AskToReset("All tables and parameters", "Table and parameter entries")) return false;
  if (!TurnServoOff("Reset to all factory defaults")) return false;
  const bool done = ResetSeveral("Reset All Defaults", "Reset All Defaults terminated!", Steps());
  AskToTurnServoOn();
  if (!done) TellFailure("Error resetting hardware to factory default values!");
  return done;
}

}  // namespace velmoor
