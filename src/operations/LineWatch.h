// Looks at the axes of a line one by one while nobody else uses it: who answers, and in what state.
//
// Owned beside the session, which is offline meanwhile. The port stays open from one look to the
// next, until Rest.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "online/AlarmReadings.h"
#include "operations/LineFile.h"
#include "project/SessionState.h"

namespace velmoor {

class LineWatch {
 public:
  // `session` must outlive the object.
  explicit LineWatch(SessionState& session) : session_(session) {}

  struct Look {
    bool answered = false;
    std::optional<AlarmReading> state{};  // nothing: it could not be read
  };
  // One question to the axis of a line behind the port `com`; a silent one costs less than a tenth
  // of a second. Nothing: the port cannot be opened, and Failure tells why.
  [[nodiscard]] std::optional<Look> Ask(const LineFile& line, std::int16_t com,
                                        const std::string& axis);
  [[nodiscard]] const std::string& Failure() const { return failure_; }
  // Leaves the port to others.
  void Rest();

 private:
  [[nodiscard]] bool Open(const LineFile& line, std::int16_t com);

  SessionState& session_;
  bool open_ = false;
  std::string failure_;
};

}  // namespace velmoor
