// What can be done with the axes of a line, each with a table of results. The axes and the program
// are those of the run; questions have been asked, and agreed to, before.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "operations/LineRun.h"
#include "project/ProjectCompare.h"

namespace velmoor {

// Searches for the axes at each speed and takes the first at which any answer; names and projects
// are made up, the projects lie in `folder`. Nothing: stopped, none found or the port cannot be
// opened, of which the user was told.
[[nodiscard]] std::optional<LineFile> SearchLine(LineHost& host, const LineSettings& settings,
                                                 const std::string& port,
                                                 const std::string& folder);

// amplifier, motor, encoder, firmware, option, alarm
[[nodiscard]] LineTable ReadLineInfo(LineRun& run);
// Where the amplifier differs from the project, as a count. An axis that differs is done.
[[nodiscard]] LineTable CompareLine(LineRun& run);
struct LineDownload {
  bool onlyNew = false;
  bool verify = false;  // read back
};
[[nodiscard]] LineTable DownloadLine(LineRun& run, const LineDownload& choice);
[[nodiscard]] LineTable UploadLine(LineRun& run);
[[nodiscard]] LineTable ResetLineAlarms(LineRun& run);
// Changes each project by `change`, which tells its refusals, and saves it.
[[nodiscard]] LineTable SetOnLine(LineRun& run,
                                  const std::function<bool(clsHX7Project& project)>& change);
// The set-up of one axis for others.
struct LineCopy {
  LineAxis from;
  std::vector<LineAxis> to;
  [[nodiscard]] bool Reaches(const LineAxis& axis) const;
};
// Puts the text of that project into those of the others, and saves them; `tell` gets the refusals.
[[nodiscard]] LineTable CopyOnLine(
    LineRun& run, const LineCopy& copy,
    const std::function<void(const std::vector<std::string>& faults)>& tell);
// What that would change, as counts; nothing is changed.
[[nodiscard]] LineTable CountCopyOnLine(LineRun& run, const LineCopy& copy);
// Writes a document of each project into `folder` by `write`, which tells its failures.
[[nodiscard]] LineTable ReportLine(
    LineRun& run, const std::string& folder,
    const std::function<bool(clsHX7Project& project, const std::string& path)>& write);

// Of the parts that count.
[[nodiscard]] std::size_t CountDifferences(const std::vector<PartComparison>& parts);

}  // namespace velmoor
