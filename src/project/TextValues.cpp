#include "project/TextValues.h"

#include <algorithm>

#include "platform/Files.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/World.h"
#include "project/data/Schema.h"
#include "project/data/UnitConversion.h"
#include "tools/ParameterRules.h"
#include "tools/clsHX7Editor.h"

namespace velmoor::project_text {

using schema::Parameters;

namespace {

// Without the line that says what becomes of a window's cell.
std::string FaultOf(const std::string& words) {
  return OneLine(words.substr(0, std::min(words.find("\rPrevious"), words.find("\rValue has"))));
}

}  // namespace

NewProject::NewProject() : NewProject(JoinPath(world().appDirectory, "Velmoor.spt")) {}

NewProject::NewProject(const std::string& path) {
  const auto file = OpenForReading(path);
  const auto rows = file->OpenTable(Parameters::kTable);
  for (rows->MoveFirst(); !rows->AtEnd(); rows->MoveNext()) {
    records_[rows->Text(Parameters::kPn)] = {rows->Text(Parameters::kControllerValue),
                                             rows->Text(Parameters::kValue)};
  }
}

MeantValue NewProject::ValueOf(const Parameter& parameter, const Units& units) const {
  const auto record = records_.find(parameter.Pn());
  if (record == records_.end()) return {};
  const auto& [controller, text] = record->second;
  if (parameter.form == ValueForm::units) {
    return ValueMeant(parameter, FixedText(std::string_view(text), units.resolution), units);
  }
  const std::string plain = PlainController(parameter, controller);
  return {true, false, plain, ShownText(parameter, plain, units)};
}

MachineDescription NewProject::Machine() const {
  return DescribeMachine(
      [this](const char* strPn) { return records_.at(std::string(strPn)).controller; });
}

bool BelongsToMachine(std::string_view strPn) {
  return IsMechSystemPn(strPn);
}

TypedValue JudgeTyped(const Project& project, const clsHX7Editor& editor, int row,
                      const std::string& old, const std::string& text) {
  ParameterRow described = editor.Describe(row);
  described.value = old;
  // The notch filter's switch has a window of its own, with the same rule.
  const bool typed = described.name == "Pn408";
  const std::string locked = typed ? std::string() : LockedReason(described.name);
  if (!locked.empty()) return {false, {}, locked};
  const CellCheck check = CheckParameter(project, ParameterWindow::editor, described, text);
  if (!check.accepted) return {false, {}, FaultOf(check.words)};
  TypedValue result{true, ValueMeant(editor.ParameterOf(row), check.text, UnitsOf(project)), {}};
  result.accepted = result.meant.valid && !result.meant.limited;
  return result;
}

}  // namespace velmoor::project_text
