// What looks at the axis beside the windows: hands each value that is read to the recorder and to
// the black box, and makes a recording of the last minute when an alarm comes.
//
// It reads by itself only what a recording's heading tells: gains and window as it begins, and the
// lines at an alarm. Owned by the main window.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "instruments/RecordingHeadings.h"
#include "link/CommandWords.h"
#include "online/AlarmReadings.h"
#include "platform/Event.h"
#include "project/SessionState.h"
#include "recordings/BlackBox.h"
#include "recordings/Recorder.h"

namespace velmoor {

class Instruments {
 public:
  // `mayAsk`: nobody else has the line, as a transfer has.
  Instruments(SessionState& session, std::function<bool()> mayAsk);
  ~Instruments();

  // Hears the session's device object.
  void Listen();
  // Ends what is recorded; the last minute is forgotten. For another project or amplifier.
  void Forget();

  [[nodiscard]] Recorder& Record() { return recorder_; }
  // As the user has chosen it last.
  RecorderOrder order;
  // Begins by `order`, which the user has chosen, or ends. Failures are told in a box.
  void Toggle();
  // Throws FileError.
  void Begin(const RecorderOrder& ordered, const std::string& cause);
  // Null: none is open.
  [[nodiscard]] clsHX7Project* OpenProject() const { return session_.OwnProject(); }
  // Of the open project; nothing where none is open.
  [[nodiscard]] std::optional<RecordingFolder> Folder() const;
  [[nodiscard]] const RecordingHeadings& Headings() const { return headings_; }

  Event<const std::string&> AlarmKept;  // the name of the recording

 private:
  void OnValue(ValueCommand command, std::int32_t raw);
  void OnAlarm(const std::string& display);
  // `read`: when its answer came, s of the clock.
  void KeepAlarm(const AlarmReading& alarm, double read);
  void Take(int item, double raw);

  SessionState& session_;
  std::function<bool()> mayAsk_;
  RecordingHeadings headings_;
  Recorder recorder_;
  BlackBox box_;
  MonitoredUnits units_;
  std::optional<bool> inAlarm_;                                  // nothing: nobody has looked yet
  std::shared_ptr<const void> token_ = std::make_shared<int>();  // for work that waits its turn
  Connection asked_;
  Connections connections_;  // to the device object
};

}  // namespace velmoor
