#include "console/RehearseCommand.h"

#include <algorithm>
#include <ostream>
#include <set>

#include "console/TableOut.h"
#include "platform/Csv.h"
#include "platform/Files.h"
#include "platform/Numbers.h"
#include "platform/VisibleText.h"
#include "platform/World.h"
#include "project/data/UnitConversion.h"
#include "rehearsal/Rehearsal.h"
#include "rehearsal/RehearsalRecord.h"

namespace velmoor {
namespace {

constexpr std::int64_t kMostPasses = 1000;

// The kinds of a list such as "dwell,speed". Throws UsageError.
std::set<std::string> IgnoredKinds(const Context& context) {
  std::set<std::string> ignored;
  const std::vector<std::string> known = FindingWords();
  std::vector<std::string> items = SplitAtCommas(context.line.Value("ignore").value_or(""));
  // An empty list names none, and a comma may end one.
  if (items.back().empty()) items.pop_back();
  for (const std::string& item : items) {
    const std::string word = LowerCase(Trim(item));
    if (std::ranges::find(known, word) == known.end()) {
      throw UsageError("'" + word + "' is no kind of finding");
    }
    ignored.insert(word);
  }
  return ignored;
}

RehearsalOrder OrderOf(const Context& context) {
  RehearsalOrder order;
  if (const auto passes = context.line.Value("passes")) {
    const auto number = ParseWhole(*passes);
    if (!number || *number < 1 || *number > kMostPasses) {
      throw UsageError("Option --passes needs a whole number from 1 to 1000");
    }
    order.passes = static_cast<int>(*number);
  }
  return order;
}

// False: the script cannot be taken, of which the user was told. Throws FileError.
bool ReadInputs(const Context& context, RehearsalOrder& order) {
  const auto inputs = context.line.Value("inputs");
  if (!inputs) return true;
  try {
    order.inputs = ReadInputScript(world().files->ReadAll(world().files->Absolute(*inputs)));
    return true;
  } catch (const InputScriptError& error) {
    context.program.err << VisibleLines(*inputs + ": " + error.what()) << '\n';
    return false;
  }
}

std::string Seconds(double seconds) {
  return FixedText(seconds, 3);
}

// Times in s, positions in the project's unit, the torque in % of the rated one.
void PrintSteps(const Context& context, clsHX7Project& project, const RehearsalResult& result) {
  using Kind = JsonField::Kind;
  const Units units = UnitsOf(project);
  TableOut table(context, {{"step", Kind::number},
                           {"label", Kind::text},
                           {"begin", Kind::number},
                           {"end", Kind::number},
                           {"time", Kind::number},
                           {"move", Kind::number},
                           {"position", Kind::number},
                           {"error", Kind::number},
                           {"torque", Kind::number}});
  for (const RehearsedStep& step : result.steps) {
    table.Row({NumberText(step.step), project.Position().Text(step.step, clsHX7Position::label),
               Seconds(step.begin), Seconds(step.end), Seconds(step.end - step.begin),
               Seconds(step.moved), units.Shown(step.endPosition, UnitKind::distance),
               units.Shown(step.largestError, UnitKind::distance), NumberText(step.peakTorque)});
  }
}

// Whether there are any that count.
bool TellFindings(const Context& context, const RehearsalResult& result,
                  const std::set<std::string>& ignored) {
  bool any = false;
  for (const RehearsalFinding& finding : result.findings) {
    const std::string kind(WordOf(finding.kind));
    if (ignored.contains(kind)) continue;
    any = true;
    const std::string place = finding.step == 0 ? ""
                                                : "Step " + NumberText(finding.step) + " at " +
                                                      Seconds(finding.seconds) + " s: ";
    context.program.err << VisibleLines(kind + ": " + place + finding.words) << '\n';
  }
  return any;
}

bool RehearseProject(const Context& context) {
  const std::set<std::string> ignored = IgnoredKinds(context);
  RehearsalOrder order = OrderOf(context);
  const auto out = context.line.Value("out");
  Work work(context);
  if (!ReadInputs(context, order) || !work.Open(context.Argument(1))) return false;
  const std::string path = out ? world().files->Absolute(*out) : std::string();
  if (out && world().files->Exists(path)) RequireAgreement(context);
  RehearsalRecord record(UnitsOf(work.project()));
  const RehearsalResult result =
      Rehearse(work.project(), order, [&](const RehearsalSample& sample) {
        if (out) record.Add(sample);
      });
  if (out) world().files->WriteDurably(path, record.Text());
  PrintSteps(context, work.project(), result);
  const bool found = TellFindings(context, result, ignored);
  std::string end = NumberText(result.steps.size()) + " steps in " + Seconds(result.seconds) + " s";
  if (result.cycleSeconds) {
    end += ", " + Seconds(*result.cycleSeconds) + " s from step " + NumberText(result.cycleStep) +
           " to step " + NumberText(result.cycleStep) + " again";
  }
  context.program.err << end << '\n';
  return !found;
}

}  // namespace

Commands RehearseCommands() {
  return {{{"rehearse",
            "run the programme on a simulated axis, much faster than it is, and print what each "
            "step does and what goes wrong",
            {FileArgument()},
            {"inputs", "out", "passes", "ignore", "json", "motor-size", "read-only", "yes"}},
           RehearseProject}};
}

}  // namespace velmoor
