#include "simulator/SimulatorConsole.h"

#include <algorithm>
#include <optional>
#include <sstream>
#include <utility>
#include <vector>

#include "platform/Numbers.h"

namespace velmoor {
namespace {

using Outcome = SimulatorConsole::Outcome;

Outcome Done(std::string text = {}) {
  return {.text = std::move(text)};
}
Outcome Failed(const std::string& text) {
  return {.text = text + "\n", .failed = true};
}

std::vector<std::string> Split(std::string_view line) {
  std::istringstream stream{std::string(line)};
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(std::move(word));
  return words;
}

std::optional<int> Number(std::string_view text) {
  const auto number = ParseWhole(text);
  return number && std::in_range<int>(*number) ? std::optional(static_cast<int>(*number))
                                               : std::nullopt;
}

std::optional<bool> OnOff(std::string_view text) {
  if (text == "on") return true;
  if (text == "off") return false;
  return std::nullopt;
}

// The words that "state" shows.
constexpr const char* kShownWords[] = {"PUN", "POS", "PER",  "NFB",  "TREF",
                                       "IN1", "IN2", "OUT1", "OUT2", "STS"};

std::string_view Named(bool on) {
  return on ? "on" : "off";
}

// "skip=2" and its like; false for what is none of them.
bool ApplyOption(std::string_view word, Fault& fault) {
  const std::size_t equals = word.find('=');
  if (equals == std::string_view::npos) return false;
  const std::string_view name = word.substr(0, equals);
  const std::string_view value = word.substr(equals + 1);
  if (name == "text") {
    fault.text = value;
    return true;
  }
  const auto number = Number(value);
  if (!number || *number < 0) return false;
  if (name == "skip") fault.skip = *number;
  if (name == "count") fault.count = *number;
  if (name == "delay") fault.delay = std::chrono::milliseconds(*number);
  return name == "skip" || name == "count" || name == "delay";
}

bool ApplyOption(std::string_view word, Noise& noise) {
  const std::size_t equals = word.find('=');
  const auto number =
      equals == std::string_view::npos ? std::nullopt : Number(word.substr(equals + 1));
  if (!number || *number < 0) return false;
  const std::string_view name = word.substr(0, equals);
  if (name == "skip") noise.skip = *number;
  if (name == "delay") noise.delay = std::chrono::milliseconds(*number);
  if (name == "bits") noise.bits = static_cast<unsigned>(*number);
  return name == "skip" || name == "delay" || name == "bits";
}

std::string Describe(const Fault& fault) {
  return std::string(NameOf(fault.kind)) + (fault.match.empty() ? "" : " " + fault.match) +
         " skip=" + NumberText(fault.skip) + " count=" + NumberText(fault.count);
}

}  // namespace

struct SimulatorConsole::Command {
  std::string_view name;
  std::string_view arguments;
  std::string_view help;
  std::size_t leastArguments;
  Outcome (SimulatorConsole::*handler)(Words, Micros);
};

std::span<const SimulatorConsole::Command> SimulatorConsole::Commands() {
  static constexpr Command kCommands[] = {
      {"help", "", "this list", 0, &SimulatorConsole::Help},
      {"state", "", "speed, servo, alarm and values of the axis", 0, &SimulatorConsole::ShowState},
      {"counts", "", "how often each word was asked", 0, &SimulatorConsole::ShowCounts},
      {"journal", "[N]", "the last N lines and answers", 0, &SimulatorConsole::ShowJournal},
      {"forget", "", "empties counts and journal", 0, &SimulatorConsole::Forget},
      {"axis", "H", "chooses the axis for the other commands", 1, &SimulatorConsole::ChooseAxis},
      {"send", "COMMAND", "executes a command as if it came over the line", 1,
       &SimulatorConsole::SendLine},
      {"set", "WORD VALUE|live", "fixes the answer to a value word, or lets it follow the axis", 2,
       &SimulatorConsole::SetValue},
      {"input", "IN1|IN2|OUT1|OUT2 BIT on|off", "one input or output", 3,
       &SimulatorConsole::SetInput},
      {"load", "PERCENT", "torque that pulls in reverse, of the rated one", 1,
       &SimulatorConsole::SetLoad},
      {"ends", "REVERSE FORWARD|none", "where the end switches are, in turns of the motor", 1,
       &SimulatorConsole::SetEnds},
      {"alarm", "A.XX", "raises an alarm", 1, &SimulatorConsole::RaiseAlarm},
      {"error", "EXXX|0000", "the error code", 1, &SimulatorConsole::SetError},
      {"echo", "on|off", "repeats each command line or not", 1, &SimulatorConsole::SetEcho},
      {"time", "restart|store MS", "how long it takes", 2, &SimulatorConsole::SetTime},
      {"fault", "KIND [COMMAND] [skip=N] [count=N] [delay=MS] [text=T]",
       "misbehaves on matching commands; count=0 for ever", 1, &SimulatorConsole::PlanFault},
      {"faults", "", "what is planned, and the kinds", 0, &SimulatorConsole::ShowFaults},
      {"clear", "", "drops all planned faults and noise", 0, &SimulatorConsole::ClearFaults},
      {"noise", "[KIND in|out [skip=N] [delay=MS] [bits=N]]",
       "harms one byte, or the rest of its line, on its way to the amplifier (in) or to the host; "
       "without a kind tells whether it is still to come",
       0, &SimulatorConsole::PlanNoise},
      {"power", "", "off and on again", 0, &SimulatorConsole::PowerCycle},
      {"unplug", "", "pulls the line's plug", 0, &SimulatorConsole::Unplug},
      {"plug", "", "and puts it back", 0, &SimulatorConsole::Plug},
      {"quit", "", "ends the simulator", 0, &SimulatorConsole::Quit}};
  return kCommands;
}

SimulatorConsole::SimulatorConsole(SimulatedLine& line)
    : line_(line), amplifier_(&line.Amplifiers().front()) {}

Outcome SimulatorConsole::Execute(std::string_view line, Micros now) {
  const std::vector<std::string> words = Split(line);
  if (words.empty() || words[0].starts_with('#')) return Done();
  const auto commands = Commands();
  const auto command = std::ranges::find(commands, words[0], &Command::name);
  if (command == commands.end()) return Failed("Unknown: " + words[0] + "; try help.");
  if (words.size() - 1 < command->leastArguments) {
    return Failed("Usage: " + words[0] + " " + std::string(command->arguments));
  }
  for (SimulatedAmplifier& amplifier : line_.Amplifiers()) amplifier.AdvanceTo(now);
  return (this->*command->handler)(Words(words).subspan(1), now);
}

Outcome SimulatorConsole::Help(Words /*words*/, Micros /*now*/) {
  std::string text;
  for (const Command& command : Commands()) {
    std::string usage(command.name);
    if (!command.arguments.empty()) usage.append(" ").append(command.arguments);
    text += usage + ": " + std::string(command.help) + "\n";
  }
  return Done(text);
}

Outcome SimulatorConsole::ShowState(Words /*words*/, Micros now) {
  const AmplifierState& state = amplifier_->State();
  std::string text = "axis " + std::string(1, amplifier_->Axis()) + ", " +
                     NumberText(amplifier_->BaudRate()) + " bits/s, echo ";
  text.append(Named(amplifier_->Echo())).append(amplifier_->Listens(now) ? "\n" : ", restarting\n");
  text.append("servo ").append(Named(state.axis.IsServoOn()));
  text.append(state.axis.IsMoving() ? ", moves" : ", stands");
  if (state.axis.IsProgrammeRunning()) {
    text += ", program at row " + NumberText(state.axis.Programme().Row());
  }
  text += ", state " + state.axis.StateText() + ", error " + state.alarm.error + "\n";
  for (const char* const word : kShownWords) {
    text += std::string(word) + " " + NumberText(state.axis.Value(word).value_or(0)) + "\n";
  }
  for (const auto& [word, value] : state.values) {
    text += word + " fixed at " + NumberText(value) + "\n";
  }
  return Done(text);
}

Outcome SimulatorConsole::ShowCounts(Words /*words*/, Micros /*now*/) {
  std::string text;
  int total = 0;
  for (const auto& [word, count] : amplifier_->Counts()) {
    text += word + " " + NumberText(count) + "\n";
    total += count;
  }
  return Done(text + "total " + NumberText(total) + "\n");
}

Outcome SimulatorConsole::ShowJournal(Words words, Micros /*now*/) {
  const auto& journal = amplifier_->Journal();
  const int asked = words.empty() ? 20 : Number(words[0]).value_or(20);
  const std::size_t shown = std::min(journal.size(), static_cast<std::size_t>(std::max(asked, 0)));
  std::string text;
  for (std::size_t i = journal.size() - shown; i < journal.size(); ++i) {
    text += journal[i].line + " -> " + journal[i].answer + "\n";
  }
  return Done(text);
}

Outcome SimulatorConsole::ChooseAxis(Words words, Micros /*now*/) {
  SimulatedAmplifier* const chosen = words[0].size() == 1 ? line_.Amplifier(words[0][0]) : nullptr;
  if (chosen == nullptr) return Failed("No amplifier at axis " + words[0] + ".");
  amplifier_ = chosen;
  return Done();
}

Outcome SimulatorConsole::SendLine(Words words, Micros now) {
  return Done(amplifier_->Execute(words[0], now).text + "\n");
}

Outcome SimulatorConsole::SetValue(Words words, Micros /*now*/) {
  if (words[1] == "live") {
    amplifier_->FreeValue(words[0]);
    return Done();
  }
  const auto value = Number(words[1]);
  if (!value || !amplifier_->SetValue(words[0], *value)) {
    return Failed("No such value word, or no number.");
  }
  return Done();
}

Outcome SimulatorConsole::SetInput(Words words, Micros /*now*/) {
  const auto bit = Number(words[1]);
  const auto on = OnOff(words[2]);
  if (!bit || !on || !amplifier_->SetBit(words[0], *bit, *on)) {
    return Failed("No such input or output.");
  }
  return Done();
}

Outcome SimulatorConsole::SetLoad(Words words, Micros /*now*/) {
  const auto percent = Number(words[0]);
  if (!percent) return Failed("How many percent?");
  SimulatedAxis& axis = amplifier_->State().axis;
  DrivenLoad load = axis.Load();
  load.loadTorque = *percent / 100.0;
  axis.SetLoad(load);
  return Done();
}

Outcome SimulatorConsole::SetEnds(Words words, Micros /*now*/) {
  SimulatedAxis& axis = amplifier_->State().axis;
  MachineSwitches switches = axis.Switches();
  switches.reverseEnd = switches.forwardEnd = std::nullopt;
  if (words[0] != "none") {
    const auto reverse = ParseFloat(words[0]);
    const auto forward = words.size() > 1 ? ParseFloat(words[1]) : std::nullopt;
    if (!reverse || !forward) return Failed("Two numbers of turns, or none?");
    switches.reverseEnd = reverse;
    switches.forwardEnd = forward;
  }
  axis.SetSwitches(switches);
  return Done();
}

Outcome SimulatorConsole::RaiseAlarm(Words words, Micros /*now*/) {
  amplifier_->RaiseAlarm(words[0]);
  return Done();
}

Outcome SimulatorConsole::SetError(Words words, Micros /*now*/) {
  if (words[0].size() != 4) return Failed("An error code has four characters.");
  amplifier_->SetError(words[0]);
  return Done();
}

Outcome SimulatorConsole::SetEcho(Words words, Micros /*now*/) {
  const auto on = OnOff(words[0]);
  if (!on) return Failed("on or off?");
  amplifier_->SetEcho(*on);
  return Done();
}

Outcome SimulatorConsole::SetTime(Words words, Micros /*now*/) {
  AmplifierSettings& settings = amplifier_->State().settings;
  const auto milliseconds = Number(words[1]);
  const bool restart = words[0] == "restart";
  if (!milliseconds || *milliseconds < 0 || (!restart && words[0] != "store")) {
    return Failed("restart or store, and milliseconds?");
  }
  (restart ? settings.restartTime : settings.storeTime) = std::chrono::milliseconds(*milliseconds);
  return Done();
}

Outcome SimulatorConsole::PlanFault(Words words, Micros /*now*/) {
  const auto kind = FaultKindOf(words[0]);
  if (!kind) return Failed("Kinds: " + FaultNames());
  Fault fault;
  fault.kind = *kind;
  for (const std::string& word : words.subspan(1)) {
    if (ApplyOption(word, fault)) continue;
    if (!fault.match.empty() || word.find('=') != std::string::npos) {
      return Failed("Not understood: " + word);
    }
    fault.match = word;
  }
  line_.faults.Add(fault);
  return Done();
}

Outcome SimulatorConsole::ShowFaults(Words /*words*/, Micros /*now*/) {
  std::string text;
  for (const Fault& fault : line_.faults.Planned()) text += Describe(fault) + "\n";
  return Done(text + "Kinds: " + FaultNames() + "\n");
}

Outcome SimulatorConsole::ClearFaults(Words /*words*/, Micros /*now*/) {
  line_.faults.Clear();
  line_.noise.Clear();
  return Done();
}

Outcome SimulatorConsole::PlanNoise(Words words, Micros /*now*/) {
  if (words.empty()) return Done(line_.noise.IsPlanned() ? "to come\n" : "none\n");
  const auto kind = NoiseKindOf(words[0]);
  const bool in = words.size() > 1 && words[1] == "in";
  if (!kind || words.size() < 2 || (!in && words[1] != "out")) {
    return Failed("Usage: noise KIND in|out. Kinds: " + NoiseNames());
  }
  Noise noise{.kind = *kind,
              .direction = in ? NoiseDirection::toAmplifier : NoiseDirection::toHost};
  for (const std::string& word : words.subspan(2)) {
    if (!ApplyOption(word, noise)) return Failed("Not understood: " + word);
  }
  line_.noise.Plan(noise);
  return Done();
}

Outcome SimulatorConsole::Forget(Words /*words*/, Micros /*now*/) {
  amplifier_->ForgetWhatWasAsked();
  return Done();
}

Outcome SimulatorConsole::PowerCycle(Words /*words*/, Micros now) {
  amplifier_->Restart(now);
  return Done();
}

Outcome SimulatorConsole::Unplug(Words /*words*/, Micros /*now*/) {
  return {.text = {}, .request = Request::unplug};
}
Outcome SimulatorConsole::Plug(Words /*words*/, Micros /*now*/) {
  return {.text = {}, .request = Request::plug};
}
Outcome SimulatorConsole::Quit(Words /*words*/, Micros /*now*/) {
  return {.text = {}, .request = Request::quit};
}

}  // namespace velmoor
