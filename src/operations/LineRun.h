// One work over the axes of a line, one after the other: each axis through the operations that a
// single one goes through, a failure of one no end of the others, and one table of results. The
// line's window and velmoorctl run the same.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "operations/AgreedBoxes.h"
#include "operations/LineFile.h"
#include "operations/Operations.h"
#include "platform/Csv.h"
#include "project/SessionState.h"

namespace velmoor {

// What became of an axis: a word for the table and the other cells of its row.
struct LineResult {
  bool done = false;
  std::string word{};
  CsvRow more{};
};

struct LineTable {
  struct Row {
    LineAxis axis;
    LineResult result;
  };
  CsvRow more{};  // the names of the other cells
  std::vector<Row> rows{};
  bool done = false;  // every axis was
};
// axis, name, result and the other cells, below their names.
[[nodiscard]] std::vector<CsvRow> RowsOf(const LineTable& table);

// Port: the program that runs a work over a line. Its session has one project at a time, and its
// boxes are in force.
class LineHost {
 public:
  virtual ~LineHost() = default;
  [[nodiscard]] virtual SessionState& Session() = 0;
  [[nodiscard]] virtual Operations& Hardware() = 0;
  [[nodiscard]] virtual AgreedBoxes& Boxes() = 0;
  // Opens a project as the session's own, in the place of the one before. False: told.
  [[nodiscard]] virtual bool Open(const std::string& path) = 0;
  // Saves it. False: told. Throws FileError.
  [[nodiscard]] virtual bool Save() = 0;
  // The user wants no more. Once true it stays so until the work is over.
  [[nodiscard]] virtual bool Stopped() const = 0;
  // An axis is worked on, the one of that number, from 0, of so many.
  virtual void AxisBegins(const LineAxis& axis, std::size_t number, std::size_t count) = 0;
  // What became of an axis, also of one that was not worked on.
  virtual void AxisEnds(const LineAxis& axis, const LineResult& result) = 0;
};

class LineRun {
 public:
  // Works on `axes` of the line, which stands behind the session's port `com`. `host` must outlive
  // the object.
  LineRun(LineHost& host, LineFile line, std::vector<LineAxis> axes, std::int16_t com);

  [[nodiscard]] LineHost& Host() { return host_; }
  [[nodiscard]] const LineFile& File() const { return line_; }
  [[nodiscard]] const std::vector<LineAxis>& Axes() const { return axes_; }
  [[nodiscard]] clsHX7Project& project() { return *host_.Session().OwnProject(); }

  // Asks once who is there; axes that are not get no question more. False: the port cannot be
  // opened, of which the user was told.
  [[nodiscard]] bool Look();
  [[nodiscard]] const std::set<std::string>& Present() const { return present_; }
  // The session and the device speak with that axis from now on.
  void TurnTo(const LineAxis& axis);
  // The axis is online and its project open. False: told.
  [[nodiscard]] bool Connect();
  [[nodiscard]] bool Open(const LineAxis& axis);

  // Runs `work` for each axis and gives the results, with the cells `more`. The line, where
  // `onLine`, is that of the axis.
  using AxisWork = std::function<LineResult(const LineAxis& axis)>;
  [[nodiscard]] LineTable ForEach(bool onLine, const CsvRow& more, const AxisWork& work);

 private:
  [[nodiscard]] LineSettings SettingsOf(const std::string& axis) const;
  [[nodiscard]] LineResult RunOne(bool onLine, std::size_t number, const AxisWork& work);

  LineHost& host_;
  LineFile line_;
  std::vector<LineAxis> axes_;
  std::int16_t com_;
  std::set<std::string> present_;
};

}  // namespace velmoor
