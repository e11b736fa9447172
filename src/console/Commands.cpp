#include "console/Commands.h"

#include <algorithm>
#include <functional>
#include <ostream>
#include <set>
#include <span>

#include "console/CommandContext.h"
#include "console/ConsoleBoxes.h"
#include "console/HardwareCommands.h"
#include "console/OnlineCommands.h"
#include "console/ParameterCommands.h"
#include "console/ReportCommand.h"
#include "console/SystemCommand.h"
#include "platform/Files.h"
#include "platform/Numbers.h"
#include "platform/World.h"
#include "tables/TableCsv.h"

namespace velmoor {
namespace {

constexpr const char* kUsage =
    "velmoorctl: set up a servo axis from the shell\n"
    "\n"
    "  velmoorctl new FILE                       make a project from the template\n"
    "  velmoorctl show FILE index|zone|jog|system  print a table or the machine as CSV\n"
    "  velmoorctl show FILE parameters           print every parameter as CSV\n"
    "  velmoorctl import FILE index|zone|jog CSV put a CSV file into a table and save\n"
    "  velmoorctl set FILE NAME=VALUE...         change the machine and save: system, measure, n1, "
    "n2,\n"
    "                                            resolution, units, time, encoder; all or nothing\n"
    "  velmoorctl set FILE Pn81B=12.5...         change parameters and save; all or nothing\n"
    "  velmoorctl report FILE --out FILE.pdf     make a PDF of the project, all of it or "
    "--sections\n"
    "  velmoorctl info --port DEV                tell what hardware answers\n"
    "  velmoorctl download FILE --port DEV --yes send the project to the hardware\n"
    "  velmoorctl upload FILE --port DEV --yes   read the hardware into the project and save\n"
    "  velmoorctl compare FILE --port DEV        print where the hardware differs, as CSV\n"
    "  velmoorctl diff A.spj B.spj               print where two projects differ, as CSV\n"
    "  velmoorctl scan --port DEV                print the axes that answer, as CSV\n"
    "  velmoorctl monitor --port DEV --count N   print values over time, as CSV\n"
    "  velmoorctl alarms --port DEV              print the alarm and the alarm history, as CSV\n"
    "  velmoorctl send \"0PRM800\" --port DEV      send a line and print the answer\n"
    "  velmoorctl run SCRIPT.tsc --port DEV      send the lines of a terminal script\n"
    "  velmoorctl reset WHAT --port DEV --yes    factory defaults for all, parameters, tables,\n"
    "                                            index, zone or jog in the hardware\n"
    "\n"
    "  --axis H         axis 0 to F, 0 unless given\n"
    "  --motor-size W   rated power of the motor in watts, 30 unless given\n"
    "  --new            download only what changed since the last download\n"
    "  --all            download or upload everything, as without it\n"
    "  --only LIST      download or upload index, zone, jog, parameters, system alone\n"
    "  --items LIST     monitor PUN, PER, POS, DST, RPOS, RDST, PFB, NFB, NREF, TREF, STS, IN1, "
    "IN2,\n"
    "                   OUT1, OUT2; PUN,PER,NFB,TREF,STS unless given\n"
    "  --count N        monitor N passes over the items\n"
    "  --sections LIST  report communications, system, parameters, tuning, interface, flexibleio,\n"
    "                   overtravel, homing, index, jog, zone; all unless given\n"
    "  --out FILE.pdf   where the report goes\n"
    "  --paper SIZE     report on a4 or letter; a4 unless given\n"
    "  --yes            agree to what would be asked: download, upload and reset overwrite data,\n"
    "                   report a file that is there, set may empty a filled table\n"
    "  --help           this text\n"
    "  --version        the program's version\n"
    "\n"
    "send, run: what goes out is not checked, and may move the machine.\n"
    "import: with a column \"step\", \"zone\" or \"jog\" the rows named are replaced and the "
    "others\n"
    "stay; without it the file is the whole table. One bad cell, and nothing is changed.\n"
    "Exit status: 0 success, 1 failure or a difference, 2 wrong usage.\n";

// ---- tables

struct TableAccess {
  std::function<std::string(clsHX7Project&)> show;
  std::function<std::vector<std::string>(clsHX7Project&, const std::string&)> import;
  std::function<bool(clsHX7Project&)> accept;
};

template <typename Table>
TableAccess AccessTo(Table& (clsHX7Project::*table)()) {
  return {[table](clsHX7Project& project) { return ExportCsv((project.*table)()); },
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

// Gives a project's data as CSV.
using Shown = std::function<std::string(clsHX7Project&)>;

Shown ShownAs(const std::string& name) {
  if (name == "parameters") return ExportParameters;
  if (name == "system") return SystemCsv;
  if (IsTable(name)) return TableNamed(name).show;
  throw UsageError("'" + name + "' is none of index, zone, jog, system and parameters");
}

bool Show(const Context& context) {
  const Shown show = ShownAs(context.Argument(2));
  Work work(context);
  if (!work.Open(context.Argument(1))) return false;
  context.program.out << show(work.project());
  return true;
}

bool Import(const Context& context) {
  const TableAccess table = TableNamed(context.Argument(2));
  const std::string text = world().files->ReadAll(world().files->Absolute(context.Argument(3)));
  Work work(context);
  if (!work.Open(context.Argument(1))) return false;
  const std::vector<std::string> faults = table.import(work.project(), text);
  for (const std::string& fault : faults) context.program.err << fault << '\n';
  if (!faults.empty() || !table.accept(work.project())) return false;
  work.project().Save();
  return true;
}

// ---- values

bool SetParameterValues(const Context& context) {
  Work work(context);
  if (!work.Open(context.Argument(1))) return false;
  const std::vector<std::string> faults =
      SetParameters(work.project(), std::span(context.line.Arguments()).subspan(2));
  for (const std::string& fault : faults) context.program.err << fault << '\n';
  if (!faults.empty()) return false;
  work.project().Save();
  return true;
}

bool IsParameterAssignment(const std::string& word) {
  return word.starts_with("Pn");
}

// The assignments to the machine. Throws UsageError.
std::vector<Assignment> MachineAssignments(std::span<const std::string> words) {
  std::vector<Assignment> assignments;
  for (const std::string& word : words) {
    const std::size_t equals = word.find('=');
    if (equals == std::string::npos) throw UsageError("'" + word + "' is no assignment");
    const std::string name = word.substr(0, equals);
    if (!IsSystemKey(name)) {
      throw UsageError("'" + name +
                       "' cannot be set: it is no parameter such as Pn81B, and none of "
                       "system, measure, n1, n2, resolution, units, time and encoder");
    }
    if (std::ranges::find(assignments, name, &Assignment::first) != assignments.end()) {
      throw UsageError("'" + word + "' assigns a second time");
    }
    assignments.emplace_back(name, word.substr(equals + 1));
  }
  return assignments;
}

// The machine or parameters; not both in one command, which could not keep one of them only.
bool Set(const Context& context) {
  const auto words = std::span(context.line.Arguments()).subspan(2);
  const auto parameters = std::ranges::count_if(words, IsParameterAssignment);
  if (parameters == std::ssize(words)) return SetParameterValues(context);
  if (parameters > 0) throw UsageError("Set the machine and parameters by one command each");
  const std::vector<Assignment> assignments = MachineAssignments(words);
  context.program.boxes.Agree(context.line.Has("yes"));
  Work work(context);
  if (!work.Open(context.Argument(1))) return false;
  if (!SetSystem(work.project(), assignments)) return false;
  work.project().Save();
  return true;
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

struct Command {
  std::string name;
  std::size_t arguments;  // the command's own name included
  bool more;              // further arguments may follow
  std::set<std::string> options;
  bool (*run)(const Context& context);
};

const std::vector<Command>& Commands() {
  static const std::vector<Command> kCommands{
      {"new", 2, false, {}, New},
      {"show", 3, false, {"motor-size"}, Show},
      {"import", 4, false, {"motor-size"}, Import},
      {"set", 3, true, {"motor-size", "yes"}, Set},
      {"report", 2, false, {"out", "sections", "paper", "motor-size", "yes"}, Report},
      {"info", 1, false, {"port", "axis", "motor-size"}, Info},
      {"scan", 1, false, {"port"}, Scan},
      {"download", 2, false, {"port", "axis", "motor-size", "yes", "all", "new", "only"}, Download},
      {"upload", 2, false, {"port", "axis", "motor-size", "yes", "all", "only"}, Upload},
      {"compare", 2, false, {"port", "axis", "motor-size"}, Compare},
      {"reset", 2, false, {"port", "axis", "yes"}, Reset},
      {"monitor", 1, false, {"port", "axis", "items", "count"}, Monitor},
      {"alarms", 1, false, {"port", "axis"}, Alarms},
      {"send", 2, false, {"port", "axis"}, Send},
      {"run", 2, false, {"port", "axis"}, RunScript},
      {"diff", 3, false, {}, Diff},
  };
  return kCommands;
}

const Command& CommandNamed(const std::string& name) {
  const auto& commands = Commands();
  const auto found = std::find_if(commands.begin(), commands.end(),
                                  [&](const Command& command) { return command.name == name; });
  if (found == commands.end()) throw UsageError("'" + name + "' is no command");
  return *found;
}

}  // namespace

int RunCommand(const std::vector<std::string>& words, const ConsoleProgram& program) {
  try {
    const CommandLine line(words, {"yes", "all", "new", "help", "version"});
    if (line.Has("help")) {
      program.out << kUsage;
      return 0;
    }
    if (line.Has("version")) {
      program.out << "velmoorctl " VELMOOR_VERSION "\n";
      return 0;
    }
    if (line.Arguments().empty()) throw UsageError("A command is missing");
    const Command& command = CommandNamed(line.Arguments().front());
    const std::size_t given = line.Arguments().size();
    if (given < command.arguments || (given > command.arguments && !command.more)) {
      throw UsageError("Wrong number of arguments for '" + command.name + "'");
    }
    line.AllowOnly(command.options);
    if (std::ranges::count(line.Arguments(), std::string()) > 0) {
      throw UsageError("An argument of '" + command.name + "' is empty");
    }
    const bool done = command.run({line, program});
    return done && program.boxes.Failures() == 0 ? 0 : 1;
  } catch (const UsageError& error) {
    // The whole text would push the message off a screen.
    program.err << error.what() << "\nvelmoorctl --help lists the commands and their options.\n";
    return 2;
  } catch (const std::exception& error) {
    program.err << error.what() << '\n';
    return 1;
  }
}

}  // namespace velmoor
