#include "project/ProjectCompare.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "project/data/Parameter.h"
#include "project/data/Schema.h"
#include "session/Tools.h"
#include "tables/clsHX7Jog.h"
#include "tables/clsHX7Position.h"
#include "tables/clsHX7Zone.h"

namespace velmoor {
namespace {

using schema::Parameters;

struct Part {
  std::string_view name;
  std::string_view table;
  std::string_view key;
  std::string_view order;
  std::vector<std::string_view> fields;
};

std::vector<std::string_view> SentFields(const TableLayout& layout) {
  std::vector<std::string_view> fields;
  for (const TableColumn& column : layout.columns) {
    if (!SentField(column).empty()) fields.push_back(SentField(column));
  }
  return fields;
}

Part TablePart(Tool tool, const TableLayout& layout) {
  return {InfoOf(tool).item, layout.table, layout.order, layout.order, SentFields(layout)};
}

std::vector<Part> Parts() {
  return {TablePart(Tool::position, clsHX7Position::Columns()),
          TablePart(Tool::zone, clsHX7Zone::Columns()), TablePart(Tool::jog, clsHX7Jog::Columns())};
}

// Puts a value where it belongs.
void Note(PartComparison& part, ProjectDifference value, bool same, CompareScope scope) {
  value.place = static_cast<int>(part.differences.size() + part.equal.size());
  if (!same) {
    part.differences.push_back(std::move(value));
  } else if (scope == CompareScope::everything) {
    part.equal.push_back(std::move(value));
  }
}

PartComparison ComparePart(const Part& part, Database& first, Database& second,
                           CompareScope scope) {
  PartComparison result{std::string(part.name), 0, {}};
  const auto rows = first.OpenTable(part.table, part.order);
  const auto others = second.OpenTable(part.table, part.order);
  for (rows->MoveFirst(); !rows->AtEnd(); rows->MoveNext()) {
    ++result.rows;
    const std::string key = rows->Text(part.key);
    const bool found = others->FindFirst(part.key, key);
    for (const std::string_view field : part.fields) {
      const std::string mine = rows->Text(field);
      const std::string theirs = found ? others->Text(field) : std::string();
      Note(result, {result.part, key, std::string(field), mine, theirs}, found && mine == theirs,
           scope);
    }
  }
  return result;
}

// In the order of the first file, in the parts that a parameter may be told in.
std::vector<PartComparison> CompareParameters(Database& first, Database& second,
                                              CompareScope scope) {
  std::vector<PartComparison> parts{{std::string(InfoOf(Tool::mechanicalSystem).item), 0, {}},
                                    {"Parameters", 0, {}},
                                    {kNotSentPart, 0, {}, false}};
  const auto rows = first.OpenTable(Parameters::kTable);
  const auto others = second.OpenTable(Parameters::kTable);
  for (rows->MoveFirst(); !rows->AtEnd(); rows->MoveNext()) {
    const std::string strPn = rows->Text(Parameters::kPn);
    PartComparison& part = *std::ranges::find(parts, ComparedPart(strPn), &PartComparison::part);
    ++part.rows;
    const bool found = others->FindFirst(Parameters::kPn, strPn);
    const std::string mine = rows->Text(Parameters::kControllerValue);
    const std::string theirs = found ? others->Text(Parameters::kControllerValue) : std::string();
    Note(part, {part.part, strPn, std::string(Parameters::kControllerValue), mine, theirs},
         found && ComparedForm(strPn, mine) == ComparedForm(strPn, theirs), scope);
  }
  return parts;
}

}  // namespace

std::string ComparedPart(const std::string& strPn) {
  if (IsMechSystemPn(strPn)) return std::string(InfoOf(Tool::mechanicalSystem).item);
  return IsNeverSent(strPn) ? kNotSentPart : "Parameters";
}

bool Differs(const std::vector<PartComparison>& parts) {
  return std::ranges::any_of(
      parts, [](const PartComparison& part) { return part.counts && !part.differences.empty(); });
}

std::vector<PartComparison> CompareProjects(const std::string& firstPath,
                                            const std::string& secondPath, CompareScope scope) {
  const auto first = OpenForReading(firstPath);
  const auto second = OpenForReading(secondPath);
  std::vector<PartComparison> result;
  for (const Part& part : Parts()) result.push_back(ComparePart(part, *first, *second, scope));
  for (PartComparison& part : CompareParameters(*first, *second, scope)) {
    result.push_back(std::move(part));
  }
  return result;
}

}  // namespace velmoor
