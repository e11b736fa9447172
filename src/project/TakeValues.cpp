#include "project/TakeValues.h"

#include <algorithm>
#include <map>
#include <optional>

#include "mechanics/MachineKeys.h"
#include "platform/KeyedText.h"
#include "platform/Numbers.h"
#include "project/ProjectText.h"
#include "project/TextLines.h"
#include "project/TextValues.h"
#include "project/clsHX7Project.h"
#include "tables/TableRows.h"

namespace velmoor {
namespace {

using namespace project_text;

std::string SectionHead(std::string_view name) {
  return "[" + std::string(name) + "]\n";
}

std::string MachineText(const MachineDescription& machine) {
  std::string text = SectionHead(kMachine);
  for (const MachineKey& key : MachineKeys()) {
    const std::string value = ValueOf(machine, key);
    const bool word = key.form == MachineKey::Form::choice || key.form == MachineKey::Form::word;
    text += Line(key.name, word ? QuotedText(value) : NumberOrQuoted(value), {});
  }
  return text;
}

// What values of the open project would be typed, as a text that changes nothing else.
class Typist {
 public:
  explicit Typist(clsHX7Project& project) : project_(project) {}

  void Type(const WantedValue& value) {
    MotionTable* const table = TableNamed(value.place.part);
    if (table == nullptr) {
      TypeParameter(value);
    } else {
      TypeCell(*table, value);
    }
  }
  [[nodiscard]] const std::vector<std::string>& Faults() const { return faults_; }
  [[nodiscard]] std::string Text() const {
    std::string text = parameters_.empty() ? "" : SectionHead(kParameters) + parameters_;
    for (const auto& [tool, rows] : rows_) {
      const MotionTable& table = *project_.TableOf(tool);
      text += SectionHead(InfoOf(tool).word);
      for (const auto& [row, texts] : rows) text += RowLine(table, ShapeOf(table), texts, true);
    }
    return text;
  }

 private:
  MotionTable* TableNamed(const std::string& part) {
    for (const Tool tool : {Tool::position, Tool::zone, Tool::jog}) {
      if (InfoOf(tool).item == part) return project_.TableOf(tool);
    }
    return nullptr;
  }

  void TypeParameter(const WantedValue& value) {
    const std::string& strPn = value.place.row;
    const clsHX7Editor& editor = project_.Editor();
    const int row = editor.FindRow(strPn);
    if (row == 0) {
      faults_.push_back(strPn + ": The project has no such parameter");
      return;
    }
    const Parameter& parameter = editor.ParameterOf(row);
    const std::string text = ShownText(parameter, value.controller, project_.PresentUnits());
    const TypedValue typed = JudgeTyped(project_, editor, row, parameter.text, text);
    const bool same =
        ComparedForm(strPn, typed.meant.controller) == ComparedForm(strPn, value.controller);
    if (typed.accepted && same) {
      parameters_ += Line(strPn, LiteralOf(parameter, text), {});
    } else {
      faults_.push_back(
          strPn + ": " +
          (typed.words.empty() ? value.controller + " cannot be typed" : typed.words));
    }
  }

  // The other cells of the row go along as they are: a row is told whole.
  void TypeCell(const MotionTable& table, const WantedValue& value) {
    const TableShape shape = ShapeOf(table);
    const std::int64_t row = ParseWhole(value.place.row).value_or(-1) - shape.firstNumber + 1;
    const auto columns = table.Layout().columns;
    const auto found = std::ranges::find_if(
        columns, [&](const TableColumn& column) { return SentField(column) == value.place.field; });
    const auto column = static_cast<std::size_t>(found - columns.begin());
    if (row < 1 || row > table.RowsInArray() || column >= shape.cells.size()) {
      faults_.push_back(value.place.part + " " + value.place.row + ": There is no such value");
      return;
    }
    const auto at = static_cast<int>(row);
    const auto [place, isNew] = rows_[table.Layout().tool].try_emplace(at, RowTexts{at, {}});
    RowTexts& texts = place->second;
    for (std::size_t i = 0; isNew && i < shape.cells.size(); ++i) {
      texts.cells.emplace_back(table.Stored(at).cells[i]);
    }
    texts.cells[column] = table.TextFor(column, value.controller, project_.PresentUnits());
  }

  clsHX7Project& project_;
  std::string parameters_;
  std::map<Tool, std::map<int, RowTexts>> rows_;
  std::vector<std::string> faults_;
};

// Without the line of a text that nobody has written.
std::vector<std::string> Put(clsHX7Project& project, const std::string& text) {
  static constexpr std::string_view kName = "values";
  std::vector<std::string> faults = ImportText(project, text, std::string(kName));
  for (std::string& fault : faults) {
    const std::size_t words = fault.find(": ");
    if (fault.starts_with(kName) && words != std::string::npos) fault.erase(0, words + 2);
  }
  return faults;
}

}  // namespace

std::vector<std::string> TakeValues(clsHX7Project& project, const std::vector<WantedValue>& values,
                                    const MachineDescription& machine) {
  const auto ofMachine = [](const WantedValue& value) {
    return value.place.part == InfoOf(Tool::mechanicalSystem).item;
  };
  if (std::ranges::any_of(values, ofMachine)) {
    std::vector<std::string> faults = Put(project, MachineText(machine));
    if (!faults.empty()) return faults;
  }
  Typist typist(project);
  for (const WantedValue& value : values) {
    if (!ofMachine(value)) typist.Type(value);
  }
  if (!typist.Faults().empty() || typist.Text().empty()) return typist.Faults();
  return Put(project, typist.Text());
}

MachineDescription MachineAt(const std::string& path) {
  return NewProject(path).Machine();
}

}  // namespace velmoor
