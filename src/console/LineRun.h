// One command of velmoorctl over the axes of a line file: each axis through the operations that a
// single one goes through, a failure of one no end of the others, and one table of results.
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "console/CommandContext.h"
#include "operations/LineFile.h"
#include "platform/Csv.h"

namespace velmoor {

// The axes of a list such as "3,A". Throws UsageError for one that the file does not have.
[[nodiscard]] std::vector<LineAxis> AxesNamed(const LineFile& line, const std::string& list);

class LineRun {
 public:
  // Works on the axes of --axes, or on all. Throws UsageError, LineFileError and FileError.
  explicit LineRun(const Context& context, const std::string& path);

  [[nodiscard]] const LineFile& File() const { return line_; }
  [[nodiscard]] Work& TheWork() { return work_; }

  // Asks once who is there; axes that are not get no question more. False: the port cannot be
  // opened, of which the user was told.
  [[nodiscard]] bool Look();
  [[nodiscard]] const std::set<std::string>& Present() const { return present_; }

  [[nodiscard]] const std::vector<LineAxis>& Axes() const { return axes_; }
  // The session and the device speak with that axis from now on.
  void TurnTo(const LineAxis& axis);

  // What became of an axis: a word for the table and the other cells of its row.
  struct Result {
    bool done = false;
    std::string word{};
    CsvRow more{};
  };
  // Runs `work` for each axis behind a line that names it, and tells the results as a table:
  // axis, name, result and the columns `more`. The line, where `onLine`, is that of the axis.
  // False: something was not done.
  using AxisWork = std::function<Result(const LineAxis& axis)>;
  [[nodiscard]] bool ForEach(bool onLine, const CsvRow& more, const AxisWork& work);

  // The axis is online and its project open. False: told.
  [[nodiscard]] bool Connect();
  [[nodiscard]] bool Open(const LineAxis& axis);

 private:
  [[nodiscard]] Result RunOne(bool onLine, const LineAxis& axis, const AxisWork& work);

  const Context& context_;
  LineFile line_;
  std::vector<LineAxis> axes_;
  Work work_;
  std::set<std::string> present_;
};

}  // namespace velmoor
