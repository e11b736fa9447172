// What a change of the machine, an upload or a text makes of all that a project holds: planned
// without a change, shown from that plan, and committed whole.
#pragma once

#include "mechanics/MachineStep.h"
#include "tables/MotionTable.h"

namespace velmoor {

struct ProjectPlan {
  ParameterStep parameters;
  MotionTable::Step position, zone, jog;
  Units after;
};

}  // namespace velmoor
