#include "console/LineCommands.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <span>

#include "console/ConsoleBoxes.h"
#include "console/LineRun.h"
#include "console/MonitorCommand.h"
#include "console/ReportCommand.h"
#include "console/SetCommand.h"
#include "console/TableOut.h"
#include "link/BaudRates.h"
#include "link/clsHX7Helix7.h"
#include "platform/Events.h"
#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/World.h"
#include "project/ProjectCompare.h"
#include "project/ProjectText.h"

namespace velmoor {
namespace {

using Result = LineRun::Result;

std::size_t Differences(const std::vector<PartComparison>& parts) {
  std::size_t count = 0;
  for (const PartComparison& part : parts) count += part.counts ? part.differences.size() : 0;
  return count;
}

// ---- the file

// The first speed at which anybody answers is that of the line.
bool New(const Context& context) {
  const std::string path = world().files->Absolute(context.Argument(2));
  LineFile line;
  line.port = context.line.Required("port");
  if (world().files->Exists(path)) RequireAgreement(context);
  Work work(context);
  if (!work.Started()) return false;
  for (const std::int32_t rate : kBaudRates) {
    const auto found = work.session().Hardware().connection.FindAxes(
        {.com = work.session().COM(), .bitsPerSecond = rate},
        [&work](int) { return !work.session().StopProcedure(); });
    if (!found || work.session().StopProcedure()) return false;
    line.bitsPerSecond = rate;
    for (const std::string& axis : *found) {
      line.axes.push_back(
          {axis, "axis " + axis, JoinPath(GetFileDirectory(path), "axis" + axis + ".spj")});
    }
    if (!line.axes.empty()) break;
  }
  if (line.axes.empty()) {
    ShowExclamation("No axes found in system!");
    return false;
  }
  WriteLineFile(path, line);
  return true;
}

// ---- looking

bool Scan(const Context& context, LineRun& run) {
  if (!run.Look()) return false;
  TableOut table(context, CsvRow{"axis", "name", "result"});
  std::set<std::string> others = run.Present();
  bool all = true;
  for (const LineAxis& axis : run.File().axes) {
    const bool present = others.erase(axis.address) > 0;
    table.Row({axis.address, axis.name, present ? "present" : "absent"});
    all = all && present;
  }
  for (const std::string& axis : others) table.Row({axis, "", "not in the file"});
  return all && others.empty();
}

bool Info(const Context&, LineRun& run) {
  using Read = ResultCode (clsHX7Helix7::*)(std::string&);
  static constexpr std::array<Read, 6> kReads{
      &clsHX7Helix7::GetServoModel,    &clsHX7Helix7::GetMotorModel,
      &clsHX7Helix7::GetEncoderType,   &clsHX7Helix7::GetServoVersion,
      &clsHX7Helix7::GetOptionVersion, &clsHX7Helix7::GetAlarm};
  return run.ForEach(
      true, {"amplifier", "motor", "encoder", "firmware", "option", "alarm"},
      [&run](const LineAxis&) -> Result {
        if (!run.Connect()) return {};
        Result result{true, "present"};
        for (const Read read : kReads) {
          std::string text;
          result.done = (run.TheWork().session().Helix7()->*read)(text) == kSuccess && result.done;
          result.more.push_back(text);
        }
        if (!result.done) result.word = "not read";
        return result;
      });
}

bool Compare(const Context&, LineRun& run) {
  bool equal = true;
  const bool all = run.ForEach(true, {"differences"}, [&](const LineAxis& axis) -> Result {
    if (!run.Open(axis)) return {};
    const auto parts = run.TheWork().session().Hardware().compare.Run();
    if (!parts) return {};
    equal = equal && !Differs(*parts);
    return {true, Differs(*parts) ? "different" : "equal", {NumberText(Differences(*parts))}};
  });
  return all && equal;
}

// The axes in turn, on a line that stays open; one that falls silent is asked no more.
bool Monitor(const Context& context, LineRun& run) {
  const std::vector<MonitoredItem> items = ItemsChosen(context);
  const std::int64_t passes = PassesChosen(context);
  if (!run.Look()) return false;
  std::vector<LineAxis> live = run.Axes();
  const std::size_t absent = std::erase_if(
      live, [&run](const LineAxis& axis) { return !run.Present().contains(axis.address); });
  if (live.empty()) {
    ShowExclamation("No axes found in system!");
    return false;
  }
  run.TurnTo(live.front());
  if (!run.Connect()) return false;
  std::vector<TableOut::Column> columns{{"time", JsonField::Kind::text},
                                        {"seconds", JsonField::Kind::number},
                                        {"axis", JsonField::Kind::text}};
  for (const MonitoredItem& item : items) columns.push_back(ColumnOf(item));
  TableOut table(context, columns);
  const std::chrono::milliseconds start = world().clock->Monotonic();
  const std::size_t all = live.size();
  for (std::int64_t pass = 0; pass < passes && !live.empty(); ++pass) {
    std::erase_if(live, [&](const LineAxis& axis) {
      if (run.TheWork().session().StopProcedure()) return true;
      run.TurnTo(axis);
      CsvRow cells = MomentCells(start);
      cells.push_back(axis.address);
      if (!ReadItems(*run.TheWork().session().Helix7(), items, cells)) return true;
      table.Row(cells);
      return !context.program.out.good();
    });
  }
  return absent == 0 && live.size() == all;
}

// ---- transfers

bool Download(const Context& context, LineRun& run) {
  return run.ForEach(true, {}, [&](const LineAxis& axis) -> Result {
    if (!run.Open(axis)) return {};
    Transfers& transfers = run.TheWork().session().Hardware().transfers;
    transfers.SetVerify(context.line.Has("verify"));
    const bool done = context.line.Has("new") ? transfers.DownloadNew() : transfers.DownloadAll();
    return {done, done ? "downloaded" : ""};
  });
}

bool Upload(const Context& context, LineRun& run) {
  return run.ForEach(true, {}, [&](const LineAxis& axis) -> Result {
    if (!run.Open(axis) || !run.TheWork().Save()) return {};
    const int failures = context.program.boxes.Failures();
    const bool read = run.TheWork().session().Hardware().transfers.UploadAll();
    if (!read || context.program.boxes.Failures() > failures) return {};
    return {run.TheWork().Save(), "uploaded"};
  });
}

// ---- projects

bool Set(const Context& context, LineRun& run) {
  const auto words = std::span(context.line.Arguments()).subspan(3);
  if (words.empty()) throw UsageError("Nothing to set is named");
  CheckAssignments(words);
  return run.ForEach(false, {}, [&](const LineAxis& axis) -> Result {
    const bool done = run.Open(axis) && TakeAssignments(context, run.TheWork().project(), words) &&
                      run.TheWork().Save();
    return {done, done ? "set" : ""};
  });
}

// The text of one project into the others; without --yes what that would change.
bool Copy(const Context& context, LineRun& run) {
  const std::vector<LineAxis> from = AxesNamed(run.File(), context.line.Required("from"));
  const std::vector<LineAxis> to = AxesNamed(run.File(), context.line.Required("to"));
  if (from.size() != 1) throw UsageError("--from takes one axis");
  if (!run.TheWork().Started() || !run.Open(from.front())) return false;
  const std::string text = ExportText(run.TheWork().project(), TextScope::changed);
  const bool agreed = context.line.Has("yes");
  const auto isTarget = [&to](const LineAxis& axis) {
    return std::ranges::find(to, axis.address, &LineAxis::address) != to.end();
  };
  return run.ForEach(false, {"differences"}, [&](const LineAxis& axis) -> Result {
    if (!isTarget(axis)) return {true, "-"};
    const std::size_t different = Differences(CompareProjects(from.front().project, axis.project));
    if (!agreed) return {true, different == 0 ? "equal" : "would change", {NumberText(different)}};
    if (!run.Open(axis)) return {};
    const std::vector<std::string> faults =
        ImportText(run.TheWork().project(), text, "axis " + from.front().address);
    TellFaults(context, faults);
    const bool done = faults.empty() && run.TheWork().Save();
    return {done, done ? "copied" : "", {NumberText(different)}};
  });
}

bool Report(const Context& context, LineRun& run) {
  const std::string folder = world().files->Absolute(context.line.Required("out"));
  world().files->MakeDirectories(folder);
  return run.ForEach(false, {"file"}, [&](const LineAxis& axis) -> Result {
    const std::string path = JoinPath(folder, "axis" + axis.address + ".pdf");
    const bool done = run.Open(axis) && WriteReport(context, run.TheWork(), path);
    return {done, done ? "written" : "", {path}};
  });
}

// ---- one command, many actions

struct Action {
  const char* name;
  bool agreement;  // it overwrites data
  bool (*run)(const Context& context, LineRun& run);
};
constexpr std::array<Action, 9> kActions{{{"scan", false, Scan},
                                          {"info", false, Info},
                                          {"compare", false, Compare},
                                          {"download", true, Download},
                                          {"upload", true, Upload},
                                          {"set", false, Set},
                                          {"copy", false, Copy},
                                          {"report", false, Report},
                                          {"monitor", false, Monitor}}};

bool Line(const Context& context) {
  if (context.Argument(1) == "new") return New(context);
  const auto* const action = std::ranges::find(kActions, context.Argument(2), &Action::name);
  if (action == kActions.end()) {
    throw UsageError("'" + context.Argument(2) +
                     "' is none of scan, info, compare, download, upload, set, copy, "
                     "report and monitor");
  }
  if (action->agreement) RequireAgreement(context);
  context.program.boxes.Agree(context.line.Has("yes"));
  try {
    LineRun run(context, context.Argument(1));
    return action->run(context, run);
  } catch (const LineFileError& error) {
    TellFaults(context, {error.what()});
    return false;
  }
}

}  // namespace

Commands LineCommands() {
  std::vector<std::string> names;
  for (const Action& action : kActions) names.emplace_back(action.name);
  return {{{"line",
            "the same on all axes of a line file; `line new FILE` searches and writes one",
            {{.value = {"LINE.toml", ValueEntry::Kind::file}},
             OneOf("ACTION", names),
             {.value = {"NAME=VALUE"}, .required = false, .many = true}},
            {"port", "axes", "from", "to", "out", "sections", "paper", "new", "verify", "items",
             "count", "json", "yes"}},
           Line}};
}

}  // namespace velmoor
