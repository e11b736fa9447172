// The operations on the amplifier that a session offers, put together once.
#pragma once

#include "operations/Comparison.h"
#include "operations/HardwareConnection.h"
#include "operations/IdleWatch.h"
#include "operations/Resets.h"
#include "operations/Transfers.h"

namespace velmoor {

struct Operations {
  // Both must outlive the object.
  Operations(SessionState& session, Desk& desk)
      : connection(session, desk),
        uploads(session, desk, connection),
        transfers(session, desk, connection, uploads),
        resets(session, desk, connection),
        compare(session, desk, connection),
        watch(session, desk, connection) {}

  void FollowDevice() {
    connection.FollowDevice();
    resets.FollowDevice();
  }
  void FollowProject() {
    connection.FollowProject();
    uploads.FollowProject();
    transfers.FollowProject();
  }
  // Before the project goes.
  void ForgetProject() {
    connection.ForgetProject();
    uploads.ForgetProject();
    transfers.ForgetProject();
  }

  HardwareConnection connection;
  Uploads uploads;
  Transfers transfers;
  Resets resets;
  Comparison compare;
  IdleWatch watch;
};

}  // namespace velmoor
