// Records what is read of the axis, whoever reads it: monitoring, the test run, the tuning window
// or the watch of an idle line. It asks the amplifier nothing.
//
// Every sample goes to the file at once, so memory does not grow, and a killed program leaves what
// was recorded; only what lies in front of a trigger is held in memory, for as long as that was
// ordered. Owned by the session.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Event.h"
#include "recordings/RecordingFolder.h"
#include "recordings/Trigger.h"

namespace velmoor {

struct RecorderOrder {
  double length = 0;               // s, behind the beginning; 0: until it is stopped
  double before = 0;               // s, in front of the trigger
  std::optional<Trigger> trigger;  // none: at once
};

class Recorder {
 public:
  static constexpr double kLongestBefore = 60;  // s
  enum class State { idle, waiting, running };

  // Begins, or waits for the trigger, at `now` (s of a clock that never goes back, as the times of
  // the samples). The items of `heading` are those of the samples. Throws FileError where no file
  // can be made; nothing is recorded then.
  void Begin(const RecordingFolder& folder, RecordingHeading heading, RecorderOrder order,
             double now);
  // `moment` is the wall clock's, for a recording that this sample begins.
  void Take(int item, double now, double value, const std::string& moment);
  // Ends it. What waited for its trigger is gone.
  void Stop();

  [[nodiscard]] State Now() const { return state_; }
  // Samples so far, and seconds from its beginning to the latest of them.
  [[nodiscard]] std::size_t Samples() const { return samples_; }
  [[nodiscard]] double Seconds() const { return seconds_; }
  // Samples a second of all items, over what was recorded so far.
  [[nodiscard]] double Rate() const;
  // The recording under way or the last one; empty before the first.
  [[nodiscard]] const std::string& Name() const { return name_; }
  // "Waiting: Motor Speed rises to 100 rpm"; "Recording: 12.3 s, 139.2 samples a second"; "Recorded
  // as ..."; why it ended; empty before the first one.
  [[nodiscard]] std::string Words() const;

  // Somebody wishes one to begin, or the present one to end: the owner knows what to record.
  Event<> Asked;
  Event<> Changed;  // its state
  Event<> Ended;    // there is one recording more

 private:
  void Start(double now, const std::string& moment);
  void Write(const RecordedSample& sample);
  void Finish();
  void Hold(const RecordedSample& sample);

  State state_ = State::idle;
  std::optional<RecordingFolder> folder_;
  RecordingHeading heading_;
  RecorderOrder order_;
  std::optional<TriggerWatch> watch_;
  std::deque<RecordedSample> held_;  // in front of the trigger; their times are those of the clock
  std::unique_ptr<RecordingWriter> writer_;
  double began_ = 0;  // s of the clock
  double first_ = 0;  // s behind it, of the first sample
  double seconds_ = 0;
  std::size_t samples_ = 0;
  std::string name_;
  std::string failure_;
};

}  // namespace velmoor
