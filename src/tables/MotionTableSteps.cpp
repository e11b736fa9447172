// What a change of the machine or an upload makes of a table's rows.

#include "platform/Numbers.h"
#include "project/data/UnitConversion.h"
#include "tables/MotionTable.h"

namespace velmoor {

// ---- conversions

std::optional<MotionTable::NumberPlace> MotionTable::PlaceOf(CellKind kind,
                                                             const std::string& text) const {
  if (text.empty() || text == "-") return std::nullopt;
  if (kind == CellKind::distance) return NumberPlace{UnitKind::distance, 0};
  if (kind == CellKind::speed) return NumberPlace{UnitKind::speed, 0};
  if (kind != CellKind::position) return std::nullopt;
  const std::size_t at = NumberAt(kind, text);
  if (at == std::string::npos) return std::nullopt;
  return NumberPlace{UnitKind::distance, at};
}

std::string MotionTable::ToController(CellKind kind, const std::string& text, const Rows&,
                                      const Units& units) const {
  const auto place = PlaceOf(kind, text);
  if (!place) return text;
  return text.substr(0, place->at) +
         UnitsToCounts(text.substr(place->at), units.Factor(place->kind));
}

std::string MotionTable::FromController(CellKind kind, const std::string& text,
                                        const Units& units) const {
  const auto place = PlaceOf(kind, text);
  if (!place) return text;
  const auto number = ParseFloat(text.substr(place->at));
  if (!number) return text;
  return text.substr(0, place->at) + units.Shown(*number, place->kind);
}

std::string MotionTable::Reformatted(CellKind kind, const std::string& text, const Units& to,
                                     bool& limited) const {
  const auto place = PlaceOf(kind, text);
  if (!place) return text;
  const std::string number = FixedText(std::string_view(text).substr(place->at), to.resolution);
  const LimitedCounts counts = UnitsToLimitedCounts(number, to.Factor(place->kind), to.resolution);
  limited = limited || counts.clamped;
  return text.substr(0, place->at) + counts.text;
}

// ---- a change of the machine

void MotionTable::RescaleRow(StoredRow& row, const Units& to, const std::string& place,
                             Step& step) const {
  bool moved = false;
  for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
    const TableColumn& column = layout_.columns[i];
    const auto number = PlaceOf(column.kind, row.cells[i]);
    // What is none of the known forms stays as it was found.
    if (!number || !ParseFloat(row.cells[i].substr(number->at))) continue;
    bool limited = false;
    std::string text = Reformatted(column.kind, row.cells[i], to, limited);
    std::string counts = ToController(column.kind, text, {}, to);
    if (text == row.cells[i] && counts == row.controller[i]) continue;
    const auto value = ParseFloat(row.cells[i].substr(number->at));
    const auto taken = ParseFloat(counts.substr(number->at));
    const std::string error =
        value && taken && !limited ? FixedText(*taken - *value * to.Factor(number->kind), 3) : "";
    step.values.push_back({place + ", " + std::string(column.field), row.cells[i], text,
                           row.controller[i], counts, error});
    step.limited = step.limited || limited;
    moved = moved || counts != row.controller[i];
    row.cells[i] = std::move(text);
    row.controller[i] = std::move(counts);
    step.changed = true;
  }
  row.marked = row.marked || moved;
}

MotionTable::Step MotionTable::Rescaled(const Units& from, const Units& to, const std::string& name,
                                        int firstNumber) const {
  Step step;
  step.rows = stored_;
  if (from.SameScale(to)) return step;
  int number = firstNumber;
  for (StoredRow& row : step.rows) {
    RescaleRow(row, to, name + " " + NumberText(number++), step);
  }
  return step;
}

MotionTable::Step MotionTable::Emptied() const {
  Step step;
  step.rows = stored_;
  for (StoredRow& row : step.rows) {
    for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
      if (!IsWritten(layout_.columns[i]) || row.cells[i].empty()) continue;
      row.cells[i].clear();
      row.controller[i].clear();
      row.marked = step.emptied = step.changed = true;
    }
  }
  return step;
}

void MotionTable::TypeCell(StoredRow& row, std::size_t i, const std::string& text,
                           const Units& units, bool found) const {
  const TableColumn& column = layout_.columns[i];
  if (found && column.kind != CellKind::label) {
    row.controller[i] = text;
    row.cells[i] = ShownCell(column.kind, text, cells_, units);
    return;
  }
  // A label whose step has moved means another number.
  if (text != row.cells[i] || column.kind == CellKind::next) {
    const bool converted = !column.controllerField.empty();
    row.controller[i] = converted ? ToController(column.kind, text, cells_, units) : text;
  }
  row.cells[i] = text;
}

MotionTable::Step MotionTable::Typed(const Step& base, const Units& units,
                                     const std::set<CellPlace>& found) const {
  Step step = base;
  for (int row = 1; row <= layout_.rows; ++row) {
    StoredRow& typed = step.rows[Index(row)];
    const StoredRow& stored = stored_[Index(row)];
    typed.marked = stored.marked;
    for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
      const TableColumn& column = layout_.columns[i];
      if (!IsWritten(column)) continue;
      TypeCell(typed, i, cells_[Index(row)][i], units, found.contains({row, i}));
      const bool moved =
          column.kind != CellKind::label && typed.controller[i] != stored.controller[i];
      typed.marked = typed.marked || moved;
      step.changed = step.changed || moved || typed.cells[i] != stored.cells[i];
    }
  }
  return step;
}

void MotionTable::TakeTyped(const Step& step) {
  TakeStored(step.rows, Source::typed);
  ShowInWindow();
  Applied.Raise();
}

void MotionTable::Write(Database& database, const Step& step) const {
  if (step.changed) WriteRows(database, step.rows);
}

void MotionTable::TakeUpload(const Step& step, const Units& units) {
  for (std::size_t i = 0; i < step.rows.size(); ++i) {
    if (!step.rows[i].marked) copies_[i] = {true, step.rows[i].controller};
  }
  DropUpload();
  (void)TakeStep(step, units, Source::amplifier);
}

bool MotionTable::Take(const Step& step, const Units& to) {
  return TakeStep(step, to, Source::machine);
}

bool MotionTable::TakeStep(const Step& step, const Units& to, Source source) {
  const Edits edits = TakeEdits();
  const std::vector<StoredRow> before = stored_;
  TakeStored(step.rows, source);
  bool limited = false;
  for (std::size_t row = 0; row < before.size() && !step.emptied; ++row) {
    if (edits.cells[row] == before[row].cells) continue;
    for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
      cells_[row][i] = Reformatted(layout_.columns[i].kind, edits.cells[row][i], to, limited);
    }
    marks_[row] = true;
  }
  ShowInWindow();
  return limited;
}

// ---- an upload

MotionTable::Step MotionTable::UploadStep(const Units& units, bool marked) const {
  Step step;
  step.rows = stored_;
  step.changed = true;
  for (std::size_t i = 0; i < uploaded_.size(); ++i) {
    StoredRow& row = step.rows[i];
    row.marked = marked;
    bool blank = true;
    for (std::size_t column = 0; column < layout_.columns.size(); ++column) {
      const TableColumn& told = layout_.columns[column];
      if (!IsWritten(told) || told.kind == CellKind::label) continue;
      const std::string& controller = uploaded_[i][column];
      row.controller[column] = controller;
      row.cells[column] = FromController(told.kind, controller, units);
      blank = blank && controller.empty();
    }
    for (std::size_t column = 0; column < layout_.columns.size(); ++column) {
      if (layout_.columns[column].kind != CellKind::label) continue;
      row.cells[column] = blank ? std::string() : UploadedLabel(static_cast<int>(i) + 1);
      row.controller[column] = row.cells[column];
    }
  }
  return step;
}

}  // namespace velmoor
