#include "console/LineCommands.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <span>

#include "console/ConsoleBoxes.h"
#include "console/ConsoleLine.h"
#include "console/MonitorCommand.h"
#include "console/ReportCommand.h"
#include "console/SetCommand.h"
#include "console/TableOut.h"
#include "console/WatchCommand.h"
#include "operations/LineActions.h"
#include "platform/Events.h"
#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/World.h"

namespace velmoor {
namespace {

// What a command works with.
struct LineWork {
  const Context& context;
  ConsoleLine& host;
  LineRun& run;
};

bool PrintResults(const LineWork& work, const LineTable& table) {
  if (!table.rows.empty()) PrintTable(work.context, RowsOf(table));
  return table.done;
}

// ---- the file

bool New(const Context& context) {
  const std::string path = world().files->Absolute(context.Argument(2));
  const std::string port = context.line.Required("port");
  if (world().files->Exists(path)) RequireAgreement(context);
  ConsoleLine host(context);
  if (!host.TheWork().Started()) return false;
  const auto line = SearchLine(host, {.com = host.Session().COM()}, port, GetFileDirectory(path));
  if (line) WriteLineFile(path, *line);
  return line.has_value();
}

// ---- looking

bool Scan(const LineWork& work) {
  if (!work.run.Look()) return false;
  TableOut table(work.context, CsvRow{"axis", "name", "result"});
  std::set<std::string> others = work.run.Present();
  bool all = true;
  for (const LineAxis& axis : work.run.File().axes) {
    const bool present = others.erase(axis.address) > 0;
    table.Row({axis.address, axis.name, present ? "present" : "absent"});
    all = all && present;
  }
  for (const std::string& axis : others) table.Row({axis, "", "not in the file"});
  return all && others.empty();
}

bool Info(const LineWork& work) {
  return PrintResults(work, ReadLineInfo(work.run));
}

bool Compare(const LineWork& work) {
  const LineTable table = CompareLine(work.run);
  return PrintResults(work, table) && std::ranges::all_of(table.rows, [](const auto& row) {
           return row.result.word == "equal";
         });
}

// The axes in turn, on a line that stays open; one that falls silent is asked no more.
bool Monitor(const LineWork& work) {
  const auto& [context, host, run] = work;
  const std::vector<MonitoredItem> items = ItemsChosen(context);
  const std::int64_t passes = PassesChosen(context);
  if (!run.Look()) return false;
  std::vector<LineAxis> live = run.Axes();
  const std::size_t absent = std::erase_if(
      live, [&work](const LineAxis& axis) { return !work.run.Present().contains(axis.address); });
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
      if (work.host.Stopped()) return true;
      work.run.TurnTo(axis);
      CsvRow cells = MomentCells(start);
      cells.push_back(axis.address);
      if (!ReadItems(*work.host.Session().Helix7(), items, cells)) return true;
      table.Row(cells);
      return !work.context.program.out.good();
    });
  }
  return absent == 0 && live.size() == all;
}

// ---- transfers

bool Download(const LineWork& work) {
  const CommandLine& line = work.context.line;
  return PrintResults(
      work, DownloadLine(work.run, {.onlyNew = line.Has("new"), .verify = line.Has("verify")}));
}

bool Upload(const LineWork& work) {
  return PrintResults(work, UploadLine(work.run));
}

bool ResetAlarms(const LineWork& work) {
  return PrintResults(work, ResetLineAlarms(work.run));
}

// ---- projects

bool Set(const LineWork& work) {
  const Context& context = work.context;
  const auto words = std::span(context.line.Arguments()).subspan(3);
  if (words.empty()) throw UsageError("Nothing to set is named");
  CheckAssignments(words);
  return PrintResults(work, SetOnLine(work.run, [&](clsHX7Project& project) {
                        return TakeAssignments(context, project, words);
                      }));
}

// Without --yes what it would change.
bool Copy(const LineWork& work) {
  const Context& context = work.context;
  const std::vector<LineAxis> from = AxesNamed(work.run.File(), context.line.Required("from"));
  if (from.size() != 1) throw UsageError("--from takes one axis");
  const LineCopy copy{from.front(), AxesNamed(work.run.File(), context.line.Required("to"))};
  if (!context.line.Has("yes")) return PrintResults(work, CountCopyOnLine(work.run, copy));
  return PrintResults(work, CopyOnLine(work.run, copy, [&](const std::vector<std::string>& faults) {
                        TellFaults(context, faults);
                      }));
}

bool Report(const LineWork& work) {
  const std::string folder = world().files->Absolute(work.context.line.Required("out"));
  return PrintResults(
      work, ReportLine(work.run, folder, [&](clsHX7Project& project, const std::string& path) {
        return WriteReport(work.context, project, path);
      }));
}

// ---- one command, many actions

struct Action {
  const char* name;
  bool agreement;  // it overwrites data
  bool (*run)(const LineWork& work);
};
constexpr const char* kWatch = "watch";
constexpr std::array<Action, 10> kActions{{{"scan", false, Scan},
                                           {"info", false, Info},
                                           {"compare", false, Compare},
                                           {"download", true, Download},
                                           {"upload", true, Upload},
                                           {"reset-alarm", false, ResetAlarms},
                                           {"set", false, Set},
                                           {"copy", false, Copy},
                                           {"report", false, Report},
                                           {"monitor", false, Monitor}}};

bool Line(const Context& context) {
  if (context.Argument(1) == "new") return New(context);
  // A process that stays is spared the session.
  if (context.Argument(2) == kWatch) return Watch(context);
  const auto* const action = std::ranges::find(kActions, context.Argument(2), &Action::name);
  if (action == kActions.end()) {
    throw UsageError("'" + context.Argument(2) +
                     "' is none of scan, info, compare, download, upload, reset-alarm, set, "
                     "copy, report, monitor and watch");
  }
  if (action->agreement) RequireAgreement(context);
  context.program.boxes.Agree(context.line.Has("yes"));
  try {
    const LineFile line = ReadLineFile(world().files->Absolute(context.Argument(1)));
    const auto chosen = context.line.Value("axes");
    std::vector<LineAxis> axes = chosen ? AxesNamed(line, *chosen) : line.axes;
    context.program.setDevice(context.program.port, line.port);
    ConsoleLine host(context);
    LineRun run(host, line, std::move(axes), host.Session().COM());
    return host.TheWork().Started() && action->run({context, host, run});
  } catch (const LineFileError& error) {
    TellFaults(context, {error.what()});
    return false;
  }
}

}  // namespace

Commands LineCommands() {
  std::vector<std::string> names;
  for (const Action& action : kActions) names.emplace_back(action.name);
  names.emplace_back(kWatch);
  return {{{"line",
            "the same on all axes of a line file; `line new FILE` searches and writes one",
            {{.value = {"LINE.toml", ValueEntry::Kind::file}},
             OneOf("ACTION", names),
             {.value = {"NAME=VALUE"}, .required = false, .many = true}},
            {"port", "axes", "from", "to", "out", "sections", "paper", "new", "verify", "items",
             "count", "json", "yes", "broker", "csv", "metrics", "listen", "folder"}},
           Line}};
}

}  // namespace velmoor
