// What the amplifier holds against what the project holds. Reads, and changes nothing.
//
// Owned beside the session.
#pragma once

#include <optional>
#include <vector>

#include "operations/Desk.h"
#include "operations/HardwareConnection.h"
#include "operations/Operation.h"
#include "project/ProjectCompare.h"
#include "project/SessionState.h"

namespace velmoor {

class Comparison {
 public:
  // All three must outlive the object.
  Comparison(SessionState& session, Desk& desk, HardwareConnection& connection)
      : session_(session), desk_(desk), connection_(connection) {}

  // Goes online and reads everything. A machine in the amplifier that cannot be used is a
  // difference like any other. Nothing: stopped or failed, of which the user was told.
  [[nodiscard]] std::optional<std::vector<PartComparison>> Run();

 private:
  [[nodiscard]] bool ReadEverything();

  SessionState& session_;
  Desk& desk_;
  HardwareConnection& connection_;
};

}  // namespace velmoor
