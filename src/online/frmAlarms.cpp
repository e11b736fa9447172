#include "online/frmAlarms.h"

#include "link/DisplayError.h"
#include "link/clsHX7Helix7.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "session/Session.h"

namespace velmoor {
namespace {

std::string Cause() {
  return CauseOf(gMainForm->Helix7()->LatestFailure(), *gMainForm->Alarm());
}

void Tell(Label& label, const std::string& text, Tone tone) {
  label.SetText(text);
  label.SetTone(tone);
}

}  // namespace

void frmAlarms::FormLoad() {
  Grid& grid = ui().vsHistory;
  grid.Bind(&historyGrid_);
  constexpr int kWidths[] = {34, 12, 13};
  for (int i = 0; i < historyGrid_.Columns(); ++i) grid.SetColumnWidth(i, kWidths[i]);
  grid.SetRowsInSight(10);
  connections_ += grid.Tip.Connect([this](int row, int column, std::string& tip) {
    if (row > 0) tip = historyGrid_.Text(row, column);
  });
  connections_ += ui().cmdRead.Click.Connect([this] { Read(); });
  connections_ += ui().cmdReset.Click.Connect([this] { cmdReset_Click(); });
  connections_ += ui().cmdClear.Click.Connect([this] { cmdClear_Click(); });
  connections_ += ui().cmdExit.Click.Connect([this] { Unload(); });
  ui().cmbRecording.SetItems(recordings_);
  ui().cmbRecording.SetListIndex(recordings_.empty() ? -1 : 0);
  ui().cmbRecording.SetEnabled(!recordings_.empty());
  ui().cmdRecording.SetEnabled(!recordings_.empty());
  connections_ += ui().cmdRecording.Click.Connect([this] {
    wanted_ = ui().cmbRecording.Text();
    Unload();
  });
  Read();
}

void frmAlarms::Read() {
  ReadNow();
  ReadCard();
  ReadHistory();
}

void frmAlarms::ReadNow() {
  AlarmReading reading;
  const ResultCode result = ReadAlarm(reading);
  if (result < 0) return Tell(ui().lblNow, Cause(), Tone::alarm);
  const bool alarm = IsAlarm(reading) || result > 0;
  Tell(ui().lblNow, reading.display + (reading.name.empty() ? "" : ": " + reading.name),
       alarm ? Tone::alarm : Tone::good);
}

void frmAlarms::ReadCard() {
  std::string error;
  if (ReadError(error) != kSuccess) return Tell(ui().lblCard, Cause(), Tone::alarm);
  if (!error.starts_with('E')) return Tell(ui().lblCard, "No error", Tone::good);
  const std::string name = gMainForm->Alarm()->GetErrorName(error);
  Tell(ui().lblCard, error + (name.empty() ? "" : ": " + name), Tone::alarm);
}

void frmAlarms::ReadHistory() {
  const ResultCode result = ReadAlarmHistory(history_);
  ui().vsHistory.Refresh();
  if (result < 0) return Tell(ui().lblHistory, Cause(), Tone::alarm);
  Tell(ui().lblHistory,
       history_.empty() ? "No alarms." : NumberText(history_.size()) + ", the newest first.",
       Tone::normal);
}

void frmAlarms::cmdReset_Click() {
  const ResultCode result =
      gMainForm->Helix7()->ResetDefaults(static_cast<std::int32_t>(SimpleCommand::resetAlarm));
  if (result != kSuccess) DisplayError(result, "Error resetting current alarm!");
  if (IsOpen()) Read();
}

void frmAlarms::cmdClear_Click() {
  const ResultCode result = gMainForm->Helix7()->ClearAlarmHistory();
  if (result != kSuccess) DisplayError(result, "Error resetting alarm history!");
  if (IsOpen()) Read();
}

}  // namespace velmoor
