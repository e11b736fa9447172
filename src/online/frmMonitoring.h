// The monitoring window: reads the ticked items over and over and shows them, with the alarms and a
// chart of what was read.
//
// The loop runs within the click that began it and serves events between the items; any of them may
// stop it, close the window or go offline.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "layouts/frmMonitoring.h"
#include "link/ResultCode.h"
#include "online/AlarmHistoryGrid.h"
#include "online/MonitoredItems.h"
#include "online/RecordButton.h"
#include "online/StripChart.h"
#include "windows/Window.h"

namespace velmoor {

class frmMonitoring final : public WindowOf<layouts::frmMonitoring> {
 public:
  frmMonitoring();
  ~frmMonitoring() override;

  // A pass over the items is under way.
  [[nodiscard]] bool NotDone() const { return blnNotDone_; }
  void StopTimer() { blnMonitor_ = false; }
  // The project has a machine: its units come first, until the user has chosen others.
  void PreferMachineUnits() { prefersMachineUnits_ = true; }
  // One pass over the ticked items.
  void UpdateData();

  Event<const std::string&> Status;  // "Monitoring In Progress"
  Event<> CommunicationDown;         // the amplifier does not answer any more

 protected:
  void FormLoad() override;
  void FormUnload() override;

 private:
  enum class Hardware { VKLM = 0, RX900 = 1 };
  enum class Direction { input = 0, output = 1 };

  // ---- loading
  void LoadUnits();
  [[nodiscard]] CheckBox& TickOf(int item) const;
  void RestoreChoices();
  void KeepChoices();
  void SetPinLabels();
  template <typename Kind>
  using Lines = ControlRow<Kind, 8>;
  // Of the items 11 to 14.
  [[nodiscard]] const Lines<Lamp>& LineLamps(int item) const;
  [[nodiscard]] const Lines<Label>& LineLabels(int item) const;
  // Of the status flags too.
  [[nodiscard]] Lamp& BitLamp(int item, std::size_t bit) const;
  [[nodiscard]] Label& BitLabel(int item, std::size_t bit) const;
  void SetUnitsFields();
  void ClearMonitoredList();
  void ConnectChart();

  // ---- the loop
  void cmdMonitoring_Click();
  void RunLoop();
  void ShowStandBy();
  void ShowOffline();
  // Reads and shows one item. False: the window is gone.
  bool UpdateItem(int item);
  bool UpdateAlarm();
  void ShowValue(int item, std::int32_t raw);
  void ShowValues();
  // The text of a value, or a colour and a tip, where it stands; position, speed and torque stand
  // large too.
  void PutText(int item, const std::string& text);
  void PutTone(int item, Tone tone, const std::string& tip);
  [[nodiscard]] static std::optional<int> PlaceAtGlance(int item);
  void DisplayLEDs(int eOption, std::int32_t lngValue);
  // What is not live stays on show, grey, with the time when it was true.
  void SetTones(int item, bool live);
  void ShowAllStale();
  // A read failed: where nobody answers any more, monitoring has lost the line.
  void LookWhetherLineIsLost(ResultCode result);
  [[nodiscard]] bool IsAnythingTicked() const;

  // ---- ticks
  void Tick(int item, bool bState);
  bool MonitorItem(int Index, bool bState, std::string& strError);
  bool MonitorIO(Hardware eHW, Direction eIO, bool bState, std::string& strError);
  void EnableMonitorOption(int item, bool bState);
  void EnableLamps(int item, bool bState);
  void EnableAlarmButtons(bool bState);

  // ---- alarms
  ResultCode GetAlarm();
  void GetAlarmHistory();
  void GetError();
  // A failure in a box, once until the same read has worked or monitoring begins anew: it would
  // come back with every pass.
  void TellOnce(ResultCode result, const char* words);
  void cmdAlarm_Click(int Index);
  void ClearAlarmHistoryGrid();
  void UpdateAlarmHistoryComment();

  // ---- the chart
  void ShowChart(bool atOnce);
  void cmdSaveChart_Click();
  void cmdSavePicture_Click();
  // Asks for a file and writes what `bytes` gives then; errors are shown behind `prefix`.
  static void SaveChartAs(const std::string& what, const std::string& suffix, const char* prefix,
                          const std::function<std::string()>& bytes);

  void cmdExit_Click();
  [[nodiscard]] double Seconds() const;  // since the window opened

  MonitoredUnits units_;
  std::string sngUpdateTime_ = "2.0";  // kept and shown, and nothing else, deliberately
  bool blnMonitor_ = false;
  bool blnNotInitialAlarm_ = false;
  std::set<std::string> told_;  // words of failures that last
  bool blnNotDone_ = false;
  bool prefersMachineUnits_ = false;
  std::optional<bool> chosenUnits_;  // by the user: those of the machine
  bool looping_ = false;
  std::array<bool, kMonitoredItems> blnUpdate_{};
  std::array<std::int32_t, kAlarmItem> raw_{};
  std::array<std::string, kAlarmItem> readAt_{};  // "09:02:18"; empty: not read yet
  std::string latest_;                            // of them
  std::vector<AlarmReading> history_;
  AlarmHistoryGrid historyGrid_{history_};
  StripChart chart_;
  RecordButton record_;
  double opened_ = 0;      // s of the monotonic clock
  double chartShown_ = 0;  // s since opened
};

}  // namespace velmoor
