// Reads back what a download has written: all of it before it is stored, and a sample behind the
// restart, which shows what was stored.
//
// Made for one download; keeps what the device object writes for as long as it lives.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "project/SessionState.h"

namespace velmoor {

class WrittenCheck {
 public:
  // Told the value that is read next, from 1, and how many there are. False ends the reading.
  using Progress = std::function<bool(int value, int values)>;

  // `session` must outlive the object.
  explicit WrittenCheck(SessionState& session);
  ~WrittenCheck();
  WrittenCheck(const WrittenCheck&) = delete;
  WrittenCheck& operator=(const WrittenCheck&) = delete;

  // Reads back what was written since the last call. False: a value differs, or could not be read,
  // which is the latest failure of the link then, or `progress` ended it. The parameters that
  // differ are marked, in the project's file too; rows of tables are marked by whoever does not
  // store them.
  [[nodiscard]] bool ReadAll(const Progress& progress);
  // The same for a dozen of all values, spread evenly. Where a row differs its table was not
  // stored: all its rows that were written are marked.
  [[nodiscard]] bool ReadSample();

 private:
  // The lines whose value differs go to `different`.
  [[nodiscard]] bool Read(const std::vector<std::string>& lines, const Progress& progress,
                          std::vector<std::string>& different);
  void TellDifferences(const std::vector<std::string>& words);

  SessionState& session_;
  std::vector<std::string> lines_;  // read back already
};

}  // namespace velmoor
