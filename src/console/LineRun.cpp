#include "console/LineRun.h"

#include <algorithm>
#include <ostream>

#include "console/ConsoleBoxes.h"
#include "console/TableOut.h"
#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/VisibleText.h"
#include "platform/World.h"

namespace velmoor {

std::vector<LineAxis> AxesNamed(const LineFile& line, const std::string& list) {
  std::vector<LineAxis> axes;
  for (const std::string& item : SplitAtCommas(list)) {
    const std::string address = UpperCase(Trim(item));
    const auto axis = std::ranges::find(line.axes, address, &LineAxis::address);
    if (axis == line.axes.end()) throw UsageError("The line has no axis '" + address + "'");
    if (std::ranges::find(axes, address, &LineAxis::address) == axes.end()) axes.push_back(*axis);
  }
  return axes;
}

LineRun::LineRun(const Context& context, const std::string& path)
    : context_(context), line_(ReadLineFile(world().files->Absolute(path))), work_(context) {
  const auto chosen = context.line.Value("axes");
  axes_ = chosen ? AxesNamed(line_, *chosen) : line_.axes;
  context.program.setDevice(context.program.port, line_.port);
  work_.session().SetBaudRate(line_.bitsPerSecond);
}

bool LineRun::Look() {
  if (!work_.Started()) return false;
  const auto found = work_.session().Hardware().connection.FindAxes(
      {.com = work_.session().COM(), .bitsPerSecond = line_.bitsPerSecond},
      [this](int) { return !work_.session().StopProcedure(); });
  if (!found) return false;
  present_ = std::set<std::string>(found->begin(), found->end());
  return true;
}

bool LineRun::Connect() {
  return work_.Connect();
}

bool LineRun::Open(const LineAxis& axis) {
  if (axis.project.empty()) {
    ShowExclamation("The line file names no project of axis " + axis.address + ".");
    return false;
  }
  return work_.Open(axis.project);
}

void LineRun::TurnTo(const LineAxis& axis) {
  work_.session().SetAxis(axis.address);
  work_.session().SetBaudRate(line_.bitsPerSecond);
  work_.session().Helix7()->SetAxisNumber(Narrow<std::int16_t>(ParseHex(axis.address).value_or(0)));
  work_.session().Hardware().connection.StayOn(
      {.com = work_.session().COM(), .bitsPerSecond = line_.bitsPerSecond, .axis = axis.address});
}

LineRun::Result LineRun::RunOne(bool onLine, const LineAxis& axis, const AxisWork& work) {
  if (work_.session().StopProcedure()) return {false, "stopped"};
  if (onLine && !present_.contains(axis.address)) return {false, "absent"};
  context_.program.err << "Axis " << axis.address << " " << VisibleText(axis.name) << '\n';
  TurnTo(axis);
  const int failures = context_.program.boxes.Failures();
  Result result;
  try {
    result = work(axis);
  } catch (const FileError& error) {
    ShowExclamation(error.what());
  }
  // The next axis has the port.
  if (onLine) work_.session().Hardware().connection.Leave();
  const bool failed = !result.done || context_.program.boxes.Failures() > failures;
  if (failed && result.word.empty()) result.word = "failed";
  result.done = !failed;
  return result;
}

bool LineRun::ForEach(bool onLine, const CsvRow& more, const AxisWork& work) {
  if (!work_.Started() || (onLine && !Look())) return false;
  std::vector<CsvRow> rows{{"axis", "name", "result"}};
  rows.front().insert(rows.front().end(), more.begin(), more.end());
  bool all = true;
  for (const LineAxis& axis : axes_) {
    Result result = RunOne(onLine, axis, work);
    all = all && result.done;
    result.more.resize(more.size());
    CsvRow row{axis.address, axis.name, result.word};
    row.insert(row.end(), result.more.begin(), result.more.end());
    rows.push_back(std::move(row));
  }
  PrintTable(context_, rows);
  return all;
}

}  // namespace velmoor
