// What the user ticks in the monitoring window, its alarms, and its chart.

#include <algorithm>
#include <exception>

#include "link/DisplayError.h"
#include "link/clsHX7Helix7.h"
#include "online/frmMonitoring.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "session/Session.h"
#include "windows/SaveAs.h"

namespace velmoor {
namespace {

// The chart is drawn between the exchanges, so not too often.
constexpr double kChartPause = 0.25;  // s
constexpr const char* kNoAlarm = "Cannot retrieve current alarm from hardware!";
constexpr const char* kNoError = "Cannot retrieve current error from hardware!";
constexpr const char* kNoHistory = "Error getting alarm history!";

std::string GetState(bool bState) {
  return bState ? "starting" : "stopping";
}

}  // namespace

// ---- ticks

void frmMonitoring::Tick(int item, bool bState) {
  if (item == kAlarmItem) {
    blnUpdate_[static_cast<std::size_t>(item)] = bState;
    return;
  }
  std::string strError;
  const bool isLine = item > kStatusItem;
  const bool done =
      isLine ? MonitorIO(item % 2 != 0 ? Hardware::VKLM : Hardware::RX900,
                         item < 13 ? Direction::input : Direction::output, bState, strError)
             : MonitorItem(item, bState, strError);
  if (!done) ShowExclamation(strError);
}

bool frmMonitoring::MonitorItem(int Index, bool bState, std::string& strError) {
  try {
    blnUpdate_.at(static_cast<std::size_t>(Index)) = bState;
    if (Index >= kStatusItem) {
      EnableLamps(Index, bState);
    } else {
      EnableMonitorOption(Index, bState);
    }
    return true;
  } catch (const std::exception& error) {
    strError = std::string(error.what()) + "\rError " + GetState(bState) + " monitoring!";
    return false;
  }
}

bool frmMonitoring::MonitorIO(Hardware eHW, Direction eIO, bool bState, std::string& strError) {
  const int item = 11 + static_cast<int>(eHW) + 2 * static_cast<int>(eIO);
  try {
    EnableLamps(item, bState);
    blnUpdate_.at(static_cast<std::size_t>(item)) = bState;
    return true;
  } catch (const std::exception& error) {
    const std::string hardware = eHW == Hardware::VKLM ? "VKLM" : "RX900";
    const std::string direction = eIO == Direction::input ? "input" : "output";
    strError = std::string(error.what()) + "\rError " + GetState(bState) + " " + hardware + " " +
               direction + " monitoring!";
    return false;
  }
}

void frmMonitoring::EnableMonitorOption(int item, bool bState) {
  ui().lblValue_[item].SetEnabled(bState);
  ui().lblUnit_[item].SetEnabled(bState);
  if (const auto place = PlaceAtGlance(item)) {
    ui().lblLarge_[*place].SetEnabled(bState);
    ui().lblLargeUnit_[*place].SetEnabled(bState);
  }
}

void frmMonitoring::EnableLamps(int item, bool bState) {
  const MonitoredItem& group = MonitoredItems()[static_cast<std::size_t>(item)];
  for (std::size_t bit = 0; bit < group.bits; ++bit) {
    BitLamp(item, bit).SetEnabled(bState);
    BitLabel(item, bit).SetEnabled(bState);
  }
}

// ---- alarms

void frmMonitoring::EnableAlarmButtons(bool bState) {
  for (int i = 0; i < 3; ++i) ui().cmdAlarm_[i].SetEnabled(bState);
}

ResultCode frmMonitoring::GetAlarm() {
  AlarmReading reading;
  const ResultCode result = ReadAlarm(reading);
  if (result < 0) {
    const auto token = Token();
    LookWhetherLineIsLost(result);
    if (!token.expired() && gMainForm->IsOnline()) {
      TellOnce(result, kNoAlarm);
    }
    return result;
  }
  told_.erase(kNoAlarm);
  ui().lblAlarm.SetText(reading.display);
  ui().lblStatus.SetText(reading.code);
  ui().lblComment.SetText(reading.name);
  const bool isAlarm = reading.display.starts_with('A') || reading.display.starts_with('E');
  ui().lblAlarm.SetTone(isAlarm ? Tone::alarm : Tone::normal);
  if (isAlarm) GetAlarmHistory();
  return result;
}

void frmMonitoring::GetAlarmHistory() {
  const auto token = Token();
  const ResultCode result = ReadAlarmHistory(history_);
  ui().vsHistory.Refresh();
  UpdateAlarmHistoryComment();
  if (result >= 0) {
    told_.erase(kNoHistory);
    return;
  }
  const LinkFailure failure = gMainForm->Helix7()->LatestFailure();
  LookWhetherLineIsLost(result);
  if (token.expired() || !gMainForm->IsOnline()) return;
  ui().lblHistoryComment.SetText(CauseOf(failure, *gMainForm->Alarm()));
  TellOnce(result, kNoHistory);
}

void frmMonitoring::TellOnce(ResultCode result, const char* words) {
  if (told_.insert(words).second) DisplayError(result, words);
}

void frmMonitoring::GetError() {
  std::string strError;
  const ResultCode result = ReadError(strError);
  if (result != kSuccess) return TellOnce(result, kNoError);
  told_.erase(kNoError);
  Label& label = ui().lblError;
  label.SetText(strError);
  label.SetTone(strError.starts_with('E') ? Tone::alarm : Tone::normal);
  ui().lblErrorComment.SetText(gMainForm->Alarm()->GetErrorName(strError));
}

void frmMonitoring::cmdAlarm_Click(int Index) {
  clsHX7Helix7& helix = *gMainForm->Helix7();
  const auto token = Token();
  const auto report = [](ResultCode result, const char* words) {
    if (result != kSuccess) DisplayError(result, words);
  };
  switch (Index) {
    case 0:
      return report(helix.ResetHardware(), "Error resetting system!");
    case 1:
      return report(helix.ResetDefaults(static_cast<std::int32_t>(SimpleCommand::resetAlarm)),
                    "Error resetting current alarm!");
    default:
      break;
  }
  const ResultCode result = helix.ClearAlarmHistory();
  report(result, "Error resetting alarm history!");
  if (result != kSuccess || token.expired()) return;
  ClearAlarmHistoryGrid();
  blnNotInitialAlarm_ = false;
}

void frmMonitoring::ClearAlarmHistoryGrid() {
  history_.clear();
  ui().vsHistory.Refresh();
  UpdateAlarmHistoryComment();
}

// What the panel's display of the chosen entry means.
void frmMonitoring::UpdateAlarmHistoryComment() {
  const int row = ui().vsHistory.Row();
  const bool isEntry = row >= 1 && row <= static_cast<int>(history_.size());
  std::string text;
  if (isEntry) {
    const AlarmReading& entry = history_[static_cast<std::size_t>(row) - 1];
    text = entry.display + ": " + (entry.name.empty() ? "without a description" : entry.name);
  } else if (history_.empty()) {
    text = "No alarms.";
  }
  ui().lblHistoryComment.SetText(text);
}

// ---- the chart

void frmMonitoring::ConnectChart() {
  TimeChart& chart = ui().chtValues;
  connections_ += chart.Zoom.Connect([this](double time, double factor) {
    chart_.Zoom(time, factor);
    ShowChart(true);
  });
  connections_ += chart.Pan.Connect([this](double seconds) {
    chart_.Pan(seconds);
    ShowChart(true);
  });
  connections_ += ui().chkPauseChart.Click.Connect([this] {
    chart_.Pause(ui().chkPauseChart.Value());
    ShowChart(true);
  });
  connections_ += ui().cmdClearChart.Click.Connect([this] {
    chart_.Clear();
    opened_ += Seconds();
    ShowChart(true);
  });
  record_.Bind(ui().cmdRecord, connections_);
  connections_ += ui().cmdSaveChart.Click.Connect([this] { cmdSaveChart_Click(); });
  connections_ += ui().cmdSavePicture.Click.Connect([this] { cmdSavePicture_Click(); });
  ShowChart(true);
}

void frmMonitoring::ShowChart(bool atOnce) {
  const double now = Seconds();
  if (!atOnce && now - chartShown_ < kChartPause) return;
  chartShown_ = now;
  TimeChart& chart = ui().chtValues;
  chart.Show(chart_.Visible(units_, chart.WidthInPoints()),
             "Tick items and press Begin Monitor: their values are drawn here over time.");
  ui().chkPauseChart.SetValue(chart_.IsPaused());
  record_.Show();
  ui().cmdSaveChart.SetEnabled(!chart_.IsEmpty());
  ui().cmdSavePicture.SetEnabled(!chart_.IsEmpty());
}

void frmMonitoring::cmdSaveChart_Click() {
  SaveChartAs("Values", "csv", "frmMonitoring.SaveChart: ", [this] { return chart_.Csv(units_); });
}

void frmMonitoring::cmdSavePicture_Click() {
  // As it is seen now, whatever is read while the dialog is open.
  std::string picture;
  const char* const prefix = "frmMonitoring.SavePicture: ";
  const bool drawn = Trapped(prefix, [&] {
    picture = ui().chtValues.Picture();
    return true;
  });
  if (drawn) SaveChartAs("Picture", "png", prefix, [&picture] { return picture; });
}

void frmMonitoring::SaveChartAs(const std::string& what, const std::string& suffix,
                                const char* prefix, const std::function<std::string()>& bytes) {
  (void)SaveAs({.title = "Save " + what,
                .filter = what + " (*." + suffix + ")|*." + suffix,
                .defaultSuffix = suffix,
                .initialDirectory = {},
                .initialName = "monitoring." + suffix},
               prefix, bytes);
}

}  // namespace velmoor
