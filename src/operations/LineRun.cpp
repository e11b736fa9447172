#include "operations/LineRun.h"

#include <utility>

#include "platform/Database.h"
#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"

namespace velmoor {

std::vector<CsvRow> RowsOf(const LineTable& table) {
  std::vector<CsvRow> rows{{"axis", "name", "result"}};
  rows.front().insert(rows.front().end(), table.more.begin(), table.more.end());
  for (const auto& [axis, result] : table.rows) {
    CsvRow row{axis.address, axis.name, result.word};
    row.insert(row.end(), result.more.begin(), result.more.end());
    rows.push_back(std::move(row));
  }
  return rows;
}

LineRun::LineRun(LineHost& host, LineFile line, std::vector<LineAxis> axes, std::int16_t com)
    : host_(host), line_(std::move(line)), axes_(std::move(axes)), com_(com) {
  host_.Session().SetCOM(com_);
  host_.Session().SetBaudRate(line_.bitsPerSecond);
}

LineSettings LineRun::SettingsOf(const std::string& axis) const {
  return {.com = com_, .bitsPerSecond = line_.bitsPerSecond, .axis = axis};
}

bool LineRun::Look() {
  const auto found = host_.Hardware().connection.FindAxes(
      SettingsOf("0"), [this](int) { return !host_.Session().StopProcedure(); });
  if (!found) return false;
  present_ = std::set<std::string>(found->begin(), found->end());
  return true;
}

bool LineRun::Connect() {
  return host_.Hardware().connection.GoOnlineFor("");
}

bool LineRun::Open(const LineAxis& axis) {
  if (axis.project.empty()) {
    ShowExclamation("The line file names no project of axis " + axis.address + ".");
    return false;
  }
  return host_.Open(axis.project);
}

void LineRun::TurnTo(const LineAxis& axis) {
  SessionState& session = host_.Session();
  session.SetAxis(axis.address);
  session.SetBaudRate(line_.bitsPerSecond);
  session.Helix7()->SetAxisNumber(Narrow<std::int16_t>(ParseHex(axis.address).value_or(0)));
  host_.Hardware().connection.StayOn(SettingsOf(axis.address));
}

LineResult LineRun::RunOne(bool onLine, std::size_t number, const AxisWork& work) {
  const LineAxis& axis = axes_[number];
  if (host_.Stopped()) return {false, "stopped"};
  if (onLine && !present_.contains(axis.address)) return {false, "absent"};
  host_.AxisBegins(axis, number, axes_.size());
  TurnTo(axis);
  host_.Boxes().TakeAsRemarks();
  LineResult result;
  try {
    result = work(axis);
  } catch (const FileError& error) {
    ShowExclamation(error.what());
  } catch (const DatabaseError& error) {
    ShowExclamation(error.what());
  }
  // The next axis has the port.
  if (onLine) host_.Hardware().connection.Leave();
  const bool failed = !result.done || host_.Boxes().Failures() > 0;
  if (failed && result.word.empty()) result.word = host_.Stopped() ? "stopped" : "failed";
  result.done = !failed;
  return result;
}

LineTable LineRun::ForEach(bool onLine, const CsvRow& more, const AxisWork& work) {
  LineTable table{.more = more};
  if (onLine && !Look()) return table;
  table.done = true;
  for (std::size_t number = 0; number < axes_.size(); ++number) {
    LineResult result = RunOne(onLine, number, work);
    table.done = table.done && result.done;
    result.more.resize(more.size());
    host_.AxisEnds(axes_[number], result);
    table.rows.push_back({axes_[number], std::move(result)});
  }
  return table;
}

}  // namespace velmoor
