// Comma-separated texts: quoted where needed, quotes doubled, lines ending in LF or CRLF.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velmoor {

using CsvRow = std::vector<std::string>;

// One line with its end. A field with a comma, a quote, a line break or a blank at an end is
// quoted.
[[nodiscard]] std::string CsvLine(const CsvRow& fields);
// All rows; blank lines are passed over, a byte order mark is dropped. Throws std::runtime_error
// with the line's number when a quote is never closed or something follows a closing quote.
[[nodiscard]] std::vector<CsvRow> ParseCsv(std::string_view text);

}  // namespace velmoor
