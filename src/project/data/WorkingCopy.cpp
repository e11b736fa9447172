#include "project/data/WorkingCopy.h"

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/Bounds.h"
#include "platform/Numbers.h"
#include "platform/World.h"
#include "project/data/CatalogueSource.h"
#include "project/data/MotorLimits.h"
#include "project/data/Schema.h"

namespace velmoor {
namespace {

namespace source = catalogue_source;
using source::Texts;

constexpr std::string_view kParameterTable = "VKLME_RX900_UPara";
constexpr std::string_view kNibbleTable = "VKLME_RX900_Nibble";
constexpr std::string_view kListTable = "VKLME_RX900_DecData";

struct Table {
  std::string_view name;
  std::vector<ColumnDefinition> columns;
  std::vector<std::vector<std::string>> rows;
};

ColumnDefinition TextColumn(std::string_view name) {
  return {std::string(name), false};
}
ColumnDefinition KeyColumn(std::string_view name) {
  return {std::string(name), true};
}

// The texts of one language over the English ones.
class TextBook {
 public:
  TextBook(Database& database, std::int32_t language) {
    const std::string wanted = NumberText(language);
    const std::string english = NumberText(source::kEnglish);
    for (const auto rows = database.OpenTable(Texts::kTable); !rows->AtEnd(); rows->MoveNext()) {
      const std::string number = rows->Text(Texts::kLanguage);
      const bool translated = number == wanted;
      if (!translated && number != english) continue;
      const std::string key = Key(rows->Text(Texts::kKind), rows->Text(Texts::kKey));
      const std::string text = rows->Text(Texts::kText);
      if (text.size() > bounds::kCatalogueText) {
        throw DatabaseError(DatabaseError::Kind::foreign, "A text of the catalogue is too long.");
      }
      if (translated) {
        texts_.insert_or_assign(key, text);
      } else {
        texts_.try_emplace(key, text);
      }
    }
  }

  [[nodiscard]] std::string Get(std::string_view kind, const std::string& key) const {
    const auto found = texts_.find(Key(kind, key));
    return found == texts_.end() ? std::string() : found->second;
  }

 private:
  static std::string Key(std::string_view kind, const std::string& key) {
    return std::string(kind) + "/" + key;
  }

  std::unordered_map<std::string, std::string> texts_;
};

Table ParameterTable(Database& database, const TextBook& texts, std::int32_t motorSize) {
  using P = source::Parameters;
  using D = schema::Definition;
  Table table{kParameterTable,
              {TextColumn(D::kUserConstant), TextColumn(D::kParameterName), TextColumn(D::kMin),
               TextColumn(D::kMax), TextColumn(D::kInitialValue), TextColumn(D::kUnit),
               KeyColumn(D::kDecDataId), KeyColumn(D::kEditType), KeyColumn(D::kNibbleDataId),
               TextColumn(D::kFixedDigit), TextColumn(D::kCategoryName), TextColumn(D::kGroup),
               KeyColumn(D::kSize), TextColumn(D::kHelp)},
              {}};
  const MotorLimits motor = ReadMotorLimits(database, motorSize);
  for (const auto rows = database.OpenTable(P::kTable); !rows->AtEnd(); rows->MoveNext()) {
    const std::string pn = rows->Text(P::kPn);
    const ParameterLimits& limits = motor.at(pn);
    table.rows.push_back({pn, texts.Get(Texts::kParameterName, pn), limits.min, limits.max,
                          limits.initial, texts.Get(Texts::kUnit, pn), rows->Text(P::kList),
                          rows->Text(P::kEditType), rows->Text(P::kDigits), rows->Text(P::kFixed),
                          rows->Text(P::kCategory), rows->Text(P::kGroup), rows->Text(P::kSize),
                          texts.Get(Texts::kHelp, pn)});
  }
  return table;
}

Table NibbleTable(Database& database, const TextBook& texts) {
  using D = source::Digits;
  using N = schema::Nibble;
  Table table{kNibbleTable,
              {KeyColumn(N::kNibbleDataId), KeyColumn(N::kUseBit), TextColumn(N::kDigitName),
               TextColumn(N::kChoices)},
              {}};
  for (const auto rows = database.OpenTable(D::kTable); !rows->AtEnd(); rows->MoveNext()) {
    const std::string key = rows->Text(D::kKey);
    const std::string place = key + "." + rows->Text(D::kDigit);
    table.rows.push_back({key, rows->Text(D::kCount), texts.Get(Texts::kDigitName, place),
                          texts.Get(Texts::kChoices, place)});
  }
  return table;
}

Table ListTable(Database& database, const TextBook& texts) {
  using I = source::Items;
  using L = schema::ListEntry;
  Table table{
      kListTable, {KeyColumn(L::kDecId), KeyColumn(L::kDecDataId), TextColumn(L::kDecName)}, {}};
  for (const auto rows = database.OpenTable(I::kTable); !rows->AtEnd(); rows->MoveNext()) {
    const std::string key = rows->Text(I::kKey);
    table.rows.push_back({key, rows->Text(I::kList), texts.Get(Texts::kItem, key)});
  }
  return table;
}

std::array<Table, 2> AlarmTables(Database& database, const TextBook& texts) {
  using A = source::Alarms;
  Table names{schema::AlarmName::kTable,
              {TextColumn(schema::AlarmName::kName), KeyColumn(schema::AlarmName::kId)},
              {}};
  Table displays{schema::AlarmDisplay::kTable,
                 {KeyColumn(schema::AlarmDisplay::kId), TextColumn(schema::AlarmDisplay::kDisplay),
                  TextColumn(schema::AlarmDisplay::kCode)},
                 {}};
  for (const auto rows = database.OpenTable(A::kTable); !rows->AtEnd(); rows->MoveNext()) {
    const std::string key = rows->Text(A::kKey);
    names.rows.push_back({texts.Get(Texts::kAlarmName, key), key});
    displays.rows.push_back({key, rows->Text(A::kDisplay), rows->Text(A::kCode)});
  }
  return {std::move(names), std::move(displays)};
}

Table ManagerTable() {
  using T = schema::TableManager;
  return {T::kTable,
          {TextColumn(T::kParameters), TextColumn(T::kNibbles), TextColumn(T::kLists)},
          {{std::string(kParameterTable), std::string(kNibbleTable), std::string(kListTable)}}};
}

std::vector<Table> MakeTables(const std::string& path, std::int32_t language,
                              std::int32_t motorSize) {
  const auto database = OpenForReading(path);
  const TextBook texts(*database, language);
  std::vector<Table> tables;
  tables.push_back(ManagerTable());
  tables.push_back(ParameterTable(*database, texts, motorSize));
  tables.push_back(NibbleTable(*database, texts));
  tables.push_back(ListTable(*database, texts));
  for (Table& table : AlarmTables(*database, texts)) tables.push_back(std::move(table));
  return tables;
}

}  // namespace

bool IsCatalogue(Database& database) {
  constexpr std::array kNeeded = {source::Parameters::kTable, source::MotorLimits::kTable,
                                  source::Digits::kTable,     source::Items::kTable,
                                  source::Alarms::kTable,     source::Texts::kTable};
  const std::vector<TableDefinition> tables = database.Tables();
  return std::ranges::all_of(kNeeded, [&](std::string_view needed) {
    return std::ranges::find(tables, needed, &TableDefinition::name) != tables.end();
  });
}

void FillWorkingCopy(const std::string& path, std::int32_t language, std::int32_t motorSize) {
  const std::vector<Table> tables = MakeTables(path, language, motorSize);
  const auto builder = world().databases->Extend(path, schema::kPassword);
  for (const Table& table : tables) {
    builder->DropTable(table.name);
    builder->CreateTable(table.name, table.columns);
    for (const std::vector<std::string>& row : table.rows) builder->Insert(table.name, row);
  }
  builder->Finish();
}

}  // namespace velmoor
