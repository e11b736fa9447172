#include "operations/LineActions.h"

#include <algorithm>
#include <array>

#include "link/BaudRates.h"
#include "link/DisplayError.h"
#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/World.h"
#include "project/ProjectText.h"

namespace velmoor {

std::size_t CountDifferences(const std::vector<PartComparison>& parts) {
  std::size_t count = 0;
  for (const PartComparison& part : parts) count += part.counts ? part.differences.size() : 0;
  return count;
}

std::optional<LineFile> SearchLine(LineHost& host, const LineSettings& settings,
                                   const std::string& port, const std::string& folder) {
  LineFile line{.port = port};
  for (const std::int32_t rate : kBaudRates) {
    LineSettings asked = settings;
    asked.bitsPerSecond = rate;
    const auto found = host.Hardware().connection.FindAxes(
        asked, [&host](int) { return !host.Session().StopProcedure(); });
    if (!found || host.Session().StopProcedure()) return std::nullopt;
    line.bitsPerSecond = rate;
    for (const std::string& axis : *found) {
      line.axes.push_back({axis, "axis " + axis, JoinPath(folder, "axis" + axis + ".spj")});
    }
    if (!line.axes.empty()) return line;
  }
  ShowExclamation("No axes found in system!");
  return std::nullopt;
}

// ---- looking

LineTable ReadLineInfo(LineRun& run) {
  using Read = ResultCode (clsHX7Helix7::*)(std::string&);
  static constexpr std::array<Read, 6> kReads{
      &clsHX7Helix7::GetServoModel,    &clsHX7Helix7::GetMotorModel,
      &clsHX7Helix7::GetEncoderType,   &clsHX7Helix7::GetServoVersion,
      &clsHX7Helix7::GetOptionVersion, &clsHX7Helix7::GetAlarm};
  return run.ForEach(true, {"amplifier", "motor", "encoder", "firmware", "option", "alarm"},
                     [&run](const LineAxis&) -> LineResult {
                       if (!run.Connect()) return {};
                       LineResult result{true, "present"};
                       for (const Read read : kReads) {
                         std::string text;
                         result.done = (run.Host().Session().Helix7()->*read)(text) == kSuccess &&
                                       result.done;
                         result.more.push_back(text);
                       }
                       if (!result.done) result.word = "not read";
                       return result;
                     });
}

LineTable CompareLine(LineRun& run) {
  return run.ForEach(true, {"differences"}, [&run](const LineAxis& axis) -> LineResult {
    if (!run.Open(axis)) return {};
    const auto parts = run.Host().Hardware().compare.Run();
    if (!parts) return {};
    return {true, Differs(*parts) ? "different" : "equal", {NumberText(CountDifferences(*parts))}};
  });
}

// ---- transfers

LineTable DownloadLine(LineRun& run, const LineDownload& choice) {
  return run.ForEach(true, {}, [&](const LineAxis& axis) -> LineResult {
    if (!run.Open(axis)) return {};
    Transfers& transfers = run.Host().Hardware().transfers;
    transfers.SetVerify(choice.verify);
    const bool done = choice.onlyNew ? transfers.DownloadNew() : transfers.DownloadAll();
    return {done, done ? "downloaded" : ""};
  });
}

LineTable UploadLine(LineRun& run) {
  return run.ForEach(true, {}, [&run](const LineAxis& axis) -> LineResult {
    if (!run.Open(axis) || !run.Host().Save()) return {};
    const int failures = run.Host().Boxes().Failures();
    const bool read = run.Host().Hardware().uploads.UploadAll();
    if (!read || run.Host().Boxes().Failures() > failures) return {};
    return {run.Host().Save(), "uploaded"};
  });
}

LineTable ResetLineAlarms(LineRun& run) {
  return run.ForEach(true, {"alarm"}, [&run](const LineAxis&) -> LineResult {
    if (!run.Connect()) return {};
    clsHX7Helix7& helix = *run.Host().Session().Helix7();
    const ResultCode result =
        helix.ResetDefaults(static_cast<std::int32_t>(SimpleCommand::resetAlarm));
    if (result != kSuccess) {
      DisplayError(result, "The alarm could not be reset!");
      return {};
    }
    // A cause that is still there raises it again.
    std::string alarm;
    const bool read = helix.GetAlarm(alarm) == kSuccess;
    return {read, read ? "reset" : "not read", {alarm}};
  });
}

// ---- projects

LineTable SetOnLine(LineRun& run, const std::function<bool(clsHX7Project& project)>& change) {
  return run.ForEach(false, {}, [&](const LineAxis& axis) -> LineResult {
    const bool done = run.Open(axis) && change(run.project()) && run.Host().Save();
    return {done, done ? "set" : ""};
  });
}

bool LineCopy::Reaches(const LineAxis& axis) const {
  return std::ranges::find(to, axis.address, &LineAxis::address) != to.end();
}

LineTable CountCopyOnLine(LineRun& run, const LineCopy& copy) {
  return run.ForEach(false, {"differences"}, [&](const LineAxis& axis) -> LineResult {
    if (!copy.Reaches(axis)) return {true, "-"};
    const std::size_t different =
        CountDifferences(CompareProjects(copy.from.project, axis.project));
    return {true, different == 0 ? "equal" : "would change", {NumberText(different)}};
  });
}

LineTable CopyOnLine(LineRun& run, const LineCopy& copy,
                     const std::function<void(const std::vector<std::string>& faults)>& tell) {
  if (!run.Open(copy.from)) return {};
  const std::string text = ExportText(run.project(), TextScope::changed);
  return run.ForEach(false, {"differences"}, [&](const LineAxis& axis) -> LineResult {
    if (!copy.Reaches(axis)) return {true, "-"};
    const std::size_t different =
        CountDifferences(CompareProjects(copy.from.project, axis.project));
    if (!run.Open(axis)) return {};
    const std::vector<std::string> faults =
        ImportText(run.project(), text, "axis " + copy.from.address);
    tell(faults);
    const bool done = faults.empty() && run.Host().Save();
    return {done, done ? "copied" : "", {NumberText(different)}};
  });
}

LineTable ReportLine(
    LineRun& run, const std::string& folder,
    const std::function<bool(clsHX7Project& project, const std::string& path)>& write) {
  world().files->MakeDirectories(folder);
  return run.ForEach(false, {"file"}, [&](const LineAxis& axis) -> LineResult {
    const std::string path = JoinPath(folder, "axis" + axis.address + ".pdf");
    const bool done = run.Open(axis) && write(run.project(), path);
    return {done, done ? "written" : "", {path}};
  });
}

}  // namespace velmoor
