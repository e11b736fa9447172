// The lines of a project's text: a value, and the row of a table.
#pragma once

#include <string>
#include <string_view>

#include "project/data/Parameter.h"
#include "tables/TableRows.h"

namespace velmoor::project_text {

// "Pn100 = 40  # Speed loop gain"
[[nodiscard]] std::string Line(std::string_view key, const std::string& value,
                               const std::string& comment);
// The text of a parameter as it stands behind the sign.
[[nodiscard]] std::string LiteralOf(const Parameter& parameter, const std::string& text);
// 12 = { label = "go", speed = 10.000 }. Not `typed`: every cell is a text in quotes.
[[nodiscard]] std::string RowLine(const MotionTable& table, const TableShape& shape,
                                  const RowTexts& given, bool typed);

}  // namespace velmoor::project_text
