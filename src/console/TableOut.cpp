#include "console/TableOut.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <span>
#include <utility>

#include "console/CommandContext.h"
#include "platform/World.h"

namespace velmoor {
namespace {

using Kind = JsonField::Kind;

// Part of what users rely on: docs/guide/command-line.md tells it.
Kind KindOf(const std::string& name) {
  static constexpr std::array<std::string_view, 10> kNumbers{
      "step", "speed", "rdst", "rspd", "loop", "zone", "lower", "upper", "jog", "baud"};
  if (name == "dirty") return Kind::flag;
  return std::ranges::find(kNumbers, name) == kNumbers.end() ? Kind::text : Kind::number;
}

std::vector<TableOut::Column> ColumnsOf(const CsvRow& names) {
  std::vector<TableOut::Column> columns;
  for (const std::string& name : names) columns.push_back({name, KindOf(name)});
  return columns;
}

}  // namespace

TableOut::TableOut(const Context& context, const CsvRow& names)
    : TableOut(context, ColumnsOf(names)) {}

TableOut::TableOut(const Context& context, std::vector<Column> columns)
    : out_(context.program.out), json_(context.line.Has("json")), columns_(std::move(columns)) {
  CsvRow names;
  for (const Column& column : columns_) names.push_back(column.name);
  out_ << (json_ ? "[" : CsvLine(names)) << std::flush;
}

TableOut::~TableOut() {
  if (json_) out_ << (any_ ? "\n]\n" : "]\n") << std::flush;
}

void TableOut::Row(const CsvRow& cells) {
  if (!json_) {
    out_ << CsvLine(cells) << std::flush;
    return;
  }
  std::vector<JsonField> fields;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    fields.push_back({columns_[i].name, cells.at(i), columns_[i].kind});
  }
  out_ << (any_ ? ",\n" : "\n") << world().jsonTexts->Object(fields) << std::flush;
  any_ = true;
}

void PrintTable(const Context& context, const std::vector<CsvRow>& rows) {
  TableOut table(context, rows.front());
  for (const CsvRow& row : std::span(rows).subspan(1)) table.Row(row);
}

}  // namespace velmoor
