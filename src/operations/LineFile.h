// A line file: the axes of one machine on one serial line, and the project of each, as people write
// it (TOML). docs/guide/line.md tells the form.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "operations/WatchSettings.h"

namespace velmoor {

struct LineAxis {
  std::string address;  // one upper-case hexadecimal digit
  std::string name{};
  std::string project{};  // absolute; empty: none
};

struct LineFile {
  std::string port;  // device
  std::int32_t bitsPerSecond = 9600;
  std::vector<LineAxis> axes{};  // ascending by address
  WatchSettings watch{};
};

// Every fault of a line file in words, "line1.toml:7: ...", a line each.
class LineFileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// "line1" of "/etc/velmoor/line1.toml".
[[nodiscard]] std::string NameOfLine(const std::string& path);
// Projects are found from the folder of the file. Throws LineFileError and FileError.
[[nodiscard]] LineFile ReadLineFile(const std::string& path);
// Projects within the folder of the file are named without it. Throws FileError.
void WriteLineFile(const std::string& path, const LineFile& line);

}  // namespace velmoor
