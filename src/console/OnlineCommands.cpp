#include "console/OnlineCommands.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "console/TableOut.h"
#include "link/DisplayError.h"
#include "link/clsHX7Helix7.h"
#include "online/AlarmReadings.h"
#include "online/TerminalScript.h"
#include "platform/Events.h"
#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/VisibleText.h"
#include "platform/World.h"

namespace velmoor {
namespace {

// ---- lines

// Whether the amplifier turned the line down: "0E210 ERR", "0E5A1".
bool IsRefusal(std::string_view answer) {
  constexpr std::size_t kDeviceErrorSize = 5;
  if (answer.find(" ERR") != std::string_view::npos) return true;
  return answer.size() == kDeviceErrorSize && answer[1] == 'E' && ParseHex(answer.substr(2));
}

// A line with a line end within would go out as two, and only the first would be looked at.
bool IsPlain(std::string_view line) {
  return std::ranges::all_of(line, [](char c) { return c >= ' ' && c <= '~'; });
}

// Sends a line and prints its answer. False: none came, or it is a refusal.
bool Exchange(const Context& context, clsHX7Helix7& helix, const std::string& line) {
  std::string answer;
  const ResultCode result = helix.SendToSerial(line, answer);
  if (answer.empty()) {
    ShowExclamation("*** ERROR SENDING SERIAL RESPONSE! ***" +
                    (result == kSuccess ? std::string() : "\r" + ResultText(result)));
    return false;
  }
  context.program.out << VisibleText(UpperCase(answer)) << '\n' << std::flush;
  return !IsRefusal(answer);
}

bool Send(const Context& context) {
  (void)context.line.Required("port");
  const std::string line = UpperCase(Trim(context.Argument(1)));
  if (line.empty()) throw UsageError("The line to send is empty");
  if (!IsPlain(line)) throw UsageError("The line to send holds more than plain characters");
  Work work(context);
  if (line.substr(0, 1) != work.session().Axis()) {
    throw UsageError("The line must begin with its axis, and --axis name the same one");
  }
  return work.Connect() && Exchange(context, *work.session().Helix7(), line);
}

bool RunScript(const Context& context) {
  (void)context.line.Required("port");
  const std::vector<std::string> lines =
      ScriptLines(world().files->ReadAll(world().files->Absolute(context.Argument(1))));
  if (lines.empty()) {
    ShowExclamation("NO COMMANDS IN SCRIPT MEMORY TO EXECUTE!");
    return false;
  }
  if (!std::ranges::all_of(lines, IsPlain)) {
    ShowExclamation("The file is no script: it holds more than plain characters!");
    return false;
  }
  Work work(context);
  if (!work.Connect()) return false;
  bool complete = true;
  for (const std::string& line : lines) {
    if (work.session().StopProcedure() || !context.program.out) return false;
    context.program.out << line << "\n> ";
    complete = Exchange(context, *work.session().Helix7(), line) && complete;
  }
  return complete;
}

// ---- alarms

bool Alarms(const Context& context) {
  (void)context.line.Required("port");
  Work work(context);
  if (!work.Connect()) return false;
  AlarmReading present;
  const ResultCode result = ReadAlarm(present);
  if (result != kSuccess) {
    DisplayError(result, "Alarm cannot be read!");
    return false;
  }
  std::vector<AlarmReading> history;
  const ResultCode past = ReadAlarmHistory(history);
  TableOut table(context, CsvRow{"entry", "display", "code", "name"});
  const auto print = [&table](const std::string& entry, const AlarmReading& alarm) {
    table.Row({entry, alarm.display, alarm.code, alarm.name});
  };
  print("now", present);
  for (std::size_t i = 0; i < history.size(); ++i) print(NumberText(i + 1), history[i]);
  if (past < 0) DisplayError(past, "Alarm history cannot be read!");
  return past >= 0;
}

}  // namespace

Commands OnlineCommands() {
  return {
      {{"alarms", "print the alarm and the alarm history", {}, {"port", "axis", "json"}}, Alarms},
      {{"send",
        "send a line such as \"0PRM800\" and print the answer",
        {{.value = {"LINE"}}},
        {"port", "axis"}},
       Send},
      {{"run",
        "send the lines of a terminal script and print the answers",
        {{.value = {"SCRIPT.tsc", ValueEntry::Kind::file}}},
        {"port", "axis"}},
       RunScript},
  };
}

}  // namespace velmoor
