// Setting the amplifier back to its factory defaults. The project's values are not touched; what
// the amplifier lost is marked, so that Download New offers it again.
//
// Owned beside the session, which must be online. The result tells whether it was done; what went
// wrong, or that the user refused, was told or asked before.
#pragma once

#include <span>
#include <string>

#include "link/CommandWords.h"
#include "link/LinkFailure.h"
#include "operations/Desk.h"
#include "operations/HardwareConnection.h"
#include "operations/Operation.h"
#include "project/SessionState.h"

namespace velmoor {

class Resets {
 public:
  // All three must outlive the object.
  Resets(SessionState& session, Desk& desk, HardwareConnection& connection)
      : session_(session), desk_(desk), connection_(connection) {}
  // Behind the making of the device object.
  void FollowDevice();

  bool ResetTable(Tool table);
  bool ResetTables();
  // Switches the servo off first, and asks at the end whether it may go on again.
  bool ResetParameters();
  bool ResetEverything();

 private:
  struct Step;
  [[nodiscard]] static std::span<const Step> Steps();

  bool ResetOne(const Step& step);
  // The steps one by one, until one fails or the user stops.
  bool ResetSeveral(const std::string& name, const std::string& stoppedWords,
                    std::span<const Step> steps);
  void MarkLost(const Step& step);
  void TellFailure(const std::string& words);
  bool TurnServoOff(const std::string& what);
  void AskToTurnServoOn();

  SessionState& session_;
  Desk& desk_;
  HardwareConnection& connection_;
  LinkFailure failure_;  // of the latest reset
  Connections device_;
};

}  // namespace velmoor
