// Servo and motion: what starts them is sent once, what ends them until it is acknowledged.
#include "link/CommandWords.h"
#include "link/clsHX7Helix7.h"
#include "platform/Events.h"
#include "session/Session.h"

namespace velmoor {
namespace {

constexpr std::int32_t kMotionTimeOut = 500;
constexpr std::int32_t kNormalTimeOut = 5000;
constexpr int kTries = 3;

}  // namespace

ResultCode clsHX7Helix7::EnableServo() {
  return clsSerialComm.helixSimpleCommand(static_cast<std::int32_t>(SimpleCommand::servoOn));
}

ResultCode clsHX7Helix7::EnableServoForRun() {
  // Also where its answer does not come.
  motorMayBeOn = true;
  return EnableServo();
}

ResultCode clsHX7Helix7::DisableServo() {
  const ResultCode lngResult =
      clsSerialComm.helixSimpleCommand(static_cast<std::int32_t>(SimpleCommand::servoOff));
  if (lngResult == kSuccess) motorMayBeOn = false;
  return lngResult;
}

ResultCode clsHX7Helix7::StartJog(std::int32_t iIndex, std::int32_t lngSpeed) {
  clsSerialComm.setTimeOut(kMotionTimeOut);
  const ResultCode lngResult = clsSerialComm.helixJog(lngSpeed, iIndex == 0 ? 0 : 1);
  YieldEvents();
  clsSerialComm.setTimeOut(kNormalTimeOut);
  return lngResult;
}

ResultCode clsHX7Helix7::StopJog() {
  clsSerialComm.setTimeOut(kMotionTimeOut);
  const ResultCode lngResult =
      clsSerialComm.helixSimpleCommand(static_cast<std::int32_t>(SimpleCommand::skip));
  clsSerialComm.setTimeOut(kNormalTimeOut);
  return lngResult;
}

ResultCode clsHX7Helix7::SwitchOffForCertain() {
  ResultCode lngResult = kBusy;
  for (int attempt = 0; attempt < kTries; ++attempt) {
    clsSerialComm.setTimeOut(kMotionTimeOut);
    lngResult = DisableServo();
    if (lngResult == kSuccess || lngResult == kBusy) break;
  }
  clsSerialComm.setTimeOut(kNormalTimeOut);
  return lngResult;
}

ResultCode clsHX7Helix7::StopForCertain() {
  ResultCode lngResult = kBusy;
  for (int attempt = 0; attempt < kTries; ++attempt) {
    lngResult = StopJog();
    if (lngResult == kSuccess || lngResult == kBusy) return lngResult;
  }
  // What the caller tells is why the motion could not be ended.
  const LinkFailure failure = LatestFailure();
  (void)SwitchOffForCertain();
  clsSerialComm.TellFailure(failure);
  return lngResult;
}

bool clsHX7Helix7::MakeMotorSafe() {
  if (motorMayBeOn && gMainForm->Comm().IsOpen()) {
    (void)StopForCertain();
    if (motorMayBeOn) (void)SwitchOffForCertain();
  }
  return !motorMayBeOn;
}

}  // namespace velmoor
