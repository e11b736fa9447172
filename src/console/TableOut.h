// A table on the output: CSV with a line of names in front, or with the option --json an array of
// objects, one a line.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "platform/Csv.h"
#include "platform/JsonTexts.h"

namespace velmoor {

struct Context;

class TableOut {
 public:
  struct Column {
    std::string name;
    JsonField::Kind kind;
  };

  // Of those names; what each is in JSON follows from its name.
  TableOut(const Context& context, const CsvRow& names);
  TableOut(const Context& context, std::vector<Column> columns);
  // Ends the array.
  ~TableOut();
  TableOut(const TableOut&) = delete;
  TableOut& operator=(const TableOut&) = delete;

  // As many cells as columns, written at once.
  void Row(const CsvRow& cells);

 private:
  std::ostream& out_;
  bool json_;
  std::vector<Column> columns_;
  bool any_ = false;
};

// The first row names the columns.
void PrintTable(const Context& context, const std::vector<CsvRow>& rows);

}  // namespace velmoor
