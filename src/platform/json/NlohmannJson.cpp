#include "platform/json/NlohmannJson.h"

#include <nlohmann/json.hpp>

#include "platform/KeyedText.h"
#include "platform/Numbers.h"

namespace velmoor::json_texts {
namespace {

using Kind = JsonField::Kind;

nlohmann::ordered_json ValueOf(const JsonField& field) {
  if (field.kind == Kind::flag) return field.text == "1";
  if (field.kind == Kind::number) {
    if (field.text.empty()) return nullptr;
    if (const auto whole = ParseWhole(field.text)) return *whole;
    if (const auto number = ParseFloat(field.text)) return *number;
  }
  return InUtf8(field.text);
}

}  // namespace

std::string NlohmannJson::Object(const std::vector<JsonField>& fields) const {
  nlohmann::ordered_json object = nlohmann::ordered_json::object();
  for (const JsonField& field : fields) object[field.name] = ValueOf(field);
  return object.dump();
}

}  // namespace velmoor::json_texts
