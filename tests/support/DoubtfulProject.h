// A value of a project that shows something else than it sends.
#pragma once

#include "platform/Database.h"
#include "project/data/Schema.h"

namespace velmoor {

// Jog speed 2 shows 10.000 and would send 300000 counts.
inline void PutDoubtfulJogSpeed(Database& project) {
  using schema::Jog;
  const auto jog = project.OpenTable(Jog::kTable);
  jog->FindFirst(Jog::kJog, "2");
  jog->Edit();
  jog->Set(Jog::kSpeed, "10.000");
  jog->Set(Jog::kControllerValue, "300000");
  jog->Update();
}

}  // namespace velmoor
