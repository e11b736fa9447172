#include "platform/sqlcipher/PlainTable.h"

#include <algorithm>
#include <string>

namespace velmoor::sqlcipher {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

bool IsWordCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

char Upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// Reads a statement from its beginning.
class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  // Takes the keyword or the sign, if it comes next.
  bool Take(std::string_view wanted) {
    SkipBlanks();
    const bool word = IsWordCharacter(wanted.front());
    const std::string_view next = text_.substr(0, word ? WordLength() : 1);
    if (!std::ranges::equal(next, wanted, {}, Upper)) return false;
    text_.remove_prefix(next.size());
    return true;
  }
  // A name, bare or in double quotes; empty where none comes next.
  std::string TakeName() {
    SkipBlanks();
    if (text_.starts_with('"')) return TakeQuoted();
    const std::string name(text_.substr(0, WordLength()));
    text_.remove_prefix(name.size());
    return name;
  }
  [[nodiscard]] bool AtEnd() {
    SkipBlanks();
    return text_.empty();
  }

 private:
  [[nodiscard]] std::size_t WordLength() const {
    return static_cast<std::size_t>(std::ranges::find_if_not(text_, IsWordCharacter) -
                                    text_.begin());
  }
  void SkipBlanks() {
    text_.remove_prefix(std::min(text_.find_first_not_of(kBlanks), text_.size()));
  }
  std::string TakeQuoted() {
    std::string name;
    for (std::size_t i = 1; i < text_.size(); ++i) {
      if (text_[i] == '"') {
        if (i + 1 == text_.size() || text_[i + 1] != '"') {
          text_.remove_prefix(i + 1);
          return name;
        }
        ++i;
      }
      name += text_[i];
    }
    return {};
  }

  std::string_view text_;
};

}  // namespace

std::optional<TableDefinition> ParsePlainTable(std::string_view statement) {
  Reader reader(statement);
  if (!reader.Take("CREATE") || !reader.Take("TABLE")) return std::nullopt;
  TableDefinition table{reader.TakeName(), {}};
  if (table.name.empty() || !reader.Take("(")) return std::nullopt;
  do {
    ColumnDefinition column{reader.TakeName()};
    column.integerKey = reader.Take("INTEGER");
    if (column.name.empty() || (!column.integerKey && !reader.Take("TEXT"))) return std::nullopt;
    table.columns.push_back(std::move(column));
  } while (reader.Take(","));
  if (!reader.Take(")") || !reader.AtEnd()) return std::nullopt;
  return table;
}

}  // namespace velmoor::sqlcipher
