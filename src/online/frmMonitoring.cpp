#include "online/frmMonitoring.h"

#include <algorithm>

#include "link/DisplayError.h"
#include "link/clsHX7Helix7.h"
#include "platform/Events.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Settings.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "session/Project.h"
#include "session/Session.h"

namespace velmoor {
namespace {

constexpr const char* kTicksSetting = "MonitoredItems";  // a bit each
constexpr int kDisplayColumn = 2;                        // the last of the history
constexpr std::chrono::milliseconds kIdle{10};           // a pass that reads nothing waits so long

std::string TimeOfDay() {
  constexpr std::size_t kTime = 11;  // in a moment
  return MomentText(world().clock->Now()).substr(kTime);
}

}  // namespace

// The history as the grid shows it.
frmMonitoring::frmMonitoring() = default;
frmMonitoring::~frmMonitoring() = default;

double frmMonitoring::Seconds() const {
  return std::chrono::duration<double>(world().clock->Monotonic()).count() - opened_;
}

// ---- loading

void frmMonitoring::FormLoad() {
  opened_ = 0;
  opened_ = Seconds();
  chartShown_ = 0;
  blnMonitor_ = blnNotDone_ = blnNotInitialAlarm_ = false;
  chart_ = {};
  ClearMonitoredList();
  ui().txtPollingTime.SetText(sngUpdateTime_ = "2.0");
  LoadUnits();
  SetPinLabels();
  SetUnitsFields();
  for (Label* const label :
       {&ui().lblAlarm, &ui().lblStatus, &ui().lblComment, &ui().lblError, &ui().lblErrorComment}) {
    label->SetText("");
  }
  history_.clear();
  ui().vsHistory.Bind(&historyGrid_);
  ui().vsHistory.SetColumnShare(kDisplayColumn);
  UpdateAlarmHistoryComment();
  for (int item = 0; item < kMonitoredItems; ++item) {
    CheckBox& tick = TickOf(item);
    connections_ += tick.Click.Connect([this, item, &tick] { Tick(item, tick.Value()); });
  }
  for (int i = 0; i < 3; ++i) {
    connections_ += ui().cmdAlarm_[i].Click.Connect([this, i] { cmdAlarm_Click(i); });
  }
  connections_ += ui().optUnits.Click.Connect([this](int index) {
    chosenUnits_ = index == 1;
    units_.SetMachineUnits(index == 1);
    SetUnitsFields();
    ShowValues();
  });
  connections_ += ui().vsHistory.RowColChange.Connect([this] { UpdateAlarmHistoryComment(); });
  connections_ +=
      ui().txtPollingTime.Change.Connect([this] { sngUpdateTime_ = ui().txtPollingTime.Text(); });
  connections_ += ui().cmdMonitoring.Click.Connect([this] { cmdMonitoring_Click(); });
  connections_ += ui().cmdExit.Click.Connect([this] { cmdExit_Click(); });
  ConnectChart();
  RestoreChoices();
}

// A pass or loop that is under way ends without another look at this object.
void frmMonitoring::FormUnload() {
  KeepChoices();
  blnMonitor_ = blnNotDone_ = looping_ = false;
}

CheckBox& frmMonitoring::TickOf(int item) const {
  if (item <= kStatusItem) return ui().chkOption_[item];
  if (item == kAlarmItem) return ui().chkAlarm;
  const int line = item - kStatusItem - 1;
  return line < 2 ? ui().chkInput_[line] : ui().chkOutput_[line - 2];
}

// What was watched last time is ticked.
void frmMonitoring::RestoreChoices() {
  const auto ticked = static_cast<std::uint32_t>(world().settings->ReadNumber(kTicksSetting, 0));
  for (int item = 0; item < kMonitoredItems; ++item) {
    if (((ticked >> item) & 1U) == 0) continue;
    TickOf(item).SetValue(true);
    Tick(item, true);
  }
}

void frmMonitoring::KeepChoices() {
  std::uint32_t ticked = 0;
  for (int item = 0; item < kMonitoredItems; ++item) {
    if (blnUpdate_.at(static_cast<std::size_t>(item))) ticked |= 1U << item;
  }
  Trapped("frmMonitoring.KeepChoices: ", [ticked] {
    world().settings->Write(kTicksSetting, NumberText(ticked));
    return true;
  });
}

void frmMonitoring::LoadUnits() {
  Project& project = OpenedProject();
  const bool machineUnits = chosenUnits_.value_or(prefersMachineUnits_);
  units_ =
      MonitoredUnits(project, static_cast<float>(project.MechanicalSystemSister().FeedConstant()));
  units_.SetMachineUnits(machineUnits);
  ui().optUnits.SetValue(machineUnits ? 1 : 0);
}

void frmMonitoring::SetPinLabels() {
  const auto flags = StatusFlags();
  for (std::size_t i = 0; i < flags.size(); ++i) {
    ui().lblStatus_[i].SetText(std::string(flags[i]));
  }
  const bool isNew = gMainForm->Helix7()->IsOptionVersionNew();
  for (int item = kStatusItem + 1; item < kAlarmItem; ++item) {
    const auto names = LineNames(item, isNew);
    for (std::size_t i = 0; i < names.size(); ++i) LineLabels(item)[i].SetText(names[i]);
  }
}

const frmMonitoring::Lines<Lamp>& frmMonitoring::LineLamps(int item) const {
  const Lines<Lamp>* const lamps[] = {&ui().lmpVKLMInput_, &ui().lmpRX900Input_,
                                      &ui().lmpVKLMOutput_, &ui().lmpRX900Output_};
  return *lamps[item - kStatusItem - 1];
}

const frmMonitoring::Lines<Label>& frmMonitoring::LineLabels(int item) const {
  const Lines<Label>* const labels[] = {&ui().lblVKLMInput_, &ui().lblRX900Input_,
                                        &ui().lblVKLMOutput_, &ui().lblRX900Output_};
  return *labels[item - kStatusItem - 1];
}

Lamp& frmMonitoring::BitLamp(int item, std::size_t bit) const {
  return item == kStatusItem ? ui().lmpStatus_[bit] : LineLamps(item)[bit];
}

Label& frmMonitoring::BitLabel(int item, std::size_t bit) const {
  return item == kStatusItem ? ui().lblStatus_[bit] : LineLabels(item)[bit];
}

void frmMonitoring::SetUnitsFields() {
  for (int item = 0; item < kMonitoredValues; ++item) {
    ui().lblUnit_[item].SetText(
        units_.UnitOf(MonitoredItems()[static_cast<std::size_t>(item)].kind));
    if (const auto place = PlaceAtGlance(item)) {
      ui().lblLargeUnit_[*place].SetText(ui().lblUnit_[item].Text());
    }
  }
}

std::optional<int> frmMonitoring::PlaceAtGlance(int item) {
  constexpr std::array<int, 3> kItems{0, 7, 9};  // position, speed, torque
  const auto* const found = std::ranges::find(kItems, item);
  if (found == kItems.end()) return std::nullopt;
  return static_cast<int>(found - kItems.begin());
}

void frmMonitoring::PutText(int item, const std::string& text) {
  ui().lblValue_[item].SetText(text);
  const auto place = PlaceAtGlance(item);
  if (place) ui().lblLarge_[*place].SetText(text);
}

void frmMonitoring::PutTone(int item, Tone tone, const std::string& tip) {
  ui().lblValue_[item].SetTone(tone);
  ui().lblValue_[item].SetToolTip(tip);
  const auto place = PlaceAtGlance(item);
  if (place) ui().lblLarge_[*place].SetTone(tone);
}

void frmMonitoring::ClearMonitoredList() {
  blnUpdate_.fill(false);
  raw_.fill(0);
  readAt_.fill({});
  latest_.clear();
  ui().lblAge.SetText("");
  for (int item = 0; item < kMonitoredValues; ++item) {
    PutText(item, "0");
    EnableMonitorOption(item, false);
  }
  for (int item = kStatusItem; item < kAlarmItem; ++item) EnableLamps(item, false);
}

// ---- the loop

void frmMonitoring::cmdMonitoring_Click() {
  if (!gMainForm->IsOnline()) {
    ShowOffline();
    ShowExclamation("System is offline.");
    return;
  }
  blnMonitor_ = !blnMonitor_;
  const auto token = Token();
  YieldEvents();
  if (token.expired()) return;
  if (!blnMonitor_) return ShowStandBy();
  told_.clear();
  ui().cmdMonitoring.SetCaption("Stop &Monitor");
  EnableAlarmButtons(false);
  Status.Raise("Monitoring In Progress");
  // A stop and a new start within one yield go on in the loop that runs already.
  if (!looping_) RunLoop();
}

void frmMonitoring::RunLoop() {
  const auto token = Token();
  looping_ = true;
  while (blnMonitor_) {
    UpdateData();
    if (token.expired()) return;
    if (!gMainForm->IsOnline()) {
      ShowOffline();
      break;
    }
    // Without an exchange nothing slows the loop down.
    if (IsAnythingTicked()) {
      YieldEvents();
    } else {
      world().events->WaitForEvents(kIdle);
    }
    if (token.expired()) return;
  }
  looping_ = false;
}

void frmMonitoring::ShowStandBy() {
  ui().cmdMonitoring.SetCaption("Begin &Monitor");
  EnableAlarmButtons(true);
  Status.Raise("Monitoring Stand By");
  ShowAllStale();
  ShowChart(true);
}

void frmMonitoring::ShowOffline() {
  blnMonitor_ = false;
  ui().cmdMonitoring.SetCaption("Begin &Monitor");
  ui().cmdAlarm_[0].SetEnabled(true);
  Status.Raise("Offline");
  ShowAllStale();
  ShowChart(true);
}

bool frmMonitoring::IsAnythingTicked() const {
  for (const bool ticked : blnUpdate_) {
    if (ticked) return true;
  }
  return false;
}

void frmMonitoring::UpdateData() {
  if (!gMainForm->IsOnline()) return;
  const auto token = Token();
  blnNotDone_ = true;
  for (int item = 0; item < kMonitoredItems && blnMonitor_ && gMainForm->IsOnline(); ++item) {
    if (!blnUpdate_[static_cast<std::size_t>(item)]) continue;
    const bool stays = item == kAlarmItem ? UpdateAlarm() : UpdateItem(item);
    if (!stays) return;
    ShowChart(false);
    // Between the items the line is free: nobody who needs it has to wait.
    blnNotDone_ = false;
    YieldEvents();
    if (token.expired()) return;
    blnNotDone_ = true;
  }
  blnNotDone_ = false;
}

bool frmMonitoring::UpdateItem(int item) {
  const auto token = Token();
  std::int32_t lngValue = 0;
  const auto command = MonitoredItems()[static_cast<std::size_t>(item)].command;
  const ResultCode result =
      gMainForm->Helix7()->GetHelixValue(static_cast<std::int32_t>(command), lngValue);
  if (result == kSuccess) {
    ShowValue(item, lngValue);
    return true;
  }
  SetTones(item, false);
  LookWhetherLineIsLost(result);
  if (!token.expired() && gMainForm->IsOnline()) GetError();
  return !token.expired();
}

bool frmMonitoring::UpdateAlarm() {
  const auto token = Token();
  if (!blnNotInitialAlarm_) {
    GetAlarmHistory();
    blnNotInitialAlarm_ = true;
  }
  if (token.expired()) return false;
  const ResultCode result = GetAlarm();
  if (token.expired()) return false;
  if (result < 1 && gMainForm->IsOnline()) GetError();
  return !token.expired();
}

// A silent line would cost a whole time-out for each item.
void frmMonitoring::LookWhetherLineIsLost(ResultCode result) {
  if (result != kPortNotOpen && result != kNoResponse) return;
  if (gMainForm->Comm().IsOpen() && gMainForm->Helix7()->Answers()) return;
  blnMonitor_ = false;
  CommunicationDown.Raise();
}

void frmMonitoring::ShowValue(int item, std::int32_t raw) {
  raw_[static_cast<std::size_t>(item)] = raw;
  latest_ = readAt_[static_cast<std::size_t>(item)] = TimeOfDay();
  ui().lblAge.SetText("Live");
  if (item >= kStatusItem) return DisplayLEDs(item, raw);
  SetTones(item, true);
  chart_.Add(item, Seconds(), raw);
  const ValueKind kind = MonitoredItems()[static_cast<std::size_t>(item)].kind;
  PutText(item, units_.Text(raw, kind));
}

// After a change of units.
void frmMonitoring::ShowValues() {
  for (int item = 0; item < kMonitoredValues; ++item) {
    const ValueKind kind = MonitoredItems()[static_cast<std::size_t>(item)].kind;
    PutText(item, units_.Text(raw_[static_cast<std::size_t>(item)], kind));
  }
  ShowChart(true);
}

void frmMonitoring::DisplayLEDs(int eOption, std::int32_t lngValue) {
  raw_[static_cast<std::size_t>(eOption)] = lngValue;
  SetTones(eOption, true);
}

// A lamp that was lit when it was read last is grey, one that was not stays dark.
void frmMonitoring::SetTones(int item, bool live) {
  const std::string& readAt = readAt_[static_cast<std::size_t>(item)];
  const std::string tip = live || readAt.empty() ? "" : "As of " + readAt;
  if (item < kStatusItem) {
    PutTone(item, live ? Tone::normal : Tone::faint, tip);
    return;
  }
  const auto bits = static_cast<std::uint32_t>(raw_[static_cast<std::size_t>(item)]);
  for (std::size_t bit = 0; bit < MonitoredItems()[static_cast<std::size_t>(item)].bits; ++bit) {
    const bool isSet = ((bits >> bit) & 1U) != 0;
    BitLamp(item, bit).SetTone(!isSet ? Tone::normal : live ? Tone::good : Tone::faint);
    BitLamp(item, bit).SetToolTip(tip);
  }
}

void frmMonitoring::ShowAllStale() {
  for (int item = 0; item < kAlarmItem; ++item) SetTones(item, false);
  if (!latest_.empty()) ui().lblAge.SetText("As of " + latest_);
}

void frmMonitoring::cmdExit_Click() {
  Status.Raise("Monitoring Exited");
  Unload();
}

}  // namespace velmoor
