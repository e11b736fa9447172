#include "operations/IdleWatch.h"

#include "link/BriefTimeOut.h"
#include "online/AlarmReadings.h"
#include "platform/Log.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr std::chrono::milliseconds kPeriod{1000};
constexpr int kSilencesOfALostLine = 2;
// The bit of the status that tells of a zero return done since the start.
constexpr std::int32_t kReferenceComplete = 1 << 2;

}  // namespace

void IdleWatch::Look() {
  if (!on_ || !session_.IsOnline()) {
    latest_.reset();
    status_.reset();
    silences_ = 0;
    return;
  }
  const auto now = world().clock->Monotonic();
  if (silences_ == 0 && latest_ && now - *latest_ < kPeriod) return;
  latest_ = now;
  std::string display;
  std::int32_t status = 0;
  const ResultCode result = session_.Helix7()->AskState(display, status);
  // A refusal is an answer too, of which nothing more is known.
  if (result < kSuccess && result != kValueNotFound && result != kBusy) return Silent();
  silences_ = 0;
  if (result != kSuccess) return;
  if (ReadMotion() == kNoResponse) return Silent();
  connection_.NoteAlarm(DescribeAlarm(display));
  NoteStatus(status);
}

// For whoever hears what is read.
ResultCode IdleWatch::ReadMotion() {
  clsHX7Helix7& helix = *session_.Helix7();
  const BriefTimeOut brief(helix);
  ResultCode result = kSuccess;
  for (const ValueCommand command :
       {ValueCommand::torque, ValueCommand::motorSpeed, ValueCommand::targetPosition}) {
    std::int32_t value = 0;
    if (result != kNoResponse) {
      result = helix.GetHelixValue(static_cast<std::int32_t>(command), value);
    }
  }
  return result;
}

void IdleWatch::Silent() {
  LogWarning("watch", "No answer while the line was idle");
  if (++silences_ < kSilencesOfALostLine) return;
  silences_ = 0;
  status_.reset();
  connection_.TellLost("The amplifier does not answer.");
}

void IdleWatch::NoteStatus(std::int32_t status) {
  const bool lost =
      status_ && (*status_ & kReferenceComplete) != 0 && (status & kReferenceComplete) == 0;
  status_ = status;
  if (!lost) return;
  desk_.StatusTold("The reference position is lost: the amplifier was restarted, or seeks it anew");
}

}  // namespace velmoor
