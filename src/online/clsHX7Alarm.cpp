#include "online/clsHX7Alarm.h"

#include <algorithm>
#include <array>
#include <optional>
#include <unordered_map>

#include "platform/Numbers.h"
#include "project/data/Schema.h"

namespace velmoor {
namespace {

using schema::AlarmDisplay;
using schema::AlarmName;

// The alarms that have a device error code of their own: A.9F, A.E0, A.E2, A.EF.
constexpr std::array<std::uint32_t, 4> kAlarmsWithCode = {159, 224, 226, 239};

}  // namespace

void clsHX7Alarm::ReadFromDB() {
  std::vector<Row> list;
  std::unordered_map<std::string, std::size_t> firstOfKey;
  const auto database = OpenForReading(strDatabasePath_);
  const auto names = database->OpenTable(AlarmName::kTable);
  for (; !names->AtEnd(); names->MoveNext()) {
    const std::string id = names->Text(AlarmName::kId);
    firstOfKey.try_emplace(id, list.size());
    list.push_back({.name = names->Text(AlarmName::kName), .key = id, .code = {}, .display = {}});
  }
  const auto displays = database->OpenTable(AlarmDisplay::kTable);
  for (; !displays->AtEnd(); displays->MoveNext()) {
    const auto found = firstOfKey.find(displays->Text(AlarmDisplay::kId));
    if (found == firstOfKey.end()) continue;
    // A key that comes twice keeps the later record.
    list[found->second].display = displays->Text(AlarmDisplay::kDisplay);
    list[found->second].code = displays->Text(AlarmDisplay::kCode);
  }
  if (language_ != catalogue_source::kEnglish) Translate(*database, language_, list);
  arAlarmList_ = std::move(list);
}

void clsHX7Alarm::ReadFromCatalogue(const std::string& path) {
  using catalogue_source::Alarms;
  std::vector<Row> list;
  const auto database = OpenForReading(path);
  for (const auto alarms = database->OpenTable(Alarms::kTable); !alarms->AtEnd();
       alarms->MoveNext()) {
    list.push_back({.name = {},
                    .key = alarms->Text(Alarms::kKey),
                    .code = alarms->Text(Alarms::kCode),
                    .display = alarms->Text(Alarms::kDisplay)});
  }
  Translate(*database, catalogue_source::kEnglish, list);
  arAlarmList_ = std::move(list);
}

void clsHX7Alarm::Translate(Database& database, std::int32_t language, std::vector<Row>& list) {
  using catalogue_source::Texts;
  const std::string wanted = NumberText(language);
  for (const auto texts = database.OpenTable(Texts::kTable); !texts->AtEnd(); texts->MoveNext()) {
    if (texts->Text(Texts::kLanguage) != wanted || texts->Text(Texts::kKind) != Texts::kAlarmName) {
      continue;
    }
    const std::string key = texts->Text(Texts::kKey);
    for (Row& row : list) {
      if (row.key == key) row.name = texts->Text(Texts::kText);
    }
  }
}

const clsHX7Alarm::Row* clsHX7Alarm::FindRow(std::string Row::*field, std::string_view text) const {
  const auto found = std::find_if(arAlarmList_.begin(), arAlarmList_.end(),
                                  [&](const Row& row) { return row.*field == text; });
  return found == arAlarmList_.end() ? nullptr : &*found;
}

std::string clsHX7Alarm::GetAlarmName(const std::string& strDisplay) const {
  const Row* const row = FindRow(&Row::display, strDisplay);
  return row == nullptr ? std::string() : row->name;
}

std::string clsHX7Alarm::GetAlarmID(const std::string& strDisplay) const {
  const Row* const row = FindRow(&Row::display, strDisplay);
  return row == nullptr ? std::string() : row->key;
}

std::string clsHX7Alarm::GetErrorPanelDisplay(const std::string& strCode) const {
  const Row* const row = FindRow(&Row::code, strCode);
  return row == nullptr ? std::string() : row->display;
}

std::string clsHX7Alarm::GetErrorName(const std::string& strDisplay) const {
  const std::optional<std::uint32_t> wanted = ParseHex(strDisplay);
  if (!wanted) return {};
  const auto found = std::find_if(arAlarmList_.begin(), arAlarmList_.end(), [&](const Row& row) {
    return ParseWhole(row.code) == std::optional<std::int64_t>(*wanted);
  });
  return found == arAlarmList_.end() ? std::string() : found->name;
}

std::string clsHX7Alarm::GetAlarmCode(const std::string& strDisplay) const {
  if (!strDisplay.starts_with('A')) return strDisplay;
  std::string shown = Left(strDisplay, 4);
  // A display that ends in "x" stands for a group of alarms.
  if (shown.ends_with('x') || shown.ends_with('X')) return shown;
  const std::optional<std::uint32_t> number = ParseHex(Right(shown, 2));
  if (!number || std::ranges::find(kAlarmsWithCode, *number) == kAlarmsWithCode.end()) {
    return shown;
  }
  const Row* const row = FindRow(&Row::display, shown);
  if (row == nullptr) return {};
  const auto code = ParseWhole(row->code);
  return code ? HexText(Narrow<std::uint32_t>(*code)) : std::string();
}

}  // namespace velmoor
