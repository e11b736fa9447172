// A question to one axis of a line of which nothing is known but its speed: it may echo or not, be
// silent, and answer while another one's late answer still comes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "link/ClassSerialComm.h"

namespace velmoor {

struct LineWait {
  std::int32_t first = 80;        // ms for its first character line; as a search waits
  std::int32_t behindEcho = 500;  // ms for the answer of an axis that has echoed
};

struct LineAnswer {
  bool answered = false;               // the axis has said something
  std::optional<std::string> value{};  // nothing: it could not be read, or is refused
  std::size_t bytes = 0;               // on the wire, the question among them
};

// Asks `axis`, a hexadecimal digit, for `word`; the value stands behind `delimiter`. Nothing: the
// port is closed. An axis that is silent is no failure, and nothing for the log.
[[nodiscard]] std::optional<LineAnswer> AskOnLine(ClassSerialComm& comm, const std::string& axis,
                                                  std::string_view word, char delimiter,
                                                  const LineWait& wait);

}  // namespace velmoor
