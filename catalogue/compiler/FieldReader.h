// Reads the fields of a record: a table from the field's name to what takes it.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "compiler/Model.h"

namespace velmoor::catalogue {

using FieldHandlers = std::map<std::string, std::function<void(const Field&)>>;

void ReadFields(const Record& record, const FieldHandlers& handlers, Problems& problems);

// Each gives 0 or nothing for a malformed text, which is a problem.
[[nodiscard]] std::int64_t ReadNumber(const Field& field, const std::string& text,
                                      Problems& problems);
[[nodiscard]] double ReadFactor(const Field& field, const std::string& text, Problems& problems);
// "MIN MAX INITIAL"
[[nodiscard]] Limits ReadLimits(const Field& field, const std::string& text, Problems& problems);
// A digit's place, 0 to 3.
[[nodiscard]] std::size_t ReadDigitNumber(const Field& field, const std::string& text,
                                          Problems& problems);
// A device error's code, four hexadecimal digits.
[[nodiscard]] std::optional<std::uint32_t> ReadCode(const Place& place, const std::string& text,
                                                    Problems& problems);
// "N first | second": a digit's place, and the meanings of its values as one text, joined by "|".
struct Choices {
  std::size_t digit = 0;
  std::string meanings;
};
[[nodiscard]] Choices ReadChoices(const Field& field, Problems& problems);
// Adds a further line of a running text.
void AppendText(std::string& text, const std::string& line);

}  // namespace velmoor::catalogue
