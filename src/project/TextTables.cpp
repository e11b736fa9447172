// The tables of a project's text.

#include <algorithm>
#include <map>
#include <set>

#include "platform/Numbers.h"
#include "project/ProjectInUnits.h"
#include "project/TextImport.h"
#include "project/TextValues.h"
#include "project/clsHX7Project.h"
#include "tables/TableRows.h"

namespace velmoor::project_text {
namespace {

using Kind = KeyedNode::Kind;

// One table: its rows are put into its edits, judged there, and the edits put back.
template <typename Table>
class Judge {
 public:
  Judge(Project& project, Table& table, Judged& judged, Faults& faults)
      : project_(project),
        table_(table),
        shape_(ShapeOf(table)),
        name_(InfoOf(table.Layout().tool).word),
        judged_(judged),
        faults_(faults) {}

  // `step` is what the change of the machine makes of the table.
  void Run(const KeyedNode& text, MotionTable::Step& step) {
    const MotionTable::Edits edits = table_.TakeEdits();
    Lay(step.rows);
    const KeyedNode* const section = text.Find(name_);
    line_ = section != nullptr ? section->line : 1;
    const KeyedNode* const found = text.Find(kAsFound);
    if (found != nullptr && found->kind == Kind::table) {
      for (const RowTexts& row : RowsOf(found->Find(name_), false)) PutFound(row);
    }
    std::vector<RowTexts> typed = RowsOf(section, true);
    for (RowTexts& row : typed) LeaveFound(row);
    for (const CellFault& fault : PutRows(project_, table_, typed)) Tell(fault);
    if (faults_.None()) TakeStep(step);
    table_.PutBackEdits(edits);
  }

 private:
  // The cells of the step, or none where the text is to tell them all.
  void Lay(const std::vector<MotionTable::StoredRow>& rows) {
    ClearCells(table_);
    if (judged_.whole) return;
    for (std::size_t row = 0; row < rows.size(); ++row) {
      for (std::size_t i = 0; i < shape_.cells.size(); ++i) {
        table_.SetText(static_cast<int>(row) + 1, static_cast<int>(i), rows[row].cells[i]);
      }
    }
  }

  void PutFound(const RowTexts& row) {
    foundRows_.insert(row.row);
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
      if (row.cells[i]->empty()) continue;
      table_.SetText(row.row, static_cast<int>(i), *row.cells[i]);
      found_.insert({row.row, i});
    }
  }

  void LeaveFound(RowTexts& row) {
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
      if (found_.contains({row.row, i})) row.cells[i].reset();
    }
  }

  void TakeStep(MotionTable::Step& step) {
    try {
      step = table_.Typed(step, judged_.plan.after, found_);
    } catch (const NumberError& error) {
      faults_.Add(line_, error.what());
    }
  }

  // ---- reading

  std::vector<RowTexts> RowsOf(const KeyedNode* section, bool typed) {
    std::vector<RowTexts> rows;
    for (const KeyedEntry& entry : EntriesOf(section, name_, faults_)) {
      const int row = RowOf(entry);
      if (row == 0) continue;
      if (entry.value.kind != Kind::table) {
        faults_.Add(entry.value.line, Place(row) + " takes its cells in braces: { ... }");
        continue;
      }
      rows.push_back({row, CellsOf(row, entry.value, typed)});
    }
    return rows;
  }

  // 0, and told: there is no such row.
  int RowOf(const KeyedEntry& entry) {
    const auto number = ParseWhole(entry.key);
    const bool plain = number && NumberText(*number) == entry.key;
    const std::int64_t row = number.value_or(0) - shape_.firstNumber + 1;
    if (!plain || row < 1 || row > table_.RowsInArray()) {
      faults_.Add(entry.value.line,
                  "'" + entry.key + "' is no row of the " + std::string(name_) + " table");
      return 0;
    }
    lines_[static_cast<int>(row)] = entry.value.line;
    return static_cast<int>(row);
  }

  std::vector<std::optional<std::string>> CellsOf(int row, const KeyedNode& value, bool typed) {
    std::vector<std::optional<std::string>> cells(shape_.cells.size(), std::string());
    for (const KeyedEntry& entry : value.entries) {
      const auto column = std::ranges::find(shape_.cells, entry.key);
      if (column == shape_.cells.end()) {
        faults_.Add(entry.value.line, Place(row) + " has no cell '" + entry.key + "'");
        continue;
      }
      const auto i = static_cast<std::size_t>(column - shape_.cells.begin());
      const bool number = typed && IsNumberCell(table_.Layout().columns[i]);
      if (!Fits(entry.value, number)) {
        faults_.Add(entry.value.line, Place(row) + ": " + entry.key + " takes " +
                                          (number ? "a number" : "a text in quotes"));
        continue;
      }
      cells[i] = entry.value.text;
    }
    return cells;
  }

  static bool Fits(const KeyedNode& value, bool number) {
    const bool text = value.kind == Kind::text;
    if (!number) return text;
    return value.kind == Kind::whole || value.kind == Kind::number || (text && value.text == "-");
  }

  // ---- telling

  [[nodiscard]] std::string Place(int row) const {
    return std::string(shape_.numberColumn) + " " + NumberText(row - 1 + shape_.firstNumber);
  }

  // Nobody has typed what was found.
  void Tell(const CellFault& fault) {
    const auto column = static_cast<std::size_t>(std::max(fault.column, 0));
    if (fault.column < 0 ? foundRows_.contains(fault.row) : found_.contains({fault.row, column})) {
      return;
    }
    const auto line = lines_.find(fault.row);
    const std::string cell =
        fault.column < 0 ? std::string()
                         : ", " + std::string(shape_.cells[static_cast<std::size_t>(fault.column)]);
    faults_.Add(line != lines_.end() ? line->second : line_,
                Place(fault.row) + cell + ": " + fault.words);
  }

  Project& project_;
  Table& table_;
  TableShape shape_;
  std::string_view name_;
  Judged& judged_;
  Faults& faults_;
  int line_ = 1;              // of the section
  std::map<int, int> lines_;  // of the rows
  std::set<MotionTable::CellPlace> found_;
  std::set<int> foundRows_;
};

}  // namespace

void JudgeTables(clsHX7Project& project, const KeyedNode& text, Judged& judged, Faults& faults) {
  ProjectInUnits inUnits(project, judged.plan.after);
  Judge(inUnits, project.Position(), judged, faults).Run(text, judged.plan.position);
  Judge(inUnits, project.Zone(), judged, faults).Run(text, judged.plan.zone);
  Judge(inUnits, project.Jog(), judged, faults).Run(text, judged.plan.jog);
}
}  // namespace velmoor::project_text
