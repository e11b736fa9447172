// Which cells of a table are in doubt, and what settles them.

#include <algorithm>

#include "platform/Numbers.h"
#include "project/data/UnitConversion.h"
#include "session/Session.h"
#include "session/Tools.h"
#include "tables/MotionTable.h"

namespace velmoor {
namespace {

Doubt DoubtAt(const TableLayout& layout, int row, int column, Doubt::Kind kind) {
  const ToolInfo& info = InfoOf(layout.tool);
  Doubt doubt;
  doubt.kind = kind;
  doubt.part = layout.tool;
  doubt.row = row;
  doubt.column = column;
  doubt.place = std::string(info.place) + " " + NumberText(row - 1 + info.firstRow);
  doubt.field = layout.columns[static_cast<std::size_t>(column)].field;
  return doubt;
}

bool IsBefore(const Doubt& a, const Doubt& b) {
  return a.row != b.row ? a.row < b.row : a.column < b.column;
}

}  // namespace

// A text that does not mean what stands beside it, and would go out, gives way to one that does.
void MotionTable::ShowWhatIsSent() {
  const Units units = UnitsOf(OpenedProject());
  const Rows texts = StoredCells();
  for (int row = 1; row <= layout_.rows; ++row) {
    StoredRow& stored = stored_[Index(row)];
    for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
      const TableColumn& column = layout_.columns[i];
      if (column.controllerField.empty()) continue;
      std::string meant;
      try {
        meant = ToController(column.kind, stored.cells[i], texts, units);
      } catch (const NumberError&) {
        meant = "no number";
      }
      if (meant == stored.controller[i]) continue;
      const std::string text = std::move(stored.cells[i]);
      stored.cells[i] = ShownCell(column.kind, stored.controller[i], texts, units);
      // Rounded to the digits that are shown, it says the same.
      if (text != stored.cells[i]) JudgeText(row, static_cast<int>(i), text, meant);
    }
  }
}

void MotionTable::JudgeText(int row, int column, const std::string& text,
                            const std::string& meant) {
  const StoredRow& stored = stored_[Index(row)];
  const auto i = static_cast<std::size_t>(column);
  Doubt doubt = DoubtAt(layout_, row, column, Doubt::Kind::differs);
  doubt.shown = text;
  doubt.limits = LimitsInWords(column, stored.controller[i]);
  doubt.sent = stored.controller[i];
  doubt.sentShown = stored.cells[i];
  StoredRow as = stored;
  as.cells[i] = text;
  as.controller[i] = meant;
  doubt.shownMeans = text.empty() || IsAsTyped(row, column, as);
  doubts_.push_back(std::move(doubt));
}

bool MotionTable::IsAsTyped(int /*row*/, int column, const StoredRow& stored) const {
  const auto i = static_cast<std::size_t>(column);
  const auto place = PlaceOf(layout_.columns[i].kind, stored.controller[i]);
  if (!place) return true;
  const auto number = ParseWhole(std::string_view(stored.controller[i]).substr(place->at));
  return number && *number >= LeastAt(*place) && *number <= kMostCounts;
}

// A sign before it is no part of a place's number.
std::int64_t MotionTable::LeastAt(const NumberPlace& place) {
  return place.kind == UnitKind::speed || place.at > 0 ? 0 : -std::int64_t{kMostCounts};
}

std::string MotionTable::LimitsInWords(int column, const std::string& controller) const {
  const auto place = PlaceOf(layout_.columns[static_cast<std::size_t>(column)].kind, controller);
  if (!place) return {};
  const Units units = UnitsOf(OpenedProject());
  const auto shown = [&](std::int64_t counts) {
    return units.Shown(static_cast<double>(counts), place->kind);
  };
  return shown(LeastAt(*place)) + " to " + shown(kMostCounts) + " " + units.Word(place->kind);
}

void MotionTable::JudgeValue(int row, int column) {
  const StoredRow& stored = stored_[Index(row)];
  const auto i = static_cast<std::size_t>(column);
  if (stored.controller[i].empty() || IsAsTyped(row, column, stored)) return;
  const auto place = PlaceOf(layout_.columns[i].kind, stored.controller[i]);
  const bool counts =
      place && ParseWhole(std::string_view(stored.controller[i]).substr(place->at)).has_value();
  Doubt doubt = DoubtAt(layout_, row, column, counts ? Doubt::Kind::outside : Doubt::Kind::unknown);
  doubt.limits = LimitsInWords(column, stored.controller[i]);
  doubt.sent = stored.controller[i];
  doubt.sentShown = stored.cells[i];
  doubts_.push_back(std::move(doubt));
}

// What was answered for stays so for as long as the value does. A change of the machine answers for
// nothing, and what an amplifier holds takes the place of both that the file had.
void MotionTable::JudgeChanges(const std::vector<StoredRow>& before, Source source) {
  for (int row = 1; row <= layout_.rows; ++row) {
    const StoredRow& now = stored_[Index(row)];
    const std::vector<std::string>& then = before[Index(row)].controller;
    for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
      const CellKind kind = layout_.columns[i].kind;
      if (kind == CellKind::fixed || kind == CellKind::label) continue;
      const int column = static_cast<int>(i);
      const auto known = std::ranges::find_if(
          doubts_, [&](const Doubt& doubt) { return doubt.row == row && doubt.column == column; });
      const bool doubted = known != doubts_.end();
      if (source == Source::file && doubted) continue;
      const bool replaced = source == Source::amplifier && doubted;
      if (source != Source::file && !replaced && now.controller[i] == then[i]) continue;
      if (source == Source::machine && doubted && known->kind == Doubt::Kind::differs &&
          !now.controller[i].empty()) {
        known->sent = now.controller[i];
        known->sentShown = now.cells[i];
        continue;
      }
      if (doubted) doubts_.erase(known);
      JudgeValue(row, column);
    }
  }
  std::ranges::stable_sort(doubts_, IsBefore);
}

MotionTable::Rows MotionTable::StoredCells() const {
  Rows cells;
  for (const StoredRow& row : stored_) cells.push_back(row.cells);
  return cells;
}

void MotionTable::Settle(const Doubt& doubt, Keep keep) {
  const auto found = std::ranges::find_if(doubts_, [&](const Doubt& each) {
    return each.row == doubt.row && each.column == doubt.column;
  });
  if (found == doubts_.end()) return;
  const auto i = static_cast<std::size_t>(found->column);
  StoredRow row = stored_[Index(found->row)];
  if (keep == Keep::shown && found->shownMeans) {
    row.cells[i] = found->shown;
    row.controller[i] = ToController(layout_.columns[i].kind, found->shown, StoredCells(),
                                     UnitsOf(OpenedProject()));
    row.marked = true;
  }
  ForEachRecord(
      [&](int number, RowSet& record) {
        if (number == found->row) WriteRow(record, row);
      },
      true);
  const std::size_t at = Index(found->row);
  if (!IsTouched(found->row)) {
    cells_[at] = row.cells;
    marks_[at] = row.marked;
  }
  stored_[at] = std::move(row);
  doubts_.erase(found);
  ShowInWindow();
}

}  // namespace velmoor
