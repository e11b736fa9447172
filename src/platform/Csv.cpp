#include "platform/Csv.h"

#include <algorithm>
#include <stdexcept>

#include "platform/Bounds.h"
#include "platform/Numbers.h"
#include "platform/VisibleText.h"

namespace velmoor {
namespace {

constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";
// In front of a text that a spreadsheet would take for a formula; one is taken off again.
constexpr char kGuard = '\'';

// What a spreadsheet would take for a formula, behind any number of guards. A number is none, nor
// is a sign alone.
bool IsFormula(std::string_view field) {
  const std::string_view bare =
      field.substr(std::min(field.find_first_not_of(kGuard), field.size()));
  if (bare.size() < 2 || std::string_view("=+-@").find(bare.front()) == std::string_view::npos) {
    return false;
  }
  return !ParseFloat(bare);
}

// A mark at the front of a text is taken off by readers, and some take a semicolon for a comma.
bool NeedsQuotes(const std::string& field) {
  if (field.empty()) return false;
  if (field.starts_with(kByteOrderMark)) return true;
  return field.find_first_of(",;\"") != std::string::npos || field.front() == ' ' ||
         field.back() == ' ';
}

std::string Written(const std::string& field) {
  std::string visible = VisibleText(field);
  return IsFormula(visible) ? kGuard + visible : visible;
}

class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  [[nodiscard]] bool AtEnd() const { return rest_.empty(); }
  [[nodiscard]] std::size_t Rows() const { return rows_; }

  CsvRow ReadRow() {
    CsvRow row;
    const int begins = line_;
    const std::size_t before = rest_.size();
    bool more = true;
    while (more) {
      if (row.size() == bounds::kCsvFields) Fail(begins, "a row has too many fields");
      row.push_back(!rest_.empty() && rest_.front() == '"' ? ReadQuoted() : ReadPlain());
      if (before - rest_.size() > bounds::kCsvLine) Fail(begins, "a row is too long");
      if (row.back().starts_with(kGuard) && IsFormula(row.back())) row.back().erase(0, 1);
      more = !rest_.empty() && rest_.front() == ',';
      if (more) rest_.remove_prefix(1);
    }
    TakeLineEnd();
    ++rows_;
    return row;
  }

 private:
  std::string ReadPlain() {
    const std::size_t end = std::min(rest_.find_first_of(",\r\n"), rest_.size());
    std::string field(rest_.substr(0, end));
    rest_.remove_prefix(end);
    return field;
  }

  std::string ReadQuoted() {
    const int opened = line_;
    std::string field;
    rest_.remove_prefix(1);
    for (;;) {
      if (rest_.empty()) Fail(opened, "a quote is never closed");
      const char c = rest_.front();
      rest_.remove_prefix(1);
      if (c == '\n') ++line_;
      if (c != '"') {
        field += c;
        continue;
      }
      if (rest_.empty() || rest_.front() != '"') break;
      field += '"';
      rest_.remove_prefix(1);
    }
    if (!rest_.empty() && rest_.find_first_of(",\r\n") != 0) {
      Fail(line_, "text follows a closing quote");
    }
    return field;
  }

  void TakeLineEnd() {
    if (!rest_.empty() && rest_.front() == '\r') rest_.remove_prefix(1);
    if (!rest_.empty() && rest_.front() == '\n') rest_.remove_prefix(1);
    ++line_;
  }

  [[noreturn]] static void Fail(int line, const char* reason) {
    throw std::runtime_error("Line " + std::to_string(line) + ": " + reason);
  }

  std::string_view rest_;
  int line_ = 1;
  std::size_t rows_ = 0;
};

}  // namespace

std::string CsvLine(const CsvRow& fields) {
  std::string line;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const std::string field = Written(fields[i]);
    if (i > 0) line += ',';
    if (!NeedsQuotes(field)) {
      line += field;
      continue;
    }
    line += '"';
    for (const char c : field) {
      if (c == '"') line += '"';
      line += c;
    }
    line += '"';
  }
  return line + "\n";
}

std::vector<CsvRow> ParseCsv(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  std::vector<CsvRow> rows;
  Reader reader(text);
  while (!reader.AtEnd()) {
    if (reader.Rows() == bounds::kCsvRows) {
      throw std::runtime_error(
          "The text has more rows than any table: " + NumberText(bounds::kCsvRows) + " at most");
    }
    CsvRow row = reader.ReadRow();
    if (row.size() > 1 || !row.front().empty()) rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace velmoor
