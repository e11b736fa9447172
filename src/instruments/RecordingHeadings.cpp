#include "instruments/RecordingHeadings.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "instruments/AlarmRecordings.h"
#include "link/BriefTimeOut.h"
#include "online/AlarmAdvice.h"
#include "platform/Log.h"
#include "platform/Numbers.h"
#include "platform/World.h"

namespace velmoor {
namespace {

constexpr std::size_t kLogLines = 200;
constexpr int kTargetItem = 2;
constexpr const char* kWindowParameter = "821";
// What the tuning window edits.
constexpr std::array<const char*, 12> kGains{"100", "101", "102", "103", "107", "108",
                                             "109", "10A", "110", "401", "408", "409"};

// Enough to tell two neighbouring values of the amplifier apart, of which one unit has `count`.
int DecimalsFor(double count, int least) {
  constexpr int kMost = 6;
  const int needed = count > 1 ? static_cast<int>(std::ceil(std::log10(count))) : 0;
  return std::clamp(needed, least, kMost);
}

// As people write it: digits stay four, a number has no zeros in front.
std::string ShownGain(const std::string& number, const std::string& wire) {
  const bool isDigits = number == "110" || number == "408";
  const std::string text(Trim(wire));
  const auto whole = isDigits ? std::nullopt : ParseWhole(text);
  return whole ? NumberText(*whole) : Right(text, 4);
}

// In counts; nothing for a step without an absolute position.
std::optional<std::int32_t> TargetOf(clsHX7Project& project, int step) {
  const std::string& sent = project.Position().Stored(step).controller.at(clsHX7Position::position);
  const auto target = sent.starts_with('A') ? ParseWhole(sent.substr(1)) : std::nullopt;
  if (!target || !std::in_range<std::int32_t>(*target)) return std::nullopt;
  return static_cast<std::int32_t>(*target);
}

}  // namespace

// Asks the amplifier what a heading tells, as long as it answers: each question takes half a second
// at most, and an unanswered one is the last.
class RecordingHeadings::Asking {
 public:
  Asking(SessionState& session, bool may)
      : helix_(*session.Helix7()), brief_(helix_), may_(may && session.IsOnline()) {}

  [[nodiscard]] bool Value(ValueCommand command, std::int32_t& raw) {
    return Took([&] { return helix_.GetHelixValue(static_cast<std::int32_t>(command), raw); });
  }
  [[nodiscard]] bool Parameter(const std::string& number, std::string& text) {
    return Took([&] { return helix_.GetParameter(number, text); });
  }

 private:
  template <typename Question>
  bool Took(Question question) {
    if (!may_) return false;
    const ResultCode result = question();
    may_ = result != kNoResponse && result != kPortNotOpen && result != kBusy;
    return result == kSuccess;
  }

  clsHX7Helix7& helix_;
  BriefTimeOut brief_;
  bool may_;
};

MonitoredUnits RecordingHeadings::Units() const {
  clsHX7Project* const project = session_.OwnProject();
  if (project == nullptr) return {};
  MonitoredUnits units(*project,
                       static_cast<float>(project->MechanicalSystemSister().FeedConstant()));
  units.SetMachineUnits(!project->IsAsNew(Tool::mechanicalSystem));
  return units;
}

double RecordingHeadings::CountsForDistance() const {
  const double unit = Units().Convert(1, ValueKind::distance);
  return unit == 0 ? 0 : 1 / unit;
}

std::vector<RecordedItem> RecordingHeadings::Items() const {
  const MonitoredUnits units = Units();
  std::vector<RecordedItem> items;
  for (const MonitoredItem& item : MonitoredItems()) {
    const double unit = units.Convert(1, item.kind);
    const int decimals = item.kind == ValueKind::bits || unit == 0
                             ? 0
                             : DecimalsFor(1 / std::abs(unit), units.Decimals(item.kind));
    items.push_back({NameOf(item), units.UnitOf(item.kind), decimals});
  }
  items.push_back({recorded::kAlarm, "", 0});
  return items;
}

// ---- headings

RecordingHeading RecordingHeadings::Heading(const std::string& cause, Asking& asking) const {
  RecordingHeading heading;
  heading.begun = MomentText(world().clock->Now());
  if (clsHX7Project* const project = session_.OwnProject()) heading.project = project->FileTitle();
  heading.axis = session_.Axis();
  heading.cause = cause;
  heading.gains = Gains(asking);
  heading.window = InPositionWindow(asking);
  heading.items = Items();
  return heading;
}

// Those of the amplifier; those of the project where it does not tell them.
std::string RecordingHeadings::Gains(Asking& asking) const {
  std::string gains;
  bool all = true;
  for (const char* const number : kGains) {
    std::string value;
    const bool asked = asking.Parameter(number, value);
    all = all && asked;
    if (asked) value = ShownGain(number, value);
    if (!asked && session_.OwnProject() != nullptr) {
      value = session_.OwnProject()->EditorService().GetParameterValue(std::string("Pn") + number);
    }
    value = Trim(value);
    if (!value.empty()) gains += (gains.empty() ? "Pn" : " Pn") + std::string(number) + "=" + value;
  }
  return all || gains.empty() ? gains : gains + " (of the project)";
}

std::string RecordingHeadings::InPositionWindow(Asking& asking) const {
  std::string value;
  const bool read = asking.Parameter(kWindowParameter, value);
  const auto counts = read ? ParseWhole(Trim(value)) : std::nullopt;
  if (!counts || !std::in_range<std::int32_t>(*counts)) return {};
  const MonitoredUnits units = Units();
  return FixedText(units.Convert(static_cast<std::int32_t>(*counts), ValueKind::distance),
                   Items().front().decimals);
}

RecordingHeading RecordingHeadings::OfAlarm(const AlarmReading& alarm, const BlackBox& box,
                                            bool mayAsk) const {
  Asking asking(session_, mayAsk);
  RecordingHeading heading =
      Heading(kAlarmCause + alarm.display + (alarm.name.empty() ? "" : ": " + alarm.name), asking);
  heading.remarks = AlarmRemarks(alarm, box, asking);
  return heading;
}

RecordingHeading RecordingHeadings::Of(const std::string& cause, bool mayAsk) const {
  Asking asking(session_, mayAsk);
  return Heading(cause, asking);
}

std::vector<std::string> RecordingHeadings::AlarmRemarks(const AlarmReading& alarm,
                                                         const BlackBox& box,
                                                         Asking& asking) const {
  std::vector<std::string> remarks;
  if (const AlarmAdvice* const advice = AdviceOn(alarm.display)) {
    remarks.push_back("Cause: " + std::string(advice->cause));
    remarks.push_back("Remedy: " + std::string(advice->remedy));
  }
  for (int item = kStatusItem; item < kAlarmItem; ++item) {
    remarks.push_back(LineWords(item, box, asking));
  }
  remarks.push_back(StepWords(box));
  if (CurrentLog() == nullptr) return remarks;
  const std::vector<std::string> lines = CurrentLog()->Recent();
  const std::size_t first = lines.size() > kLogLines ? lines.size() - kLogLines : 0;
  for (std::size_t i = first; i < lines.size(); ++i) remarks.push_back("Log: " + lines[i]);
  return remarks;
}

// "VKLM Inputs: P-OT, N-OT": those that are on, read now where the line is free.
std::string RecordingHeadings::LineWords(int item, const BlackBox& box, Asking& asking) const {
  const MonitoredItem& info = MonitoredItems()[static_cast<std::size_t>(item)];
  const std::string name = NameOf(info) + ": ";
  std::int32_t raw = 0;
  const bool read = asking.Value(info.command, raw);
  std::string when;
  if (!read) {
    const auto latest = box.Latest(item);
    if (!latest) return name + "not read";
    raw = static_cast<std::int32_t>(*latest);
    when = " (as read last)";
  }
  const std::string words = BitWords(item, raw);
  return name + (words.empty() ? "none" : words) + when;
}

// The wire does not tell the step; its target does.
std::string RecordingHeadings::StepWords(const BlackBox& box) const {
  const auto target = box.Latest(kTargetItem);
  clsHX7Project* const project = session_.OwnProject();
  if (!target || project == nullptr) return "Active step: not known, the target was not read";
  std::string steps;
  for (int step = 1; step <= project->Position().RowsInArray(); ++step) {
    if (TargetOf(*project, step) != static_cast<std::int32_t>(*target)) continue;
    steps += (steps.empty() ? "" : ", ") + NumberText(step);
  }
  if (steps.empty()) return "Active step: none of the project's has the last target";
  return "Active step, by its target: " + steps;
}

// ---- steps

std::optional<Trigger> RecordingHeadings::OfStep(int step) const {
  clsHX7Project* const project = session_.OwnProject();
  if (project == nullptr || step < 1 || step > project->Position().RowsInArray()) {
    return std::nullopt;
  }
  const auto target = TargetOf(*project, step);
  if (!target) return std::nullopt;
  const double level = Units().Convert(*target, ValueKind::distance);
  return Trigger{recorded::kTarget, TriggerKind::reaches, level,
                 "step " + NumberText(step) + " begins"};
}

}  // namespace velmoor
