#include "project/data/MiscSettings.h"

#include "project/data/Schema.h"

namespace velmoor {

using schema::Misc;

std::optional<std::string> ReadMiscSetting(const std::string& path, std::string_view name) {
  const auto database = OpenForReading(path);
  const auto records = database->OpenTable(Misc::kTable);
  if (!records->FindFirst(Misc::kPropertyName, name)) return std::nullopt;
  return records->Text(Misc::kValue);
}

void WriteMiscSetting(const std::string& path, std::string_view name, std::string_view value) {
  const auto database = OpenForWriting(path);
  const auto records = database->OpenTable(Misc::kTable);
  if (records->FindFirst(Misc::kPropertyName, name)) {
    records->Edit();
  } else {
    records->AddNew();
    records->Set(Misc::kPropertyName, name);
  }
  records->Set(Misc::kValue, value);
  records->Update();
  database->Commit();
}

}  // namespace velmoor
