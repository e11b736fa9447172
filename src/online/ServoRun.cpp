#include "online/ServoRun.h"

#include <exception>

#include "link/DisplayError.h"
#include "link/clsHX7Helix7.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/ScopedFlag.h"
#include "session/Project.h"
#include "session/Session.h"

namespace velmoor {
namespace {

constexpr const char* kCannotStart = "Error initiating servo jog!";
constexpr const char* kCannotStop = "Error terminating servo jog!";
constexpr const char* kHint =
    "\r\rHold jog button down for a few seconds before releasing to stop, if jog is still running.";
constexpr const char* kMayBeOn =
    "The motor may still be energised and moving: servo off was not confirmed.\r"
    "Use the emergency stop, then check the line.";

clsHX7Helix7& Hardware() {
  return *gMainForm->Helix7();
}

}  // namespace

void ServoRun::Reset() {
  on_ = held_ = stopping_ = false;
}

std::string ServoRun::Caption() const {
  return Hardware().MotorMayBeOn() ? "Disable &Servo" : "Enable &Servo";
}

Tone ServoRun::LampTone() const {
  if (!Hardware().MotorMayBeOn()) return Tone::normal;
  return on_ ? Tone::good : Tone::alarm;
}

std::string ServoRun::Words() const {
  if (!Hardware().MotorMayBeOn()) return "Servo not enabled";
  return on_ ? "Servo on" : "Servo may be on: use the emergency stop";
}

void ServoRun::Tell(const LinkFailure& failure, const char* words) const {
  DisplayError(failure, words, Hardware().MotorMayBeOn() && !on_ ? kMayBeOn : "");
}

// ---- the servo

void ServoRun::Toggle() {
  try {
    on_ = !on_ && !Hardware().MotorMayBeOn();
    std::optional<LinkFailure> enableFailure;
    if (on_) enableFailure = AskAndEnable();
    if (!on_) {
      const ResultCode off = SwitchOff();
      if (enableFailure) {
        Tell(*enableFailure, "Error setting servo on!");
      } else if (off != kSuccess) {
        Tell(Hardware().LatestFailure(), "Error setting servo off!");
      }
    }
  } catch (const std::exception& error) {
    ShowExclamation(std::string("Error enabling/disabling servo!\r") + error.what());
  }
}

// on_ stays only where the servo is on.
std::optional<LinkFailure> ServoRun::AskAndEnable() {
  on_ = AskExclamationYesNo(
      "Use extreme caution!\r"
      "The enable operation will energize the motor and may cause motion \r"
      "of the motor shaft and any mechanism connected to the motor shaft.\r\r"
      "Are you sure you want to enable the servo system?\r"
      "Click Yes to enable the servo.  Click No to cancel.");
  if (!on_) return std::nullopt;
  on_ = Hardware().EnableServoForRun() == kSuccess;
  shown_();
  if (on_) return std::nullopt;
  return Hardware().LatestFailure();
}

ResultCode ServoRun::SwitchOff() {
  on_ = false;
  const ResultCode result = Hardware().SwitchOffForCertain();
  shown_();
  return result;
}

// ---- motion

void ServoRun::Press(const Window& window, const std::function<void()>& start) {
  try {
    held_ = true;
    start();
  } catch (const std::exception& error) {
    // Whatever happened: it must not go on turning while a box is read.
    const bool open = !window.expired();
    (void)Hardware().StopForCertain();
    if (open) {
      held_ = false;
      shown_();
    }
    ShowExclamation(std::string(kCannotStart) + "\r" + error.what() + kHint);
  }
}

void ServoRun::Start(std::int32_t index, std::int32_t rpm, const Window& window) {
  const float factor = OpenedProject().GetReferenceSpeedFactor();
  if (window.expired()) return;
  if (factor < 0) {
    held_ = false;
    ShowExclamation("Error communicating with hardware!\rCheck connections then retry!\r\r" +
                    CauseOf(Hardware().LatestFailure(), *gMainForm->Alarm()));
    return;
  }
  // 1000 reference units a minute
  const std::int32_t speed =
      ToInt32(RoundHalfEven(static_cast<double>(factor) * static_cast<double>(rpm)));
  if (!held_ || !on_) return;
  const ResultCode result = Hardware().StartJog(index, speed);
  if (result == kSuccess || result == kBusy || window.expired()) return;
  // The command may have come through although its answer did not.
  const LinkFailure failure = Hardware().LatestFailure();
  Stop(nullptr);
  Tell(failure, kCannotStart);
}

void ServoRun::Release() {
  if (stopping_) return;
  try {
    Stop(kCannotStop);
  } catch (const std::exception& error) {
    ShowExclamation(std::string(kCannotStop) + "\r" + error.what() + kHint);
  }
}

void ServoRun::Stop(const char* words) {
  held_ = false;
  (void)Pause(words);
}

// A line that is busy is passed over in silence, deliberately; nothing here lets it arise.
bool ServoRun::Pause(const char* words) {
  const ScopedFlag stopping(stopping_);
  const ResultCode result = Hardware().StopForCertain();
  if (result == kSuccess || result == kBusy) return true;
  const LinkFailure failure = Hardware().LatestFailure();
  on_ = held_ = false;
  shown_();
  if (words != nullptr) Tell(failure, words);
  return false;
}

// ---- ways out

// Where the motor cannot be on nothing is told.
void ServoRun::Leave() {
  const bool moved = held_;
  on_ = held_ = false;
  if (moved) (void)Hardware().StopForCertain();
  const ResultCode result = Hardware().SwitchOffForCertain();
  if (result != kSuccess && Hardware().MotorMayBeOn()) {
    Tell(Hardware().LatestFailure(), "Error setting servo off!");
  }
}

void ServoRun::MakeSafe() {
  if (gMainForm == nullptr || gMainForm->Helix7() == nullptr) return;
  held_ = false;
  Hardware().MakeMotorSafe();
}

}  // namespace velmoor
