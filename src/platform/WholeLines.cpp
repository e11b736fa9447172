#include "platform/WholeLines.h"

#include <utility>

#include "platform/Bounds.h"
#include "platform/Files.h"

namespace velmoor {

void WholeLines::Keep(std::string_view part) {
  rest_ += part;
  if (rest_.size() > bounds::kLine) throw FileError(named_ + ": a line is too long");
}

bool WholeLines::Add(std::string_view piece) {
  for (std::size_t end = piece.find('\n'); end != std::string_view::npos; end = piece.find('\n')) {
    Keep(piece.substr(0, end));
    piece.remove_prefix(end + 1);
    std::string line = std::exchange(rest_, {});
    if (line.ends_with('\r')) line.pop_back();
    if (!take_(line)) return false;
  }
  Keep(piece);
  return true;
}

}  // namespace velmoor
