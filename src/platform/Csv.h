// Comma-separated texts: quoted where needed, quotes doubled, lines ending in LF or CRLF.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velmoor {

using CsvRow = std::vector<std::string>;

// One line with its end. A field with a comma, a semicolon, a quote or a blank at an end is quoted;
// control characters are made visible. In front of what a spreadsheet would take for a formula
// stands "'", so that it is a text there; numbers such as -5 stay numbers.
[[nodiscard]] std::string CsvLine(const CsvRow& fields);
// All rows; blank lines are passed over, a byte order mark and the "'" in front of a formula are
// dropped. Throws std::runtime_error with the line's number when a quote is never closed, something
// follows a closing quote, or a bound of Bounds.h is exceeded.
[[nodiscard]] std::vector<CsvRow> ParseCsv(std::string_view text);

}  // namespace velmoor
