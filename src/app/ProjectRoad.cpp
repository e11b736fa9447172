#include "app/ProjectRoad.h"

#include <algorithm>
#include <optional>
#include <span>

#include "platform/Numbers.h"

namespace velmoor {
namespace {

enum class StepKind : std::uint8_t { tool, connect, download, live, compare };

struct RoadStep {
  const char* title;
  const char* purpose;
  StepKind kind = StepKind::tool;
  Tool tool = Tool::mechanicalSystem;  // of the kind `tool`
  MainCommand command{};               // of the kind `live`
};

constexpr RoadStep kMachine{"Machine", "Drive, gears and units"};
constexpr RoadStep kLimits{"Limits", "Over travel: end switches and the ends of the travel",
                           StepKind::tool, Tool::overTravel};
constexpr RoadStep kInputs{"Inputs and outputs", "What the free inputs and outputs mean",
                           StepKind::tool, Tool::flexibleIO};
constexpr RoadStep kInterface{"Interface", "How commands reach the amplifier", StepKind::tool,
                              Tool::interface};
constexpr RoadStep kHoming{"Homing", "How the axis finds its reference", StepKind::tool,
                           Tool::homing};
constexpr RoadStep kIndex{"Index table", "The motion programme, step by step", StepKind::tool,
                          Tool::position};
constexpr RoadStep kZones{"Zone table", "Outputs by the place of the axis", StepKind::tool,
                          Tool::zone};
constexpr RoadStep kJog{"Jog table", "Speeds for moving by hand", StepKind::tool, Tool::jog};
constexpr RoadStep kParameters{"Parameters", "Every parameter of amplifier and option card",
                               StepKind::tool, Tool::editor};
constexpr RoadStep kTune{"Tune", "Rigidity and gains", StepKind::tool, Tool::tuning};
constexpr RoadStep kConnect{"Connect", "Looks for the amplifier on the serial line",
                            StepKind::connect};
constexpr RoadStep kDownload{"Download", "Sends the project to the amplifier", StepKind::download};
constexpr RoadStep kTestRun{
    "Test run", "Turns the motor by hand", StepKind::live, {}, MainCommand::mnuToolsServoJog};
constexpr RoadStep kHome{"Home position",
                         "Sets where the axis is zero",
                         StepKind::live,
                         {},
                         MainCommand::mnuToolsHomePosition};
constexpr RoadStep kInertia{"Inertia ratio",
                            "Measures the load against the motor",
                            StepKind::live,
                            {},
                            MainCommand::mnuToolsInertiaRatio};
constexpr RoadStep kWatch{"Watch",
                          "Position, speed, torque, inputs, outputs and alarms",
                          StepKind::live,
                          {},
                          MainCommand::mnuToolsMonitoring};
constexpr RoadStep kTerminal{"Terminal",
                             "Talks to the amplifier line by line",
                             StepKind::live,
                             {},
                             MainCommand::mnuToolsTerminal};
constexpr RoadStep kProduct{"Product information",
                            "Model, versions and motor",
                            StepKind::live,
                            {},
                            MainCommand::mnuToolsProductInformation};
constexpr RoadStep kCompare{"Compare", "What the amplifier holds against the project",
                            StepKind::compare};

constexpr RoadStep kTestRunRoad[] = {kMachine, kLimits,  kConnect, kDownload,
                                     kTestRun, kInertia, kHome};
constexpr RoadStep kIndexerRoad[] = {kMachine, kLimits, kInputs, kInterface, kHoming,
                                     kIndex,   kZones,  kJog,    kConnect,   kDownload,
                                     kTestRun, kTune,   kWatch};
constexpr RoadStep kTuningRoad[] = {kConnect, kInertia, kTune, kDownload, kTestRun, kWatch};
constexpr RoadStep kMonitoringRoad[] = {kConnect, kWatch, kCompare, kTerminal, kProduct};
constexpr RoadStep kEditorRoad[] = {kParameters, kConnect, kDownload, kCompare};

// By the number of the module.
constexpr std::span<const RoadStep> kRoads[] = {kTestRunRoad, kIndexerRoad, kTuningRoad,
                                                kMonitoringRoad, kEditorRoad};

int DifferencesOf(Tool tool, clsHX7Project& project, const std::vector<PartComparison>& parts) {
  std::ptrdiff_t count = 0;
  for (const PartComparison& part : parts) {
    if (!part.counts) continue;
    const bool own = part.part == InfoOf(tool).item;
    count += std::ranges::count_if(part.differences, [&](const ProjectDifference& difference) {
      return own || (difference.row.starts_with("Pn") && project.Shows(tool, difference.row));
    });
  }
  return static_cast<int>(count);
}

void DescribeTool(RoadRow& row, Tool tool, clsHX7Project& project, const RoadFacts& facts) {
  row.command = InfoOf(tool).open;
  row.action = "Open";
  const int differences =
      facts.compared == nullptr ? 0 : DifferencesOf(tool, project, *facts.compared);
  if (const int marked = project.MarkedOf(tool); marked > 0) {
    row.state = "To download: " + NumberText(marked);
    row.tone = Tone::busy;
  } else if (differences > 0) {
    row.state = "Differs from the amplifier: " + NumberText(differences);
    row.tone = Tone::alarm;
  } else if (const auto transfer = project.TransferOf(tool)) {
    row.state = (transfer->sent ? "Delivered " : "Read from the amplifier ") +
                transfer->moment.substr(0, transfer->moment.rfind(':'));
    row.tone = Tone::good;
  } else if (project.IsAsNew(tool)) {
    row.state = "Untouched";
    row.action = "Set Up";
    row.tone = Tone::faint;
  } else {
    row.state = "Edited";
  }
}

void DescribeDownload(RoadRow& row, clsHX7Project& project, const RoadFacts& facts) {
  const int pending = project.GetNumberOfNewDownloads();
  if (pending > 0) {
    row.state = "To download: " + NumberText(pending);
    row.tone = Tone::busy;
    row.action = "Download New";
    row.command = MainCommand::mnuToolsDownloadNew;
  } else if (facts.compared != nullptr && Differs(*facts.compared)) {
    row.state = "The amplifier holds something else";
    row.tone = Tone::alarm;
    row.action = "Download All";
    row.command = MainCommand::mnuToolsDownloadAll;
  } else if (project.TransferOf(Tool::editor)) {
    row.state = "Nothing to download";
    row.tone = Tone::good;
    row.action = "Compare";
    row.command = MainCommand::mnuToolsCompare;
  } else {
    row.state = "Never delivered as a whole";
    row.action = "Download All";
    row.command = MainCommand::mnuToolsDownloadAll;
  }
}

void DescribeComparison(RoadRow& row, const RoadFacts& facts) {
  row.action = "Compare";
  row.command = MainCommand::mnuToolsCompare;
  if (facts.compared == nullptr) {
    row.state = "Not compared yet";
    row.tone = Tone::faint;
  } else if (Differs(*facts.compared)) {
    std::size_t count = 0;
    for (const PartComparison& part : *facts.compared) {
      if (part.counts) count += part.differences.size();
    }
    row.state = "Values that differ: " + NumberText(count);
    row.tone = Tone::alarm;
  } else {
    row.state = "The amplifier holds the project";
    row.tone = Tone::good;
  }
}

void DescribeLive(RoadRow& row, MainCommand command, const RoadFacts& facts) {
  row.state = facts.online ? "Ready" : "Needs the amplifier";
  row.tone = facts.online ? Tone::normal : Tone::faint;
  row.action = facts.online ? "Open" : "Connect";
  row.command = facts.online ? command : MainCommand::mnuToolsOnline;
}

RoadRow Describe(const RoadStep& step, clsHX7Project& project, const RoadFacts& facts) {
  RoadRow row;
  row.title = step.title;
  row.purpose = step.purpose;
  switch (step.kind) {
    case StepKind::tool:
      DescribeTool(row, step.tool, project, facts);
      break;
    case StepKind::connect:
      row.state = facts.line;
      row.tone = facts.lineTone;
      row.action = facts.online ? "Disconnect" : "Connect";
      row.command = facts.online ? MainCommand::mnuToolsOffline : MainCommand::mnuToolsOnline;
      break;
    case StepKind::download:
      DescribeDownload(row, project, facts);
      break;
    case StepKind::live:
      DescribeLive(row, step.command, facts);
      break;
    case StepKind::compare:
      DescribeComparison(row, facts);
      break;
  }
  return row;
}

}  // namespace

std::vector<RoadRow> RoadOf(Module module, clsHX7Project& project, const RoadFacts& facts) {
  std::vector<RoadRow> rows;
  for (const RoadStep& step : kRoads[static_cast<std::size_t>(module)]) {
    rows.push_back(Describe(step, project, facts));
  }
  return rows;
}

}  // namespace velmoor
