// The writing half of a project's text.

#include <optional>
#include <set>
#include <utility>

#include "mechanics/MachineKeys.h"
#include "platform/KeyedText.h"
#include "platform/Numbers.h"
#include "project/ProjectText.h"
#include "project/TextLines.h"
#include "project/TextValues.h"
#include "project/clsHX7Project.h"
#include "project/data/MachineUnits.h"
#include "tables/TableRows.h"
#include "tools/ParameterRules.h"

namespace velmoor {
namespace {

using namespace project_text;

constexpr const char* kHead =
    "# A Velmoor project as text. What is not named here is as in a new project.\n"
    "format = 1\nothers = \"default\"\n";

// One section of the text: its lines, which stand behind its name and a remark where there are any.
std::string Section(std::string_view name, const std::string& lines,
                    const std::string& remark = {}) {
  if (lines.empty()) return {};
  return "\n[" + std::string(name) + "]\n" + (remark.empty() ? "" : KeyedComment(remark) + "\n") +
         lines;
}

class Exporter {
 public:
  Exporter(clsHX7Project& project, TextScope scope)
      : project_(project), all_(scope == TextScope::everything) {}

  std::string Run() {
    WriteMachine();
    WriteParameters();
    std::string text = kHead + Section(kMachine, machine_) + Section(kParameters, parameters_);
    std::string found = Section(std::string(kAsFound) + "." + std::string(kParameters), found_,
                                "in the form of the amplifier: nothing of it can be typed");
    text += WriteTable(project_.Position(), found);
    text += WriteTable(project_.Zone(), found);
    text += WriteTable(project_.Jog(), found);
    return text + found;
  }

 private:
  void WriteMachine() {
    const MachineDescription machine = project_.MechanicalSystem().Description();
    const MachineDescription usual = new_.Machine();
    for (const MachineKey& key : MachineKeys()) {
      const std::string value = ValueOf(machine, key);
      if (!all_ && value == ValueOf(usual, key)) continue;
      const bool word = key.form == MachineKey::Form::choice || key.form == MachineKey::Form::word;
      machine_ +=
          Line(key.name, word ? QuotedText(value) : NumberOrQuoted(value), CommentOf(key, machine));
    }
    const std::string& watts = project_.MotorSize();
    if (!watts.empty()) machine_ += Line(kMotor, NumberOrQuoted(watts), "W");
  }

  static std::string CommentOf(const MachineKey& key, const MachineDescription& machine) {
    if (key.name == "measure") {
      return SystemMeasureDescription(machine.machine.system) + " (" + machine.distanceUnits + ")";
    }
    if (key.name == "encoder") return "lines a turn";
    return key.name == "resolution" ? "decimal places" : "";
  }

  void WriteParameters() {
    const clsHX7Editor& editor = project_.Editor();
    for (int row = 1; row <= editor.RowsInArray(); ++row) {
      const Parameter& parameter = editor.ParameterOf(row);
      if (BelongsToMachine(parameter.Pn()) || parameter.blank) continue;
      WriteParameter(editor, row, parameter);
    }
  }

  void WriteParameter(const clsHX7Editor& editor, int row, const Parameter& parameter) {
    const MeantValue usual = UsualOf(parameter);
    const bool same = parameter.controller == usual.controller &&
                      (parameter.form != ValueForm::units || parameter.text == usual.text);
    const bool gear = parameter.Pn() == "Pn202" || parameter.Pn() == "Pn203";
    if (same && (!all_ || gear)) return;
    const ParameterRow described = editor.Describe(row);
    const std::string unit = UnitsInWords(project_, described.unit);
    const std::string comment =
        DescriptionInUnits(project_, described.description, described.unit) +
        (unit == described.unit && !unit.empty() ? " (" + unit + ")" : "");
    const auto typed = [&](const std::string& text) {
      return TypedText(editor, row, parameter, usual.text, text);
    };
    auto text = typed(parameter.text);
    // Else the text that shows the value to its last digit.
    if (!text && !same) {
      text = typed(ShownText(parameter, parameter.controller, project_.PresentUnits()));
    }
    if (text) {
      parameters_ += Line(parameter.Pn(), LiteralOf(parameter, *text), comment);
    } else if (same) {
      // Nothing can be typed there, and nothing has to be.
      parameters_ += "# " + Line(parameter.Pn(), LiteralOf(parameter, parameter.text), comment);
    } else {
      found_ += Line(parameter.Pn(), QuotedText(parameter.controller), comment);
    }
  }

  // As the cell takes it; nothing where it does not, or means another value.
  [[nodiscard]] std::optional<std::string> TypedText(const clsHX7Editor& editor, int row,
                                                     const Parameter& parameter,
                                                     const std::string& old,
                                                     const std::string& text) const {
    const TypedValue typed = JudgeTyped(project_, editor, row, old, text);
    if (!typed.accepted || typed.meant.controller != parameter.controller) return std::nullopt;
    return typed.meant.text;
  }

  // The gear terms of a new project are those of its machine.
  [[nodiscard]] MeantValue UsualOf(const Parameter& parameter) const {
    MeantValue usual = new_.ValueOf(parameter, project_.PresentUnits());
    const bool gear = parameter.Pn() == "Pn202" || parameter.Pn() == "Pn203";
    if (gear && figures_.valid) {
      usual.controller =
          NumberText(parameter.Pn() == "Pn202" ? figures_.ratio.b : figures_.ratio.a);
    }
    return usual;
  }

  // Cells that could not be typed go to `found`, as the amplifier has them; a row without such a
  // cell that could not be typed as a whole stands there empty.
  template <typename Table>
  std::string WriteTable(Table& table, std::string& found) {
    const MotionTable::Edits edits = table.TakeEdits();
    table.DropEdits();
    const TableShape shape = ShapeOf(table);
    std::vector<RowTexts> rows;
    for (int row = 1; row <= table.RowsInArray(); ++row) {
      if (all_ || !table.IsBlank(row)) rows.push_back({row, TypedCells(table, shape, row)});
    }
    const Untyped untyped = UntypedOf(table, PutRows(project_, table, rows));
    std::string typedLines, foundLines;
    for (const RowTexts& given : rows) {
      RowTexts typed{given.row, TypedCells(table, shape, given.row)};
      RowTexts other{given.row, {}};
      for (std::size_t i = 0; i < typed.cells.size(); ++i) {
        std::string& cell = *typed.cells[i];
        const bool isTyped = !untyped.cells.contains({given.row, i});
        other.cells.emplace_back(isTyped ? std::string() : std::exchange(cell, std::string()));
      }
      typedLines += RowLine(table, shape, typed, true);
      if (untyped.rows.contains(given.row)) foundLines += RowLine(table, shape, other, false);
    }
    table.PutBackEdits(edits);
    const std::string name(InfoOf(table.Layout().tool).word);
    found += Section(std::string(kAsFound) + "." + name, foundLines);
    return Section(name, typedLines, Remark(table, shape));
  }

  struct Untyped {
    std::set<int> rows;
    std::set<MotionTable::CellPlace> cells;
  };

  // Leaves those cells in the table's edits as they are to be written. A text that means another
  // value than the one beside it, such as one of two equal labels, is as good as none.
  Untyped UntypedOf(MotionTable& table, const std::vector<CellFault>& faults) const {
    Untyped untyped;
    const auto take = [&](int row, std::size_t column) {
      untyped.rows.insert(row);
      untyped.cells.insert({row, column});
      table.SetText(row, static_cast<int>(column), FoundCell(table, row, column));
    };
    for (const CellFault& fault : faults) {
      untyped.rows.insert(fault.row);
      if (fault.column >= 0) take(fault.row, static_cast<std::size_t>(fault.column));
    }
    const Units& units = project_.PresentUnits();
    const MotionTable::Step typed =
        table.Typed(table.Rescaled(units, units, {}, 0), units, untyped.cells);
    for (int row = 1; row <= table.RowsInArray(); ++row) {
      const std::vector<std::string>& means =
          typed.rows[static_cast<std::size_t>(row) - 1].controller;
      for (std::size_t i = 0; i < means.size(); ++i) {
        const bool label = table.Layout().columns[i].kind == CellKind::label;
        if (!label && means[i] != table.Stored(row).controller[i]) take(row, i);
      }
    }
    return untyped;
  }

  [[nodiscard]] std::string Remark(const MotionTable& table, const TableShape& shape) const {
    const std::vector<std::string> headings = Headings(table.Layout(), project_);
    std::string remark;
    for (std::size_t i = 0; i < shape.cells.size(); ++i) {
      remark += (i == 0 ? "" : ", ") + headings[i];
    }
    return remark;
  }

  static std::vector<std::optional<std::string>> TypedCells(const MotionTable& table,
                                                            const TableShape& shape, int row) {
    std::vector<std::optional<std::string>> cells;
    for (std::size_t i = 0; i < shape.cells.size(); ++i) {
      cells.emplace_back(table.Text(row, static_cast<int>(i)));
    }
    return cells;
  }

  // Labels live in the project alone.
  static std::string FoundCell(const MotionTable& table, int row, std::size_t column) {
    const bool label = table.Layout().columns[column].kind == CellKind::label;
    const MotionTable::StoredRow& stored = table.Stored(row);
    return label ? stored.cells[column] : stored.controller[column];
  }

  clsHX7Project& project_;
  NewProject new_;
  MachineFigures figures_ = project_.MechanicalSystem().Edit().Figures();
  bool all_;
  std::string machine_, parameters_, found_;
};

}  // namespace

std::string ExportText(clsHX7Project& project, TextScope scope) {
  return Exporter(project, scope).Run();
}

}  // namespace velmoor
