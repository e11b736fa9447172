// Looks at the amplifier while nobody else uses the line: its alarm and its status once a second,
// and what is worth knowing of the time before an alarm, torque, speed and target.
//
// An alarm is told to the connection at once, an amplifier that went silent within two seconds, one
// that has restarted meanwhile as soon as its status shows it. Owned beside the connection.
#pragma once

#include <chrono>
#include <optional>

#include "operations/Desk.h"
#include "operations/HardwareConnection.h"
#include "project/SessionState.h"

namespace velmoor {

class IdleWatch {
 public:
  // All three must outlive the object.
  IdleWatch(SessionState& session, Desk& desk, HardwareConnection& connection)
      : session_(session), desk_(desk), connection_(connection) {}

  void SetOn(bool on) { on_ = on; }
  [[nodiscard]] bool IsOn() const { return on_; }

  // To be called at least twice a second while the line is free. Asks when a second has gone by,
  // and again at once behind a silence; goes offline, with a box, behind the second one.
  void Look();

 private:
  [[nodiscard]] ResultCode ReadMotion();
  void Silent();
  void NoteStatus(std::int32_t status);

  SessionState& session_;
  Desk& desk_;
  HardwareConnection& connection_;
  bool on_ = true;
  int silences_ = 0;                                 // in a row
  std::optional<std::chrono::milliseconds> latest_;  // look, of the monotonic clock
  std::optional<std::int32_t> status_;
};

}  // namespace velmoor
