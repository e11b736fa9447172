#include "platform/Csv.h"

#include <algorithm>
#include <stdexcept>

namespace velmoor {
namespace {

constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";

// A mark at the front of a text is taken off by readers.
bool NeedsQuotes(const std::string& field) {
  if (field.empty()) return false;
  if (field.starts_with(kByteOrderMark)) return true;
  return field.find_first_of(",\"\r\n") != std::string::npos || field.front() == ' ' ||
         field.back() == ' ';
}

class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  [[nodiscard]] bool AtEnd() const { return rest_.empty(); }

  CsvRow ReadRow() {
    CsvRow row;
    bool more = true;
    while (more) {
      row.push_back(!rest_.empty() && rest_.front() == '"' ? ReadQuoted() : ReadPlain());
      more = !rest_.empty() && rest_.front() == ',';
      if (more) rest_.remove_prefix(1);
    }
    TakeLineEnd();
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
};

}  // namespace

std::string CsvLine(const CsvRow& fields) {
  std::string line;
  for (const std::string& field : fields) {
    if (&field != &fields.front()) line += ',';
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
    CsvRow row = reader.ReadRow();
    if (row.size() > 1 || !row.front().empty()) rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace velmoor
