#include "fault_campaign/Truth.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <span>
#include <string_view>

#include "link/CommandWords.h"
#include "platform/Database.h"
#include "platform/Numbers.h"
#include "project/data/Schema.h"
#include "project/data/UnitConversion.h"
#include "tools/ParameterToolBase.h"

namespace velmoor::campaign {
namespace {

using schema::Jog;
using schema::Parameters;
using schema::Position;
using schema::Zone;

struct Field {
  std::string_view word;
  std::string_view value;
  std::string_view shown;
};
struct Table {
  std::string_view name;
  std::string_view order;
  std::string_view row;  // its number on the wire
  std::span<const Field> fields;
};

constexpr std::array<Field, 8> kPosition{{
    {"POST", Position::kControllerPosition, Position::kPosition},
    {"SPDT", Position::kControllerSpeed, Position::kSpeed},
    {"RDSTT", Position::kControllerRDST, Position::kRDST},
    {"RSPDT", Position::kControllerRSPD, Position::kRSPD},
    {"POUTT", Position::kPOut, Position::kPOut},
    {"EVENTT", Position::kEvent, Position::kEvent},
    {"LOOPT", Position::kLoop, Position::kLoop},
    {"NEXTT", Position::kControllerNext, Position::kNext},
}};
constexpr std::array<Field, 2> kZone{{
    {"ZONENT", Zone::kControllerLowerLimit, Zone::kLowerLimit},
    {"ZONEPT", Zone::kControllerUpperLimit, Zone::kUpperLimit},
}};
constexpr std::array<Field, 1> kJog{{{"JSPDT", Jog::kControllerValue, Jog::kSpeed}}};
constexpr std::array<Table, 3> kTables{{
    {Position::kTable, Position::kId, Position::kIndex, kPosition},
    {Zone::kTable, Zone::kZone, Zone::kZone, kZone},
    {Jog::kTable, Jog::kJog, Jog::kJog, kJog},
}};

void ReadTable(Database& database, const Table& table, std::vector<FileRow>& rows) {
  const auto records = database.OpenTable(table.name, table.order);
  for (records->MoveFirst(); !records->AtEnd(); records->MoveNext()) {
    FileRow& row = rows.emplace_back();
    row.table = table.name;
    row.mark = records->Text(Position::kDirty);
    for (const Field& field : table.fields) {
      row.questions.push_back(std::string(field.word) + records->Text(table.row));
      row.values.push_back(records->Text(field.value));
      row.shown.push_back(records->Text(field.shown));
    }
  }
}

bool IsDigit(char c) {
  return std::isxdigit(static_cast<unsigned char>(c)) != 0;
}

// Without the zeros that pad a number, so that what is written compares with what is told.
std::string Plain(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool begins = plain.empty() || !IsDigit(plain.back());
    const bool pads = text[i] == '0' && begins && i + 1 < text.size() && IsDigit(text[i + 1]);
    if (!pads) plain += text[i];
  }
  return plain;
}

std::string Ask(Wiring& wiring, const std::string& question) {
  std::string answer = wiring.Type("send " + question);
  answer = answer.substr(0, answer.find('\n'));
  const std::size_t at = answer.find('=');
  return at == std::string::npos ? answer : answer.substr(at + 1);
}

void CheckCounts(std::vector<std::string>& wrong, const FileRow& row, std::size_t field,
                 UnitKind kind) {
  const std::string& shown = row.shown[field];
  if (shown.empty() || shown == "-") {
    if (row.values[field] != shown) wrong.push_back(row.questions[field] + ": two forms disagree");
    return;
  }
  if (UnitsToCounts(shown, FactorOf(OpenedProject(), kind)) != row.values[field]) {
    wrong.push_back(row.questions[field] + ": shows " + shown + " and sends " + row.values[field]);
  }
}

// "I+12.345" goes out as "I+12345"; words go out as they are.
std::string CountsOfMove(const std::string& shown) {
  const bool moves = shown.size() > 2 && (shown[1] == '+' || shown[1] == '-');
  if (!moves) return shown;
  return shown.substr(0, 2) +
         UnitsToCounts(shown.substr(2), FactorOf(OpenedProject(), UnitKind::distance));
}

void CheckStep(std::vector<std::string>& wrong, const FileRow& row) {
  const bool blank = row.shown[0].empty();
  for (const std::string& each : row.shown) {
    if (each.empty() != blank) wrong.push_back(row.Name() + ": half filled");
  }
  CheckCounts(wrong, row, 1, UnitKind::speed);
  CheckCounts(wrong, row, 2, UnitKind::distance);
  CheckCounts(wrong, row, 3, UnitKind::speed);
  if (blank) return;
  if (CountsOfMove(row.shown[0]) != row.values[0]) {
    wrong.push_back(row.Name() + ": shows " + row.shown[0] + " and sends " + row.values[0]);
  }
}

void CheckForms(std::vector<std::string>& wrong, const FileRow& row) {
  if (row.mark != "1" && row.mark != "0") wrong.push_back(row.Name() + ": mark '" + row.mark + "'");
  if (row.table == Position::kTable) {
    CheckStep(wrong, row);
  } else if (row.table == Zone::kTable) {
    if (row.shown[0].empty() != row.shown[1].empty()) wrong.push_back(row.Name() + ": one limit");
    CheckCounts(wrong, row, 0, UnitKind::distance);
    CheckCounts(wrong, row, 1, UnitKind::distance);
  } else if (row.table == Jog::kTable) {
    CheckCounts(wrong, row, 0, UnitKind::speed);
  } else if (row.values[0].empty()) {
    wrong.push_back(row.Name() + ": a value that is not sent");
  } else if (const auto kind = UnitKindOf("Pn" + row.Name().substr(3))) {
    CheckCounts(wrong, row, 0, *kind);
  }
}

void CompareMemory(std::vector<std::string>& wrong, const MotionTable& table,
                   const std::vector<FileRow>& rows, std::string_view name, int firstColumn) {
  int at = 0;
  for (const FileRow& row : rows) {
    if (row.table != name) continue;
    ++at;
    if ((table.DirtyCell(at) == "1") != row.IsMarked()) {
      wrong.push_back(row.Name() + ": its mark in memory differs");
    }
    for (std::size_t i = 0; i < row.shown.size(); ++i) {
      if (table.Text(at, firstColumn + static_cast<int>(i)) != row.shown[i]) {
        wrong.push_back(row.questions[i] + ": memory shows " +
                        table.Text(at, firstColumn + static_cast<int>(i)) + ", the file " +
                        row.shown[i]);
      }
    }
  }
}

// Whether Download New would send the row.
bool IsOffered(clsHX7Project& project, const FileRow& row) {
  if (row.table == Position::kTable) return project.Position().IsDirty();
  if (row.table == Zone::kTable) return project.Zone().IsDirty();
  if (row.table == Jog::kTable) return project.Jog().IsDirty();
  const std::string strPn = "Pn" + row.Name().substr(3);
  if (IsMechSystemPn(strPn)) return project.MechanicalSystem().IsDirty();
  return std::ranges::any_of(project.ParameterTools(), [&strPn](const ParameterToolBase* tool) {
    return tool->IsDirty() && tool->FindRow(strPn) > 0;
  });
}

void CheckFlags(std::vector<std::string>& wrong, clsHX7Project& project,
                const std::vector<FileRow>& rows) {
  for (const FileRow& row : rows) {
    if (row.IsMarked() && !IsOffered(project, row)) {
      wrong.push_back(row.Name() + ": marked, and its tool does not offer it");
    }
  }
}

}  // namespace

std::vector<FileRow> ReadRows(const std::string& workingFile) {
  std::vector<FileRow> rows;
  const auto database = OpenForReading(workingFile);
  for (const Table& table : kTables) ReadTable(*database, table, rows);
  const auto records = database->OpenTable(Parameters::kTable);
  for (records->MoveFirst(); !records->AtEnd(); records->MoveNext()) {
    if (records->Text(Parameters::kValue).empty()) continue;
    rows.push_back({std::string(Parameters::kTable),
                    {"PRM" + WireNumber(records->Text(Parameters::kPn))},
                    {records->Text(Parameters::kControllerValue)},
                    {records->Text(Parameters::kValue)},
                    records->Text(Parameters::kDirty)});
  }
  return rows;
}

std::vector<std::string> Untruths(const std::vector<FileRow>& rows, Wiring& wiring,
                                  const Exempt& exempt, Rows which) {
  std::vector<std::string> wrong;
  for (const FileRow& row : rows) {
    if (exempt.contains(row.Name()) || (which == Rows::unmarked && row.IsMarked())) continue;
    for (std::size_t i = 0; i < row.questions.size(); ++i) {
      const std::string held = Ask(wiring, row.questions[i]);
      if (Plain(held) == Plain(row.values[i])) continue;
      wrong.push_back(row.questions[i] + ": the file has '" + row.values[i] + "', the amplifier '" +
                      held + "'" + (row.IsMarked() ? " (marked)" : ""));
    }
  }
  return wrong;
}

std::vector<std::string> Inconsistencies(clsHX7Project& project, const std::vector<FileRow>& rows) {
  std::vector<std::string> wrong;
  for (const FileRow& row : rows) CheckForms(wrong, row);
  CompareMemory(wrong, project.Position(), rows, Position::kTable, clsHX7Position::position);
  CompareMemory(wrong, project.Zone(), rows, Zone::kTable, 0);
  CompareMemory(wrong, project.Jog(), rows, Jog::kTable, 0);
  for (const FileRow& row : rows) {
    if (row.table != Parameters::kTable) continue;
    const Parameter* const parameter = project.Parameters().Find("Pn" + row.Name().substr(3));
    if (parameter != nullptr && parameter->text != row.shown[0]) {
      wrong.push_back(row.Name() + ": memory shows " + parameter->text + ", the file " +
                      row.shown[0]);
    }
  }
  CheckFlags(wrong, project, rows);
  return wrong;
}

}  // namespace velmoor::campaign
