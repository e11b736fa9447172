#include "console/Commands.h"

#include <algorithm>
#include <functional>
#include <ostream>
#include <span>

#include "console/CheckCommand.h"
#include "console/CommandContext.h"
#include "console/ConsoleBoxes.h"
#include "console/HardwareCommands.h"
#include "console/HistoryCommands.h"
#include "console/LineCommands.h"
#include "console/MonitorCommand.h"
#include "console/OnlineCommands.h"
#include "console/ParameterCommands.h"
#include "console/RecordingCommands.h"
#include "console/RehearseCommand.h"
#include "console/ReportCommand.h"
#include "console/SetCommand.h"
#include "console/SystemCommand.h"
#include "console/TableOut.h"
#include "console/TextCommands.h"
#include "link/clsHX7Helix7.h"
#include "online/MonitoredItems.h"
#include "platform/Files.h"
#include "platform/Numbers.h"
#include "platform/World.h"
#include "platform/cli/RunProgram.h"
#include "rehearsal/Rehearsal.h"
#include "reports/rptHX7Main.h"
#include "tables/TableCsv.h"

namespace velmoor {
namespace {

// ---- tables

struct TableAccess {
  std::function<std::vector<CsvRow>(clsHX7Project&)> show;
  std::function<std::vector<std::string>(clsHX7Project&, const std::string&)> import;
  std::function<bool(clsHX7Project&)> accept;
};

template <typename Table>
TableAccess AccessTo(Table& (clsHX7Project::*table)()) {
  return {[table](clsHX7Project& project) { return CsvRowsOf((project.*table)()); },
          [table](clsHX7Project& project, const std::string& text) {
            return ImportCsv(project, (project.*table)(), text);
          },
          [table](clsHX7Project& project) { return (project.*table)().ChangeAccepted(); }};
}

bool IsTable(const std::string& name) {
  return name == "index" || name == "zone" || name == "jog";
}

TableAccess TableNamed(const std::string& name) {
  if (name == "index") return AccessTo(&clsHX7Project::Position);
  if (name == "zone") return AccessTo(&clsHX7Project::Zone);
  if (name == "jog") return AccessTo(&clsHX7Project::Jog);
  throw UsageError("'" + name + "' is none of index, zone and jog");
}

// Gives a project's data, the names of the columns first.
using Shown = std::function<std::vector<CsvRow>(clsHX7Project&)>;

Shown ShownAs(const std::string& name) {
  if (name == "parameters") return ParameterRows;
  if (name == "system") return SystemRows;
  if (IsTable(name)) return TableNamed(name).show;
  throw UsageError("'" + name + "' is none of index, zone, jog, system and parameters");
}

bool Show(const Context& context) {
  const Shown show = ShownAs(context.Argument(2));
  Work work(context);
  if (!work.Open(context.Argument(1))) return false;
  PrintTable(context, show(work.project()));
  return true;
}

bool Import(const Context& context) {
  const TableAccess table = TableNamed(context.Argument(2));
  context.program.boxes.Agree(context.line.Has("yes"));
  const std::string text = world().files->ReadAll(world().files->Absolute(context.Argument(3)));
  Work work(context);
  if (!work.Open(context.Argument(1))) return false;
  const std::vector<std::string> faults = table.import(work.project(), text);
  TellFaults(context, faults);
  if (!faults.empty() || !table.accept(work.project())) return false;
  return work.Save();
}

// ---- files

bool New(const Context& context) {
  const std::string path = world().files->Absolute(context.Argument(1));
  if (world().files->Exists(path)) {
    ShowExclamation("Project name already exists!  Cannot create new project!");
    return false;
  }
  world().files->ReplaceDurably(JoinPath(world().appDirectory, "Velmoor.spt"), path);
  return true;
}

// ---- dispatch

using Kind = ValueEntry::Kind;

Commands ProjectCommands() {
  const ArgumentEntry file = FileArgument();
  return {
      {{"new", "make a project from the template", {file}}, New},
      {{"show",
        "print a table, the machine or every parameter",
        {file, OneOf("WHAT", {"index", "zone", "jog", "system", "parameters"})},
        {"json", "motor-size", "read-only"}},
       Show},
      {{"import",
        "put a CSV file into a table and save",
        {file, OneOf("TABLE", {"index", "zone", "jog"}), {.value = {"CSV", Kind::file}}},
        {"motor-size", "yes"}},
       Import},
      {{"check",
        "print the values in doubt; --keep settles those that show one value and send "
        "another, and saves",
        {file},
        {"json", "keep", "motor-size", "yes"}},
       Check},
  };
}

// In the order of the help.
const Commands& AllCommands() {
  static const Commands kCommands = [] {
    Commands all = ProjectCommands();
    for (const Commands& group :
         {SetCommands(), TextCommands(), ReportCommands(), RehearseCommands(), HardwareCommands(),
          HistoryCommands(), RecordingCommands(), MonitorCommands(), OnlineCommands(),
          LineCommands()}) {
      all.insert(all.end(), group.begin(), group.end());
    }
    return all;
  }();
  return kCommands;
}

std::vector<std::string> SectionNames() {
  std::vector<std::string> names;
  for (const ReportItem& item : ReportItems()) names.emplace_back(item.word);
  return names;
}

std::vector<std::string> MonitoredNames() {
  std::vector<std::string> names;
  for (const MonitoredItem& item : MonitoredItems()) names.emplace_back(WordOf(item.command));
  return names;
}

std::string InWords(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text;
}

std::vector<OptionEntry> Options() {
  std::vector<std::string> axes;
  for (std::uint32_t axis = 0; axis < 16; ++axis) axes.push_back(HexText(axis, 1));
  return {
      {"port", "the serial port, or the line of a simulated amplifier", {"DEV", Kind::file}},
      {"axis", "axis 0 to F, 0 unless given", {"H", Kind::words, axes}},
      {"motor-size",
       "rated power of the motor in watts; that of the project unless given, or 30 where it tells "
       "none",
       {"W"}},
      {"new", "download only what changed since the last download"},
      {"verify",
       "read back what a download has sent before it is stored, and a sample behind the restart"},
      {"keep-first", "read what a download overwrites first, and keep it in the history"},
      {"after", "restore what an entry of the history has brought, not what was there before it"},
      {"all",
       "download or upload everything, as without it; export what is as in a new project too"},
      {"only",
       "download or upload index, zone, jog, parameters, system alone",
       {"LIST", Kind::words, {"index", "zone", "jog", "parameters", "system"}, true}},
      {"items",
       "monitor " + InWords(MonitoredNames()) + "; PUN,PER,NFB,TREF,STS unless given",
       {"LIST", Kind::words, MonitoredNames(), true}},
      {"count", "monitor N passes over the items", {"N"}},
      {"sections",
       "report " + InWords(SectionNames()) + "; all unless given",
       {"LIST", Kind::words, SectionNames(), true}},
      {"keep",
       "what is shown, marked to download, or what would be sent",
       {"WHICH", Kind::words, {"shown", "sent"}}},
      {"out",
       "where the report goes, a PDF, or what was rehearsed, a line each ms",
       {"FILE", Kind::file}},
      {"inputs",
       "what happens at the inputs: CSV with at (seconds, or \"step 4\"), input and state",
       {"CSV", Kind::file}},
      {"passes", "of a programme that begins again; 1 unless given", {"N"}},
      {"ignore",
       "findings that are none: " + InWords(FindingWords()),
       {"LIST", Kind::words, FindingWords(), true}},
      {"read-only", "read a project of a newer version too, as far as this one knows it"},
      {"paper", "report on a4 or letter; a4 unless given", {"SIZE", Kind::words, {"a4", "letter"}}},
      {"axes", "axes of the line, such as 0,3,A; all unless given", {"LIST"}},
      {"from", "the axis whose set-up is copied", {"H"}},
      {"to", "the axes that get it", {"LIST"}},
      {"broker", "watch: where messages go, mqtt://host, mqtts://host or file:/path", {"URL"}},
      {"csv", "watch: the folder of its files of a day", {"DIR", Kind::file}},
      {"metrics", "watch: the file of figures", {"FILE", Kind::file}},
      {"listen",
       "watch: answer who asks for figures, on this computer alone or at ADDRESS:PORT",
       {"PORT"}},
      {"folder", "watch: where it keeps what it must not lose", {"DIR", Kind::file}},
      {"json", "print JSON in the place of CSV: an array with an object a row"},
      {"yes",
       "agree to what would be asked: download, upload and reset overwrite data, report a file "
       "that "
       "is there, set may empty a filled table"},
  };
}

ProgramTable MakeTable() {
  ProgramTable table{
      .name = "velmoorctl",
      .about = "set up a servo axis from the shell",
      .options = Options(),
      .notes =
          "send, run: what goes out is not checked, and may move the machine.\n"
          "import: with a column \"step\", \"zone\" or \"jog\" the rows named are replaced and the "
          "others\n"
          "stay; without it the file is the whole table. One bad cell, and nothing is changed.\n"
          "Exit status: 0 success, 1 failure or a difference, 2 wrong usage.\n"};
  for (const ConsoleCommand& command : AllCommands()) table.commands.push_back(command.entry);
  return table;
}

}  // namespace

const ProgramTable& ConsoleTable() {
  static const ProgramTable kTable = MakeTable();
  return kTable;
}

int RunCommand(const CommandLine& line, const ConsoleProgram& program) {
  const std::string& name = line.Arguments().front();
  const auto command = std::ranges::find_if(
      AllCommands(),
      [&name](const ConsoleCommand& candidate) { return candidate.entry.name == name; });
  const bool done = command->run({line, program});
  return done && program.boxes.Failures() == 0 ? kDone : kFailed;
}

}  // namespace velmoor
