#include "console/HardwareCommands.h"

#include <algorithm>
#include <array>
#include <optional>
#include <ostream>
#include <vector>

#include "console/ConsoleBoxes.h"
#include "console/TableOut.h"
#include "link/AxisScan.h"
#include "link/BaudRates.h"
#include "link/CommandWords.h"
#include "link/DisplayError.h"
#include "platform/Files.h"
#include "platform/Numbers.h"
#include "platform/VisibleText.h"
#include "platform/World.h"
#include "project/ProjectCompare.h"
#include "project/data/ProjectFormat.h"
#include "project/data/Schema.h"

namespace velmoor {
namespace {

// ---- the items of --only

// The items of "index,zone" in the order of an upload.
std::vector<Tool> ItemsNamed(const std::string& list) {
  std::vector<Tool> wanted;
  for (const std::string& name : SplitAtCommas(list)) {
    const auto* const item = std::ranges::find_if(
        kUploadOrder, [&name](Tool tool) { return InfoOf(tool).word == name; });
    if (item == kUploadOrder.end()) {
      throw UsageError("'" + name + "' is none of index, zone, jog, parameters and system");
    }
    wanted.push_back(*item);
  }
  std::vector<Tool> tools;
  for (const Tool tool : kUploadOrder) {
    if (std::ranges::find(wanted, tool) != wanted.end()) tools.push_back(tool);
  }
  return tools;
}

// Throws UsageError when more than one of the options is given.
void AllowOneOf(const Context& context, std::initializer_list<const char*> options) {
  const auto given =
      std::ranges::count_if(options, [&](const char* option) { return context.line.Has(option); });
  if (given > 1) throw UsageError("Only one of --all, --new and --only makes sense");
}

bool PrintDifferences(const Context& context, const std::vector<PartComparison>& parts,
                      const char* first, const char* second) {
  TableOut table(context, CsvRow{"part", "row", "field", first, second});
  for (const PartComparison& part : parts) {
    for (const ProjectDifference& d : part.differences) {
      table.Row({d.part, d.row, d.field, d.first, d.second});
    }
  }
  return !Differs(parts);
}

// ---- looking

// Lines "Axis: 0", or with --json objects of a name and a value.
class InfoOut {
 public:
  explicit InfoOut(const Context& context) : out_(context.program.out) {
    if (context.line.Has("json")) table_.emplace(context, CsvRow{"name", "value"});
  }
  // Without a name: a difference, which tells its place itself.
  void Tell(const std::string& name, const std::string& value) {
    if (table_) {
      table_->Row({name.empty() ? "Difference" : name, value});
    } else {
      out_ << name << (name.empty() ? "" : ": ") << value << '\n';
    }
  }

 private:
  std::ostream& out_;
  std::optional<TableOut> table_;
};

struct InfoItem {
  const char* name;
  ResultCode (clsHX7Helix7::*read)(std::string&);
};
constexpr std::array<InfoItem, 10> kInfoItems{
    {{"Servo model", &clsHX7Helix7::GetServoModel},
     {"Servo version", &clsHX7Helix7::GetServoVersion},
     {"Servo Y specification", &clsHX7Helix7::GetServoYSpec},
     {"Option version", &clsHX7Helix7::GetOptionVersion},
     {"Option Y specification", &clsHX7Helix7::GetOptionYSpec},
     {"Motor model", &clsHX7Helix7::GetMotorModel},
     {"Motor size (W)", &clsHX7Helix7::GetMotorSize},
     {"Encoder type", &clsHX7Helix7::GetEncoderType},
     {"Encoder resolution", &clsHX7Helix7::GetEncoderResolutionBits},
     {"Alarm", &clsHX7Helix7::GetAlarm}}};

bool Info(const Context& context) {
  (void)context.line.Required("port");
  Work work(context);
  const bool compares = context.line.Arguments().size() > 1;
  if (compares && !work.Open(context.Argument(1))) return false;
  if (!work.Connect()) return false;
  clsHX7Helix7& helix = *work.session().Helix7();
  InfoOut out(context);
  out.Tell("Axis", work.session().Axis());
  out.Tell("Baud rate", NumberText(work.session().BaudRate()));
  out.Tell("Echo", work.session().Echo() == 1 ? "on" : "off");
  bool complete = true;
  for (const InfoItem& item : kInfoItems) {
    std::string text;
    const ResultCode result = (helix.*item.read)(text);
    if (result == kSuccess) {
      out.Tell(item.name, VisibleText(text));
    } else {
      complete = false;
      DisplayError(result, std::string(item.name) + " cannot be read!");
    }
  }
  if (!compares) return complete;
  const auto match = work.session().Hardware().connection.Motor().Look();
  if (!match) return false;
  for (const std::string& difference : match->differences) out.Tell({}, difference);
  if (match->differences.empty()) out.Tell("Project", "describes this motor");
  return complete && match->differences.empty();
}

bool Scan(const Context& context) {
  (void)context.line.Required("port");
  Work work(context);
  if (!work.Started()) return false;
  bool any = false;
  TableOut table(context, CsvRow{"axis", "baud"});
  for (const std::int32_t rate : kBaudRates) {
    if (work.session().StopProcedure()) return false;
    const LineSettings settings{.com = work.session().COM(), .bitsPerSecond = rate};
    const auto found = work.session().Hardware().connection.FindAxes(settings, [&](int queried) {
      if (context.program.progress == nullptr) return !work.session().StopProcedure();
      *context.program.progress << '\r' << rate << " bit/s: " << queried << " of " << kAxisCount
                                << " Axes Queried " << std::flush;
      return !work.session().StopProcedure();
    });
    if (!found) return false;
    for (const std::string& axis : *found) {
      table.Row({axis, NumberText(rate)});
      any = true;
    }
  }
  if (context.program.progress != nullptr) *context.program.progress << '\n';
  if (!any) ShowExclamation("No axes found in system!");
  return any;
}

// ---- transfers

bool Download(const Context& context) {
  (void)context.line.Required("port");
  RequireAgreement(context);
  AllowOneOf(context, {"all", "new", "only"});
  const auto only = context.line.Value("only");
  const std::vector<Tool> items = only ? ItemsNamed(*only) : std::vector<Tool>();
  Work work(context);
  if (!work.Open(context.Argument(1))) return false;
  Transfers& transfers = work.session().Hardware().transfers;
  transfers.SetVerify(context.line.Has("verify"));
  transfers.SetKeep(context.line.Has("keep-first"));
  if (only) {
    return transfers.DownloadItem(JoinedItem(DownloadItemsOfMenu(), items), [] { return true; });
  }
  return context.line.Has("new") ? transfers.DownloadNew() : transfers.DownloadAll();
}

bool Upload(const Context& context) {
  (void)context.line.Required("port");
  RequireAgreement(context);
  AllowOneOf(context, {"all", "only"});
  const auto only = context.line.Value("only");
  const std::vector<Tool> items = only ? ItemsNamed(*only) : std::vector<Tool>();
  Work work(context);
  // What is read is saved at the end: a file that takes nothing is found out before the first line.
  if (!work.Open(context.Argument(1)) || !work.Save()) return false;
  Uploads& uploads = work.session().Hardware().uploads;
  const bool committed =
      only ? uploads.UploadItem(JoinedItem(UploadItemsOfMenu(), items)) : uploads.UploadAll();
  if (!committed || context.program.boxes.Failures() > 0) return false;
  return work.Save();
}

bool Reset(const Context& context) {
  struct Kind {
    const char* name;
    bool (*run)(Resets& resets);
  };
  static constexpr std::array<Kind, 6> kKinds{{
      {"all", [](Resets& resets) { return resets.ResetEverything(); }},
      {"parameters", [](Resets& resets) { return resets.ResetParameters(); }},
      {"tables", [](Resets& resets) { return resets.ResetTables(); }},
      {"index", [](Resets& resets) { return resets.ResetTable(Tool::position); }},
      {"zone", [](Resets& resets) { return resets.ResetTable(Tool::zone); }},
      {"jog", [](Resets& resets) { return resets.ResetTable(Tool::jog); }},
  }};
  const auto* const kind = std::ranges::find(kKinds, context.Argument(1), &Kind::name);
  if (kind == kKinds.end()) {
    throw UsageError("'" + context.Argument(1) +
                     "' is none of all, parameters, tables, index, zone and jog");
  }
  (void)context.line.Required("port");
  RequireAgreement(context);
  Work work(context);
  return work.Connect() && kind->run(work.session().Hardware().resets);
}

// ---- comparing

bool Compare(const Context& context) {
  (void)context.line.Required("port");
  Work work(context);
  if (!work.Open(context.Argument(1))) return false;
  const auto parts = work.session().Hardware().compare.Run();
  return parts && PrintDifferences(context, *parts, "project", "hardware");
}

// Of the right format, or read all the same by the user's choice.
bool MayBeCompared(const Context& context, const std::string& path) {
  if (context.line.Has("read-only")) return true;
  try {
    RefuseNewer(*OpenForReading(path));
    return true;
  } catch (const NewerFormat& newer) {
    ShowCritical(InWords(newer, GetFileTitle(path)) + kReadOnlyHint);
    return false;
  }
}

bool Diff(const Context& context) {
  const std::string first = world().files->Absolute(context.Argument(1));
  const std::string second = world().files->Absolute(context.Argument(2));
  if (!MayBeCompared(context, first) || !MayBeCompared(context, second)) return false;
  return PrintDifferences(context, CompareProjects(first, second), "first", "second");
}

}  // namespace

Commands HardwareCommands() {
  const ArgumentEntry file = FileArgument();
  return {
      {{"info",
        "tell what hardware answers, and where a project describes another motor",
        {{.value = {"FILE", ValueEntry::Kind::file}, .required = false}},
        {"port", "axis", "motor-size", "json"}},
       Info},
      {{"download",
        "send the project to the hardware",
        {file},
        {"port", "axis", "motor-size", "yes", "all", "new", "only", "verify", "keep-first"}},
       Download},
      {{"upload",
        "read the hardware into the project and save",
        {file},
        {"port", "axis", "motor-size", "yes", "all", "only"}},
       Upload},
      {{"compare",
        "print where the hardware differs",
        {file},
        {"port", "axis", "motor-size", "read-only", "json"}},
       Compare},
      {{"diff", "print where two projects differ", {file, file}, {"read-only", "json"}}, Diff},
      {{"scan", "print the axes that answer", {}, {"port", "json"}}, Scan},
      {{"reset",
        "factory defaults in the hardware",
        {OneOf("WHAT", {"all", "parameters", "tables", "index", "zone", "jog"})},
        {"port", "axis", "yes"}},
       Reset},
  };
}

}  // namespace velmoor
