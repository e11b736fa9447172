#include "project/data/ParameterCatalogue.h"

#include "platform/Numbers.h"
#include "project/data/Schema.h"

namespace velmoor {
namespace {

using schema::Definition;

struct Field {
  std::string_view column;
  std::string ParameterDefinition::*member;
};

constexpr Field kFields[] = {
    {Definition::kUserConstant, &ParameterDefinition::user_constant},
    {Definition::kParameterName, &ParameterDefinition::parameter_name},
    {Definition::kMin, &ParameterDefinition::Min},
    {Definition::kMax, &ParameterDefinition::Max},
    {Definition::kInitialValue, &ParameterDefinition::initial_value},
    {Definition::kUnit, &ParameterDefinition::Unit},
    {Definition::kDecDataId, &ParameterDefinition::dec_data_id},
    {Definition::kEditType, &ParameterDefinition::edit_type},
    {Definition::kNibbleDataId, &ParameterDefinition::nibble_data_id},
    {Definition::kFixedDigit, &ParameterDefinition::fixed_digit},
    {Definition::kCategoryName, &ParameterDefinition::category_name},
    {Definition::kGroup, &ParameterDefinition::group},
    {Definition::kSize, &ParameterDefinition::Size},
    {Definition::kHelp, &ParameterDefinition::help},
};

}  // namespace

CatalogueTables GetTableNames(const std::string& path) {
  const auto database = OpenForReading(path);
  const auto row = database->OpenTable(schema::TableManager::kTable);
  return {row->Text(schema::TableManager::kParameters), row->Text(schema::TableManager::kNibbles),
          row->Text(schema::TableManager::kLists)};
}

std::vector<ParameterDefinition> ReadParameterDefinitions(const std::string& path,
                                                          const std::string& table) {
  std::vector<ParameterDefinition> definitions;
  const auto database = OpenForReading(path);
  for (const auto rows = database->OpenTable(table); !rows->AtEnd(); rows->MoveNext()) {
    ParameterDefinition& definition = definitions.emplace_back();
    for (const Field& field : kFields) definition.*field.member = rows->Text(field.column);
  }
  return definitions;
}

std::vector<NibbleDefinition> ReadNibbleDefinitions(const std::string& path,
                                                    const std::string& table) {
  std::vector<NibbleDefinition> definitions;
  const auto database = OpenForReading(path);
  std::size_t digit = 0;
  for (const auto rows = database->OpenTable(table); !rows->AtEnd(); rows->MoveNext()) {
    if (digit == 0) {
      definitions.emplace_back().nibble_data_id = rows->Text(schema::Nibble::kNibbleDataId);
    }
    NibbleDigit& place = definitions.back().digits.at(digit);
    place.use_bit = Int32FromCell(rows->Text(schema::Nibble::kUseBit));
    place.digit_name = rows->Text(schema::Nibble::kDigitName);
    place.choices = rows->Text(schema::Nibble::kChoices);
    digit = (digit + 1) % definitions.back().digits.size();
  }
  return definitions;
}

}  // namespace velmoor
