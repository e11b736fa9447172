#include "console/Commands.h"

#include <algorithm>
#include <functional>
#include <ostream>
#include <set>
#include <span>

#include "console/CommandLine.h"
#include "console/ConsoleBoxes.h"
#include "console/ConsoleSession.h"
#include "console/ParameterCommands.h"
#include "console/SystemCommand.h"
#include "platform/Files.h"
#include "platform/Numbers.h"
#include "platform/World.h"
#include "project/UploadFlow.h"
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
    "  velmoorctl info --port DEV                tell what hardware answers\n"
    "  velmoorctl download FILE --port DEV --yes send the project to the hardware\n"
    "  velmoorctl upload FILE --port DEV --yes   read the hardware into the project and save\n"
    "\n"
    "  --axis H         axis 0 to F, 0 unless given\n"
    "  --motor-size W   rated power of the motor in watts, 30 unless given\n"
    "  --new            download only what changed since the last download\n"
    "  --yes            agree to what would be asked: download and upload overwrite data\n"
    "\n"
    "import: with a column \"step\", \"zone\" or \"jog\" the rows named are replaced and the "
    "others\n"
    "stay; without it the file is the whole table. One bad cell, and nothing is changed.\n"
    "Exit status: 0 success, 1 failure, 2 wrong usage.\n";

struct Context {
  const CommandLine& line;
  const ConsoleProgram& program;

  [[nodiscard]] const std::string& Argument(std::size_t i) const { return line.Arguments().at(i); }
};

// ---- sessions

// Builds the session, and opens the project named by argument 1 where the command has one.
class Work {
 public:
  explicit Work(const Context& context) : session_(context.program.port, context.program.progress) {
    if (const auto axis = context.line.Value("axis")) {
      session_.SetAxis(*axis);
      if (session_.Axis() != UpperCase(Trim(*axis))) {
        throw UsageError("Option --axis needs one hexadecimal digit");
      }
    }
    if (const auto device = context.line.Value("port")) {
      context.program.setDevice(context.program.port, *device);
    }
    const std::string size = context.line.Value("motor-size").value_or(session_.LastMotorSize());
    if (!ParseWhole(size)) throw UsageError("Option --motor-size needs a whole number of watts");
    started_ = session_.Start(size);
  }

  [[nodiscard]] bool Started() const { return started_; }
  [[nodiscard]] bool Open(const std::string& fileName) {
    return started_ && session_.Open(fileName);
  }
  ConsoleSession& session() { return session_; }
  clsHX7Project& project() { return session_.project(); }

 private:
  ConsoleSession session_;
  bool started_ = false;
};

void RequireAgreement(const Context& context) {
  if (!context.line.Has("yes")) {
    throw UsageError("This overwrites data: say --yes to agree");
  }
  context.program.boxes.Agree(true);
}

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

TableAccess TableNamed(const std::string& name) {
  if (name == "index") return AccessTo(&clsHX7Project::Position);
  if (name == "zone") return AccessTo(&clsHX7Project::Zone);
  if (name == "jog") return AccessTo(&clsHX7Project::Jog);
  throw UsageError("'" + name + "' is none of index, zone and jog");
}

bool ShowParameters(const Context& context) {
  Work work(context);
  if (!work.Open(context.Argument(1))) return false;
  context.program.out << ExportParameters(work.project());
  return true;
}

bool Show(const Context& context) {
  if (context.Argument(2) == "parameters") return ShowParameters(context);
  if (context.Argument(2) == "system") {
    Work work(context);
    if (!work.Open(context.Argument(1))) return false;
    context.program.out << SystemCsv(work.project());
    return true;
  }
  const TableAccess table = TableNamed(context.Argument(2));
  Work work(context);
  if (!work.Open(context.Argument(1))) return false;
  context.program.out << table.show(work.project());
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

// The machine or parameters, as the first assignment says; not both in one command.
bool Set(const Context& context) {
  if (context.Argument(2).starts_with("Pn")) return SetParameterValues(context);
  std::vector<Assignment> assignments;
  for (std::size_t i = 2; i < context.line.Arguments().size(); ++i) {
    const std::string& word = context.Argument(i);
    const std::size_t equals = word.find('=');
    if (equals == std::string::npos) throw UsageError("'" + word + "' is no assignment");
    assignments.emplace_back(word.substr(0, equals), word.substr(equals + 1));
    if (!IsSystemKey(assignments.back().first)) {
      throw UsageError("'" + assignments.back().first + "' cannot be set");
    }
  }
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

// ---- hardware

bool Info(const Context& context) {
  (void)context.line.Required("port");
  Work work(context);
  if (!work.Started() || !work.session().GoOnline("Cannot go online!")) return false;
  clsHX7Helix7& helix = *work.session().Helix7();
  std::ostream& out = context.program.out;
  bool complete = true;
  const auto print = [&](const char* name, ResultCode (clsHX7Helix7::*read)(std::string&)) {
    std::string text;
    const bool read_ = (helix.*read)(text) == kSuccess;
    complete = complete && read_;
    if (read_) out << name << ": " << text << '\n';
  };
  out << "Axis: " << work.session().Axis() << '\n'
      << "Baud rate: " << work.session().BaudRate() << '\n'
      << "Echo: " << (work.session().Echo() == 1 ? "on" : "off") << '\n';
  print("Servo model", &clsHX7Helix7::GetServoModel);
  print("Servo version", &clsHX7Helix7::GetServoVersion);
  print("Servo Y specification", &clsHX7Helix7::GetServoYSpec);
  print("Option version", &clsHX7Helix7::GetOptionVersion);
  print("Option Y specification", &clsHX7Helix7::GetOptionYSpec);
  print("Motor model", &clsHX7Helix7::GetMotorModel);
  print("Motor size (W)", &clsHX7Helix7::GetMotorSize);
  print("Encoder type", &clsHX7Helix7::GetEncoderType);
  print("Encoder resolution", &clsHX7Helix7::GetEncoderResolutionBits);
  print("Alarm", &clsHX7Helix7::GetAlarm);
  return complete;
}

bool Download(const Context& context) {
  (void)context.line.Required("port");
  RequireAgreement(context);
  Work work(context);
  if (!work.Open(context.Argument(1))) return false;
  if (!work.session().GoOnline("Cannot go online!  Download failed!")) return false;
  const bool onlyNew = context.line.Has("new");
  const bool done = onlyNew ? work.project().Download() : work.project().DownloadAll();
  // The marks of what went out are true whether or not all did.
  work.project().Save();
  if (!done) {
    ShowExclamation("Error downloading data to controller!");
    return false;
  }
  work.session().WaitForRestart();
  context.program.err << (onlyNew ? "Download New complete!" : "Download All complete!") << '\n';
  return true;
}

bool Upload(const Context& context) {
  (void)context.line.Required("port");
  RequireAgreement(context);
  Work work(context);
  if (!work.Open(context.Argument(1))) return false;
  if (!work.session().GoOnline("Cannot go online!  Upload failed!")) return false;
  if (!RunUploadStages(work.project())) return false;
  AskToCommitUpload(work.project());
  if (context.program.boxes.Failures() > 0) return false;
  work.project().Save();
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
      {"info", 1, false, {"port", "axis", "motor-size"}, Info},
      {"download", 2, false, {"port", "axis", "motor-size", "yes", "new"}, Download},
      {"upload", 2, false, {"port", "axis", "motor-size", "yes"}, Upload},
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
    const CommandLine line(words, {"yes", "new", "help"});
    if (line.Has("help")) {
      program.out << kUsage;
      return 0;
    }
    if (line.Arguments().empty()) throw UsageError("A command is missing");
    const Command& command = CommandNamed(line.Arguments().front());
    const std::size_t given = line.Arguments().size();
    if (given < command.arguments || (given > command.arguments && !command.more)) {
      throw UsageError("Wrong number of arguments for '" + command.name + "'");
    }
    line.AllowOnly(command.options);
    const bool done = command.run({line, program});
    return done && program.boxes.Failures() == 0 ? 0 : 1;
  } catch (const UsageError& error) {
    program.err << error.what() << "\n\n" << kUsage;
    return 2;
  } catch (const std::exception& error) {
    program.err << error.what() << '\n';
    return 1;
  }
}

}  // namespace velmoor
