// The form that all files of the catalogue share: a record is a line at the left margin, and the
// indented lines below it are its fields. The first word of a line is its name, the rest its value.
// "#" begins a comment line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velmoor::catalogue {

// Where something was written.
struct Place {
  std::string file;
  int line = 0;
};

// Everything that is wrong with the catalogue, as "file:line: reason".
class Problems {
 public:
  void Add(const Place& place, const std::string& reason);
  [[nodiscard]] const std::vector<std::string>& Lines() const { return lines_; }

 private:
  std::vector<std::string> lines_;
};

struct Field {
  std::string name;
  std::string value;
  Place place;
};

struct Record {
  std::string name;
  std::string value;
  Place place;
  std::vector<Field> fields;
};

// The records of one file's text; `file` is its name for the user.
[[nodiscard]] std::vector<Record> ReadRecords(const std::string& file, std::string_view text,
                                              Problems& problems);
// The words of a text, separated by blanks.
[[nodiscard]] std::vector<std::string> Words(std::string_view text);
// The first word, and the rest without the blanks between.
struct Split {
  std::string first;
  std::string rest;
};
[[nodiscard]] Split SplitFirst(std::string_view text);

}  // namespace velmoor::catalogue
